#include "frmDatabases.h"

#include "CellGrid.h"
#include "Database.h"
#include "Definitions.h"
#include "Recordset.h"
#include "Settings.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr int driverColumn = 3;

std::vector<GridColumn> columns()
{
    return {
        {.name = u"DATABASE_NAME"_s, .isKey = true},
        {.name = u"DISPLAY_NAME"_s},
        {.name = u"DEFAULT_DIRECTORY"_s},
        {.name = u"DRIVER_NAME"_s, .editor = CellEditor::Combo},
        {.name = u"SETUP_PROCEDURE"_s},
        {.name = u"CONNECT_STRING"_s},
        {.name = u"REMARKS"_s},
    };
}

} // namespace

frmDatabases::frmDatabases(QWidget* parent)
    : GridPane({.form = "frmDatabases", .table = "TW_DB", .toolBar = "tbrDatabases"}, columns(), parent)
{
}

QString frmDatabases::title() const
{
    return datasource() + " - Databases"_L1;
}

QString frmDatabases::nodeKey() const
{
    return "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ':'_L1;
}

QString frmDatabases::selectStatement() const
{
    const bool all = settings::getNumber(u"Options"_s, u"SysTables"_s, 0) != 0;
    return "SELECT DATABASE_NAME, DISPLAY_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, CONNECT_STRING, "
           "REMARKS FROM TW_DB "_L1 +
           (all ? ""_L1 : "WHERE DATABASE_NAME <> 'TW' "_L1) + "ORDER BY DATABASE_NAME ASC"_L1;
}

void frmDatabases::populateLists()
{
    setItems(u"DRIVER_NAME"_s, firstColumn(definitions::drivers()));
}

QStringList frmDatabases::itemsOf(const GridColumn& column) const
{
    if (column.name == "DRIVER_NAME"_L1 && definitions::isCatalogDatabase(text(u"DATABASE_NAME"_s)))
        return {u"SYSTEM"_s};
    return GridPane::itemsOf(column);
}

/// Goes by the name under which the row is stored: while that name is being typed it can still be corrected.
bool frmDatabases::isLocked(const QString&)
{
    return definitions::isCatalogDatabase(loaded(u"DATABASE_NAME"_s));
}

/// A new database begins with the driver of the one above.
QString frmDatabases::newRowValue(const GridColumn& column) const
{
    const int above = grd().Rows() - 1;
    return column.name == "DRIVER_NAME"_L1 && above >= 0 ? grd().TextMatrix(above, driverColumn)
                                                         : GridPane::newRowValue(column);
}

QString frmDatabases::validate()
{
    const QString name = text(u"DATABASE_NAME"_s);
    if (name.isEmpty())
        return refuse(u"Database Name cannot be blank"_s, u"DATABASE_NAME"_s);
    if (name != loaded(u"DATABASE_NAME"_s) &&
        finds("SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME = '"_L1 + quoted(u"DATABASE_NAME"_s) + '\''_L1))
        return refuse("The Database Name '"_L1 + name + "' has already been used in this Datasource."_L1,
                      u"DATABASE_NAME"_s);
    if (!definitions::isDisplayName(text(u"DISPLAY_NAME"_s), name))
        return refuse(u"The Display Name (if used) MUST exactly match the Column Name (exclusive of case)."_s,
                      u"DISPLAY_NAME"_s);
    return {};
}

void frmDatabases::replaceRow()
{
    if (!loaded(u"DATABASE_NAME"_s).isEmpty())
        removeRow("DELETE FROM TW_DB WHERE DATABASE_NAME = '"_L1 + quotedLoaded(u"DATABASE_NAME"_s) + "' "_L1);
    // clang-format off
    db().Execute("INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, CONNECT_STRING, "
                 "REMARKS, DISPLAY_NAME) VALUES ('"_L1 + quoted(u"DATABASE_NAME"_s) +
                 "', '"_L1 + quoted(u"DEFAULT_DIRECTORY"_s) +
                 "', '"_L1 + quoted(u"DRIVER_NAME"_s) +
                 "', '"_L1 + quoted(u"SETUP_PROCEDURE"_s) +
                 "', '"_L1 + quoted(u"CONNECT_STRING"_s) +
                 "', '"_L1 + quoted(u"REMARKS"_s) +
                 "', '"_L1 + quoted(u"DISPLAY_NAME"_s) + "')"_L1);
    // clang-format on
}

void frmDatabases::updateRow()
{
    // clang-format off
    db().Execute("UPDATE TW_DB SET DEFAULT_DIRECTORY = '"_L1 + quoted(u"DEFAULT_DIRECTORY"_s) +
                 "',DRIVER_NAME= '"_L1 + quoted(u"DRIVER_NAME"_s) +
                 "',SETUP_PROCEDURE = '"_L1 + quoted(u"SETUP_PROCEDURE"_s) +
                 "',CONNECT_STRING = '"_L1 + quoted(u"CONNECT_STRING"_s) +
                 "',REMARKS = '"_L1 + quoted(u"REMARKS"_s) +
                 "',DISPLAY_NAME = '"_L1 + quoted(u"DISPLAY_NAME"_s) +
                 "' WHERE DATABASE_NAME = '"_L1 + quotedLoaded(u"DATABASE_NAME"_s) + '\''_L1);
    // clang-format on
}
