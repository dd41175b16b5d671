#include "frmTableCopy.h"

#include "Boxes.h"
#include "Database.h"
#include "DropDown.h"
#include "Insertions.h"
#include "Recordset.h"
#include "mdiMain.h"
#include "modBoundControls.h"
#include "modDatabase.h"

#include <QLabel>

using namespace Qt::StringLiterals;
using insertions::bareOrNull;
using modDatabase::SQLQuote;

namespace
{

constexpr auto formName = "frmTableCopy";

}

frmTableCopy::frmTableCopy() : CopyDialog(formName, tr("Copy Table"))
{
    m_databaseLabel = addOriginal(u"lblDB"_s, tr("Original Database:"));
    m_label = addOriginal(u"lblTable"_s, tr("Original Table:"));
    m_databases = new DropDown(this);
    m_databases->setObjectName(u"cboDB"_s);
    addEntry(tr("New Database:"), *m_databases);
    addName(u"txtTable"_s, tr("New Table:"));
}

void frmTableCopy::Display(dao::Database& db, const QString& database, const QString& table)
{
    present<frmTableCopy>(formName, db, [&](frmTableCopy& form) {
        form.m_originalDatabase = database;
        form.m_original = table;
        form.m_databaseLabel->setText(database);
        form.m_label->setText(table);
        // Nothing is added to the catalog's own database.
        modBoundControls::PopulateList(
            *form.m_databases, db,
            u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME <> 'TW' ORDER BY DATABASE_NAME ASC"_s);
        form.m_databases->select(database);
    });
}

CopyDialog::NameRules frmTableCopy::rules() const
{
    const QString chosen = m_databases->currentText();
    const QString database = chosen.isEmpty() ? m_originalDatabase : chosen;
    return {.unique = u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '?'"_s.arg(
                SQLQuote(database)),
            .original = m_original,
            .missing = u"You have not entered a Table name.\n"
                       "Do you want me to find a unique name for this new Table?"_s,
            .select =
                [database](const QString& name) {
                    return u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(
                        SQLQuote(database), SQLQuote(name));
                },
            .column = u"TABLE_NAME"_s,
            .taken =
                [database](const QString& name) {
                    return u"Database '%1' already contains a Table called '%2\n"
                           "Do you want me to find a unique name for the new table?"_s.arg(database, name);
                }};
}

bool frmTableCopy::isReady()
{
    if (!m_databases->currentText().isEmpty())
        return true;
    boxes::inform(u"Please select a Database for the new Table."_s);
    m_databases->setFocus();
    return false;
}

CopyDialog::Collection frmTableCopy::collection() const
{
    const QString database = m_databases->currentText();
    return {u"DSN=%1:DB=%1:db=%2:TA=%2:"_s.arg(datasource(), database), u"frmTables"_s, {datasource(), database}};
}

void frmTableCopy::copy(const QString& table)
{
    const QString database = m_databases->currentText();
    const QString ofDatabase = u"WHERE DATABASE_NAME = '%1' "_s.arg(SQLQuote(m_originalDatabase));
    const QString ofOriginal = ofDatabase + u"AND TABLE_NAME = '%1'"_s.arg(SQLQuote(m_original));
    mdiMain::instance().Status(u"Copying Table..."_s);
    execute(insertions::table(*open(u"SELECT * FROM TW_TABLE "_s + ofOriginal), database, table, bareOrNull));
    copyRows(u"SELECT * FROM TW_COLUMN "_s + ofOriginal, ofColumns(),
             [&](const auto& row) { return insertions::column(row, database, table, bareOrNull); });
    copyRows(u"SELECT * FROM TW_TBLPRV "_s + ofDatabase + u"AND TABLE_NAME='%1'"_s.arg(SQLQuote(m_original)),
             ofTablePrivileges(), [&](const auto& row) { return insertions::tablePrivilege(row, database, table); });
}
