#include "TableDataPane.h"

#include "Settings.h"

#include <ostream>

using namespace tabledata;

namespace
{

const QString hidden = u"**********"_s;

class TableDataPasswords : public TableData
{
protected:
    void SetUp() override
    {
        TableData::SetUp();
        settings::save(u"Options"_s, u"SysTables"_s, 1);
        change(u"DELETE FROM TW_USER"_s);
        change(u"DELETE FROM TW_DBPRV"_s);
    }

    /// The cells of a column, from the top, once the records have been shown and once more after a refresh.
    void expectTwice(const QString& heading, const QStringList& cells) const
    {
        expectCells(heading, cells);
        pressRefresh();
        expectCells(heading, cells);
    }

private:
    void expectCells(const QString& heading, const QStringList& cells) const
    {
        const auto column = static_cast<int>(headings().indexOf(heading));
        ASSERT_GE(column, 0) << headings().join(' '_L1).toStdString();
        QStringList shown;
        for (int row = 0; row < grid().Rows(); ++row)
            shown.append(grid().TextMatrix(row, column));
        EXPECT_EQ(shown, cells);
        EXPECT_EQ(rows().filter(u"SESAME"_s), QStringList());
    }
};

/// The same on a datasource that is bound to the database SALES, whose tables go by their plain names.
class PasswordsOfOneDatabase : public TableDataOfOneDatabase
{
protected:
    /// Defines a table of SALES with these columns.
    void define(const QString& name, const QString& user, const QString& password) const
    {
        change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('SALES', '%1')"_s.arg(name));
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('SALES', '%1', '%2'), "
               "('SALES', '%1', '%3')"_s.arg(name, user, password));
    }
};

} // namespace

TEST_F(TableDataPasswords, OfUsersNeverShow)
{
    change(u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD) VALUES ('BOSS', 'SESAME'), ('GUEST', ''), ('NOBODY', "
           "NULL)"_s);
    view(all, u"USER"_s, u"TW"_s);
    expectTwice(u"USER_NAME"_s, {u"BOSS"_s, u"GUEST"_s, u"NOBODY"_s});
    expectTwice(u"USER_PASSWORD"_s, {hidden, {}, {}});
}

TEST_F(TableDataPasswords, OfDatabasesNeverShow)
{
    change(u"INSERT INTO TW_DBPRV (DATABASE_NAME, USER_NAME, DATABASE_PASSWORD) VALUES ('SALES', 'BOSS', 'SESAME'), "
           "('SALES', 'GUEST', '')"_s);
    view(all, u"DBPRV"_s, u"TW"_s);
    expectTwice(u"DATABASE_PASSWORD"_s, {hidden, {}});
}

TEST_F(TableDataPasswords, ATableOfOnesOwnShowsWhatItHolds)
{
    change(u"CREATE TABLE SALES_NONE (USER_PASSWORD VARCHAR(9))"_s);
    change(u"INSERT INTO SALES_NONE VALUES ('open')"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('SALES', 'NONE', "
           "'USER_PASSWORD')"_s);
    view(all, u"NONE"_s);
    expectTwice(u"USER_PASSWORD"_s, {u"open"_s});
}

TEST_F(TableDataPasswords, ADatabaseWhoseNameBeginsLikeTheCatalogsShowsWhatItHolds)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('TW_X')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('TW_X', 'SHELF')"_s);
    change(u"CREATE TABLE TW_X_SHELF (USER_PASSWORD VARCHAR(9))"_s);
    change(u"INSERT INTO TW_X_SHELF VALUES ('open')"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('TW_X', 'SHELF', "
           "'USER_PASSWORD')"_s);
    view(all, u"SHELF"_s, u"TW_X"_s);
    expectTwice(u"USER_PASSWORD"_s, {u"open"_s});
}

TEST_F(PasswordsOfOneDatabase, ADefinitionThatReadsTheCatalogHidesThemToo)
{
    change(u"UPDATE TW_USER SET USER_PASSWORD = 'SESAME'"_s);
    define(u"TW_USER"_s, u"USER_NAME"_s, u"USER_PASSWORD"_s);
    define(u"tw_user"_s, u"user_name"_s, u"user_password"_s);
    for (const QString& name : {u"TW_USER"_s, u"tw_user"_s}) {
        SCOPED_TRACE(name.toStdString());
        view(all, name);
        EXPECT_EQ(statements.statements().last().section(u"FROM "_s, 1), u"["_s + name + u"] "_s);
        ASSERT_GT(grid().Rows(), 0);
        for (int row = 0; row < grid().Rows(); ++row)
            EXPECT_EQ(grid().TextMatrix(row, 1), hidden);
    }
}
