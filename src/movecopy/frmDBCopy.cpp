#include "frmDBCopy.h"

#include "CollectionView.h"
#include "Database.h"
#include "Insertions.h"
#include "PrivilegeInsertions.h"
#include "Recordset.h"
#include "Routine.h"
#include "mdiMain.h"
#include "modDatabase.h"

#include <QLabel>

using namespace Qt::StringLiterals;
using insertions::bareOrNull;
using insertions::quoted;
using modDatabase::SQLQuote;

frmDBCopy::frmDBCopy() : CopyDialog(u"frmDBCopy"_s, tr("Copy Database"))
{
    addOriginal(u"lblDB"_s, tr("Original Database:"), m_label);
    addName(u"txtDB"_s, tr("New Database:"));
}

void frmDBCopy::Display(dao::Database& db, const QString& database)
{
    Routine routine("frmDBCopy.Display");
    routine.run([&] {
        auto& form = get<frmDBCopy>(u"frmDBCopy"_s);
        const forms::Running running(form);
        form.m_database = &db;
        form.m_original = database;
        form.m_label->setText(database);
        form.proposeName(form.rules());
        form.ask();
    });
}

CopyDialog::NameRules frmDBCopy::rules() const
{
    return {.unique = u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME='?'"_s,
            .original = m_original,
            .missing = u"You have not entered a Database name.\n"
                       "Do you want me to find a unique name for this Database?"_s,
            .select =
                [](const QString& name) {
                    return u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME = '%1'"_s.arg(SQLQuote(name));
                },
            .column = u"DATABASE_NAME"_s,
            .taken =
                [](const QString& name) {
                    return u"A Database called '%1' already exists in this datasource.\n"
                           "Do you want me to find a unique name for this database?"_s.arg(name);
                }};
}

void frmDBCopy::cmdOk_Click()
{
    run("frmDBCopy.cmdOk_Click", [this] {
        const QString name = settledName(rules());
        if (name.isEmpty())
            return false;
        copy(name);
        const QString datasource = m_database->Name();
        collectionview::readAnew(u"DSN=%1:DB=%1:"_s.arg(datasource));
        collectionview::showAnew(u"frmDatabases"_s, {datasource});
        return true;
    });
}

void frmDBCopy::copy(const QString& database)
{
    const QString ofOriginal = u"WHERE DATABASE_NAME = '%1'"_s.arg(SQLQuote(m_original));
    mdiMain::instance().Status(u"Copying Database..."_s);
    execute(insertions::database(*open(u"SELECT * FROM TW_DB "_s + ofOriginal), database));
    copyRows(
        u"SELECT * FROM TW_TABLE "_s + ofOriginal,
        [](const auto& row) {
            return u"Copying Table '%1' ..."_s.arg(row.Fields().Item(u"TABLE_NAME"_s).Value().Text());
        },
        [&](const auto& row) {
            return insertions::table(row, database, row.Fields().Item(u"TABLE_NAME"_s).Value().Text(), bareOrNull);
        });
    copyRows(
        u"SELECT * FROM TW_COLUMN "_s + ofOriginal,
        [](const auto& row) {
            return u"Copying Column '%1..."_s.arg(row.Fields().Item(u"COLUMN_NAME"_s).Value().Text());
        },
        [&](const auto& row) {
            return insertions::column(row, database, row.Fields().Item(u"TABLE_NAME"_s).Value().Text(), bareOrNull);
        });
    copyRows(
        u"SELECT * FROM TW_DBPRV "_s + ofOriginal,
        [](const auto& row) {
            return u"Copying Database Privileges for User '%1..."_s.arg(
                row.Fields().Item(u"USER_NAME"_s).Value().Text());
        },
        [&](const auto& row) {
            return u"INSERT INTO TW_DBPRV "
                   "(USER_NAME, DATABASE_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, "
                   "SECURITY_LEVEL, REMARKS) "
                   "VALUES ( '%1', '%2', %3, %4, %5, %6, '%7', '%8')"_s.arg(
                       quoted(row, u"USER_NAME"_s), SQLQuote(database), bareOrNull(row, u"ALLOW_SELECT"_s),
                       bareOrNull(row, u"ALLOW_INSERT"_s), bareOrNull(row, u"ALLOW_UPDATE"_s),
                       bareOrNull(row, u"ALLOW_DELETE"_s), quoted(row, u"SECURITY_LEVEL"_s), quoted(row, u"REMARKS"_s));
        });
    copyRows(u"SELECT * FROM TW_TBLPRV "_s + ofOriginal, tablePrivilegeStatus, [&](const auto& row) {
        return tablePrivilege(row, database, row.Fields().Item(u"TABLE_NAME"_s).Value().Text());
    });
}
