// How statements name the tables over records that have to be ready for them.

#include "RecordTables.h"
#include "RecordsFixture.h"

namespace
{

using Names = std::vector<std::string>;
using tarnwick::records::TablesNamedIn;

/// Two records in each of two tables.
class NamedTables : public Records
{
protected:
    void SetUp() override
    {
        Records::SetUp();
        Make("ACC", {{"NO", "ZONED-U", 2}, {"CITY", "STRING", 1}}, "01a02b");
        Make("ODD", {{"NO", "ZONED-U", 2}}, "0103");
    }
};

} // namespace

TEST_F(NamedTables, AreToldOfByPragmasAsTheyAreNow)
{
    for (const std::string statement :
         {"PRAGMA table_info(BANK_ACC)", "PRAGMA table_info('BANK_ACC')", "PRAGMA main.table_xinfo(\"bank_acc\")",
          "PRAGMA table_info = BANK_ACC", "PRAGMA table_xinfo = 'BANK_ACC'",
          "SELECT * FROM pragma_table_info('BANK_ACC')", "SELECT * FROM \"pragma_table_info\"('BANK_ACC')",
          "SELECT * FROM main.[Pragma_Table_Info] ('BANK_ACC')", "SELECT * FROM `pragma_table_xinfo`('BANK_ACC')",
          "SELECT * FROM PRAGMA_TABLE_XINFO ('bank_acc', 'main')",
          "SELECT i.* FROM TW_USER u JOIN pragma_table_info('BANK_ACC') i WHERE u.USER_NAME = 'ADMIN'"}) {
        Run("UPDATE TW_COLUMN SET VISIBLE = 1");
        OdbcClient fresh;
        Connect(fresh);
        const auto names = [&] {
            std::string told;
            for (const Row& row : fresh.Execute(statement).rows)
                told += row[1].value_or("~") + " ";
            return told;
        };
        EXPECT_EQ(names(), "NO CITY ") << statement;
        Run("UPDATE TW_COLUMN SET VISIBLE = 0 WHERE COLUMN_NAME = 'CITY'");
        EXPECT_EQ(names(), "NO ") << statement;
    }
}

TEST_F(NamedTables, AreThereWhereAStringStandsForAName)
{
    for (const char* statement :
         {"SELECT COUNT(*) FROM BANK_ODD, 'BANK_ACC'", "SELECT COUNT(*) * 2 FROM main.'BANK_ACC'",
          "SELECT COUNT(*) FROM ('BANK_ODD' a), ('BANK_ACC' b)",
          "SELECT COUNT(*) * 4 FROM BANK_ODD o, 'BANK_ACC' a "
          "WHERE o.NO = a.NO",
          "SELECT COUNT(*) FROM (SELECT 1 FROM BANK_ODD o JOIN BANK_ODD p ON o.NO IN (1, 3) AND "
          "o.NO = p.NO, 'BANK_ACC' a WHERE a.CITY IN ('a', 'b'))"}) {
        OdbcClient fresh;
        Connect(fresh);
        EXPECT_EQ(Rows(fresh, statement), "4\n") << statement;
        Run("UPDATE TW_TABLE SET CRITERIA = '0' WHERE TABLE_NAME = 'ACC'");
        EXPECT_EQ(Rows(fresh, statement), "0\n") << statement;
        Run("UPDATE TW_TABLE SET CRITERIA = '' WHERE TABLE_NAME = 'ACC'");
    }
}

TEST(TablesNamedIn, AStatementAreThoseWhereATableCanStand)
{
    EXPECT_EQ(TablesNamedIn("PRAGMA main.table_info('A')"), (Names{"A"}));
    EXPECT_EQ(TablesNamedIn("PRAGMA index_list = [A]"), (Names{"A"}));
    EXPECT_EQ(TablesNamedIn("SELECT 1 FROM A a, 'B' JOIN C ON X = 'x', \"D\""), (Names{"A", "B", "C", "D"}));
    EXPECT_EQ(TablesNamedIn("SELECT 'a', 'b', (SELECT 'c', 'd' FROM 'A' LIMIT 1)"), (Names{"A"}));
    EXPECT_EQ(TablesNamedIn("SELECT 1 FROM _A JOIN \xC3\x89 JOIN \"select\" JOIN [1]"),
              (Names{"_A", "\xC3\x89", "select", "1"}));
}

TEST(TablesNamedIn, AStatementAreNoValues)
{
    EXPECT_EQ(TablesNamedIn("SELECT 1 FROM A WHERE X IN ('a', 'b') AND F('c', 'd') GROUP BY 'e', 'f'"), (Names{"A"}));
    EXPECT_EQ(TablesNamedIn("SELECT 1 FROM A JOIN B ON X IN ('a', 'b') AND F('c', 'd') ORDER BY 'e', 'f'"),
              (Names{"A", "B"}));
    EXPECT_EQ(TablesNamedIn("SELECT 1 FROM (VALUES ('a', 'b'), ('c', 'd')), A UNION SELECT 'e', 'f'"), (Names{"A"}));
    EXPECT_EQ(TablesNamedIn("SELECT 1 FROM json_each('a', 'b'), (SELECT 'c', 'd')"), (Names{"json_each"}));
    EXPECT_EQ(TablesNamedIn("INSERT INTO A SELECT 'a', 'b' FROM B ON CONFLICT DO UPDATE SET X = ('c')"),
              (Names{"A", "B"}));
    EXPECT_EQ(TablesNamedIn("INSERT INTO A VALUES ('a', 'b'), ('c', 'd')"), (Names{"A"}));
    EXPECT_EQ(TablesNamedIn("SELECT 1 FROM A WHERE X IN (1, $x, ?1) AND F($y, 2e3)"), (Names{"A"}));
}
