#include "frmFileCopy.h"

#include "Database.h"
#include "Insertions.h"
#include "Recordset.h"
#include "mdiMain.h"
#include "modDatabase.h"

#include <QLabel>

using namespace Qt::StringLiterals;
using insertions::bareOrNull;
using insertions::quoted;
using modDatabase::SQLQuote;

namespace
{

constexpr auto formName = "frmFileCopy";

}

frmFileCopy::frmFileCopy() : CopyDialog(formName, tr("Copy File"))
{
    m_label = addOriginal(u"lblFilename"_s, tr("Source File:"));
    addName(u"txtFilename"_s, tr("New Filename:"));
}

void frmFileCopy::Display(dao::Database& db, const QString& file)
{
    present<frmFileCopy>(formName, db, [&](frmFileCopy& form) {
        form.m_original = file;
        form.m_label->setText(file);
    });
}

CopyDialog::NameRules frmFileCopy::rules() const
{
    return {
        .unique = u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = '?'"_s,
        .original = m_original,
        .missing = u"You have not entered a filename.\n"
                   "Do you want me to find a unique name for this new File?"_s,
        .select =
            [](const QString& name) { return u"SELECT * FROM TW_FILE WHERE FILE_NAME = '%1'"_s.arg(SQLQuote(name)); },
        .column = u"FILE_NAME"_s,
        .taken =
            [](const QString& name) {
                return u"There is already a file called '%1' in this datasource.\n"
                       "Would you like me to generate a unique name for this new File?"_s.arg(name);
            }};
}

CopyDialog::Collection frmFileCopy::collection() const
{
    return {u"DSN=%1:FI=%1:"_s.arg(datasource()), u"frmFiles"_s, {datasource()}};
}

void frmFileCopy::copy(const QString& file)
{
    const QString ofOriginal = u"WHERE FILE_NAME = '%1'"_s.arg(SQLQuote(m_original));
    mdiMain::instance().Status(u"Copying File..."_s);
    const auto row = open(u"SELECT * FROM TW_FILE "_s + ofOriginal);
    execute(u"INSERT INTO TW_FILE "
            "(FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS) "
            "VALUES ('%1', '%2', %3, '%4', '%5', '%6')"_s.arg(
                SQLQuote(file), quoted(*row, u"OPEN_STRING"_s), bareOrNull(*row, u"RECORD_SIZE"_s),
                quoted(*row, u"FILE_ORGANISATION"_s), quoted(*row, u"RECORD_TYPE"_s), quoted(*row, u"REMARKS"_s)));
    copyRows(u"SELECT * FROM TW_FIELD "_s + ofOriginal, {u"Copying Field '%1..."_s, u"FIELD_NAME"_s},
             [&](const auto& field) { return insertions::field(field, file, bareOrNull); });
}
