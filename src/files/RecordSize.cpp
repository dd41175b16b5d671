#include "RecordSize.h"

#include "Conversions.h"
#include "Database.h"
#include "Recordset.h"
#include "ReservedFiles.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;

QString recordsize::sumOfFields(dao::Database& db, const QString& file)
{
    const auto sum = db.OpenRecordset(u"SELECT SUM(LENGTH) As RecordLength FROM TW_FIELD WHERE FILE_NAME = '"_s +
                                      modDatabase::SQLQuote(file) + "'"_L1);
    return sum->Eof() ? QString() : sum->View(0).toString();
}

QString recordsize::withControlBytes(const QString& sum, const QString& file)
{
    constexpr double controlBytes = 8;
    return reservedfiles::hasControlBytes(file)
               ? QString::number(conversions::ToInteger(conversions::ToInteger(sum) + controlBytes))
               : sum;
}
