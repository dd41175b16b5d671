#include "modUpdate.h"

#include "UpdateFixture.h"
#include "modDatabase.h"

#include <random>
#include <utility>

namespace
{

using ModUpdateNamesTest = UpdateFixture;

/// A name of pieces that mean something to SQL, to text formatting or to the driver manager.
QString hostileName(std::mt19937& random)
{
    static const QStringList pieces{"'", "''", "%1",    "%2", "%", "%10", "\n",         "\r\n",  "\t", "\"",
                                    "?", "--", ";",     "{d", "}", "é",   "\U0001F600", "a",     "B",  " ",
                                    "_", "\\", "%%%1s", ",",  "(", ")",   ":x",         "\u00a0"};
    QString name;
    for (auto count = 1 + random() % 12; count > 0; --count)
        name += pieces[static_cast<qsizetype>(random() % static_cast<std::size_t>(pieces.size()))];
    return name;
}

TEST_F(ModUpdateNamesTest, WhateverTheNamesAreEveryRowEndsUnderTheNewOnes)
{
    std::mt19937 random(1407);
    QString file = "ORDERS", field = "AMOUNT", column = "AMOUNT", table = "ORDERS", database = "SALES", user = "ANN";
    const auto quoted = [](const QString& text) { return '\'' + modDatabase::SQLQuote(text) + '\''; };
    const auto count = [&](const QString& what) { return value("SELECT COUNT(*) FROM " + what).toInt(); };
    for (int round = 0; round < 25; ++round) {
        const auto rename = [&](QString& name) {
            // The round keeps names apart that would be alike by chance.
            return std::exchange(name, hostileName(random) + QString::number(round));
        };
        const QString oldFile = rename(file);
        modUpdate::UpdateFile(datasource, oldFile, file);
        const QString oldField = rename(field);
        modUpdate::UpdateField(datasource, file, file, oldField, field, round);
        const QString oldColumn = rename(column);
        modUpdate::UpdateColumn(datasource, database, database, table, table, oldColumn, column, 0, round, field);
        const QString oldTable = rename(table);
        modUpdate::UpdateTable(datasource, database, database, oldTable, table);
        const QString oldDatabase = rename(database);
        modUpdate::UpdateDatabase(datasource, oldDatabase, database);
        const QString oldUser = rename(user);
        modUpdate::UpdateUser(datasource, oldUser, user);

        SCOPED_TRACE(lines({file, field, column, table, database, user}));
        ASSERT_TRUE(form.shown().empty());
        ASSERT_EQ(count("TW_FILE WHERE FILE_NAME = " + quoted(file)), 1);
        ASSERT_EQ(count("TW_FIELD WHERE FILE_NAME = " + quoted(file)), 2);
        ASSERT_EQ(count("TW_FIELD WHERE FIELD_NAME = " + quoted(field) + " AND OFFSET = " + QString::number(round)), 1);
        ASSERT_EQ(count("TW_TABLE WHERE FILE_NAME = " + quoted(file)), 2);
        ASSERT_EQ(count("TW_TABLE WHERE DATABASE_NAME = " + quoted(database) + " AND TABLE_NAME = " + quoted(table) +
                        " AND DISPLAY_NAME = TABLE_NAME"),
                  1);
        ASSERT_EQ(count("TW_COLUMN WHERE DATABASE_NAME = " + quoted(database) + " AND FIELD_NAME = " + quoted(field)),
                  2);
        ASSERT_EQ(count("TW_COLUMN WHERE DATABASE_NAME = " + quoted(database) + " AND TABLE_NAME = " + quoted(table) +
                        " AND COLUMN_NAME = " + quoted(column) + " AND FIELD_NAME = " + quoted(field) +
                        " AND COLUMN_NUMBER = " + QString::number(round) + " AND DISPLAY_NAME = 'Amount'"),
                  1);
        ASSERT_EQ(count("TW_DB WHERE DATABASE_NAME = " + quoted(database) + " AND DISPLAY_NAME = DATABASE_NAME"), 1);
        ASSERT_EQ(count("TW_DBPRV WHERE USER_NAME = " + quoted(user)), 2);
        ASSERT_EQ(count("TW_TBLPRV WHERE USER_NAME = " + quoted(user) + " AND DATABASE_NAME = " + quoted(database) +
                        " AND TABLE_NAME = " + quoted(table)),
                  1);
    }
    for (const char* name :
         {"TW_FILE", "TW_FIELD", "TW_DB", "TW_TABLE", "TW_COLUMN", "TW_USER", "TW_DBPRV", "TW_TBLPRV"}) {
        const int rows = count(name);
        restore();
        EXPECT_EQ(rows, count(name)) << name;
    }
}

} // namespace
