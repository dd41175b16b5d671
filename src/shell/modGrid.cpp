#include "modGrid.h"

#include "CellGrid.h"
#include "Database.h"
#include "Recordset.h"
#include "Routine.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;

namespace
{

/// Words begin with a capital and go on in small letters.
QString properCase(const QString& words)
{
    QString proper = words.toLower();
    for (qsizetype i = 0; i < proper.size(); ++i)
        if (i == 0 || proper.at(i - 1) == ' '_L1)
            proper[i] = proper.at(i).toUpper();
    return proper;
}

QString headings(const dao::Fields& fields)
{
    QString format;
    for (const dao::Field& field : fields) {
        format += (modDatabase::isTextKind(field.Type) ? "|<"_L1 : "|>"_L1) +
                  properCase(QString(field.Name).replace('_'_L1, ' '_L1));
    }
    return format.sliced(1);
}

} // namespace

void modGrid::PopulateGrid(CellGrid& grid, dao::Database& db, const QString& statement,
                           const std::vector<ShownForm>& forms)
{
    Routine routine("modGrid.PopulateGrid");
    routine.run([&] {
        const auto rows = db.OpenRecordset(statement, dao::dbOpenSnapshot);
        const int columns = rows->Fields().Count();
        std::vector<ShownForm> shown = forms;
        shown.resize(static_cast<std::size_t>(columns));
        CellGrid::Filling filling(grid, headings(rows->Fields()));
        for (; !rows->Eof(); rows->MoveNext()) {
            for (int column = 0; column < columns; ++column) {
                const QStringView value = rows->View(column);
                if (const ShownForm form = shown[static_cast<std::size_t>(column)])
                    filling.add(form(value.toString()));
                else
                    filling.add(value);
            }
        }
    });
}
