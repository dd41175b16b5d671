#include "Rewrite.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using tarnwick::Rewrite;

namespace
{

void ExpectUnchanged(const std::string& statement)
{
    EXPECT_EQ(Rewrite(statement), statement);
}

/// Builds statements of ordinary SQL from a seed: every clause in its place, strings and names full of what could
/// mislead a reader of SQL. Their comments are such, too, or blanks in place of them.
class StatementMaker
{
public:
    enum class Comments { Written, Blank };

    explicit StatementMaker(unsigned seed, Comments comments = Comments::Written) : m_random(seed), m_comments(comments)
    {
    }

    std::string Make()
    {
        switch (Number(6)) {
        case 0:
            return "INSERT INTO " + Name() + " (" + Name() + ", " + Name() + ") VALUES (" + Text() + ", " + Value() +
                   ")";
        case 1:
            return "UPDATE " + Name() + " SET " + Name() + " = " + Value() + Where(2);
        case 2:
            return "DELETE FROM " + Name() + Where(2) + Comment();
        default:
            return Select(2) + Comment();
        }
    }

    std::string Text()
    {
        static const std::vector<std::string> pieces = {
            "#",  "''", "WHERE", "ORDER BY", "\xF0\x9F\x98\x80", " ", "\"", "[", "]", "--",
            "/*", "*/", "LIMIT", "it''s",    "\xC3\xA9",         "a", "(",  ")"};
        std::string text = "'";
        for (int i = Number(6); i > 0; --i)
            text += pieces[static_cast<std::size_t>(Number(static_cast<int>(pieces.size())))];
        return text + "'";
    }

private:
    int Number(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

    std::string Name()
    {
        static const std::vector<std::string> names = {"TW_FILE",      "FILE_NAME",   "\"a # b\"", "[where # order]",
                                                       "\"it's\"",     "OFFSET",      "`x`",       "t.COLUMN_NAME",
                                                       "[ORDER BY a]", "WHEREABOUTS", "REORDER_NO"};
        return names[static_cast<std::size_t>(Number(static_cast<int>(names.size())))];
    }

    std::string Value()
    {
        switch (Number(4)) {
        case 0:
            return "012";
        case 1:
            return "0-2";
        case 2:
            return Name();
        default:
            return Text();
        }
    }

    std::string Condition(int depth)
    {
        if (depth > 0 && Number(4) == 0)
            return Name() + " IN (" + Select(depth - 1) + ")";
        return Name() + (Number(2) ? " = " : " <> ") + Value();
    }

    std::string Where(int depth)
    {
        std::string where = " WHERE " + Condition(depth);
        for (int i = Number(3); i > 0; --i)
            where += " AND " + Condition(depth);
        return where;
    }

    std::string Select(int depth)
    {
        std::string select = "SELECT " + (Number(3) ? Name() : "COUNT (*) AS N") + " FROM " + Name() + Comment();
        if (Number(2))
            select += Where(depth);
        if (Number(4) == 0)
            select += " GROUP BY " + Name() + " HAVING " + Condition(0);
        if (Number(2))
            select += " ORDER BY " + Name() + (Number(2) ? " ASC" : " DESC");
        if (Number(4) == 0)
            select += " LIMIT 5 OFFSET 2";
        return select;
    }

    std::string Comment()
    {
        const auto comment = [&](const std::string& text) {
            return m_comments == Comments::Blank ? std::string(text.size(), ' ') : text;
        };
        switch (Number(5)) {
        case 0:
            return " " + comment("-- it's # WHERE") + "\n";
        case 1:
            return " " + comment("/* ORDER BY ' # WHERE */") + " ";
        default:
            return " ";
        }
    }

    std::mt19937 m_random;
    Comments m_comments;
};

/// The text literals of a statement, found the simplest way: nothing else with an apostrophe may stand in it.
std::vector<std::string> Literals(const std::string& statement)
{
    std::vector<std::string> literals;
    for (std::size_t at = statement.find('\''); at != std::string::npos; at = statement.find('\'', at)) {
        std::size_t end = at + 1;
        while (statement[end] != '\'' || (end + 1 < statement.size() && statement[end + 1] == '\''))
            end += statement[end] == '\'' ? 2 : 1;
        literals.push_back(statement.substr(at, end + 1 - at));
        at = end + 1;
    }
    return literals;
}

} // namespace

TEST(Rewrite, StandardStatementsStayByteForByteExceptTheirComments)
{
    for (unsigned seed = 1; seed <= 4000; ++seed) {
        const std::string blank = StatementMaker(seed, StatementMaker::Comments::Blank).Make();
        ASSERT_EQ(Rewrite(StatementMaker(seed).Make()), blank) << "seed " << seed;
        ASSERT_EQ(Rewrite(blank), blank) << "seed " << seed;
    }
}

TEST(Rewrite, CommentsBecomeBlanksOfTheSameLength)
{
    EXPECT_EQ(Rewrite("SELECT 1; -- it's ?"), "SELECT 1;          ");
    EXPECT_EQ(Rewrite("-- {a; b?}\nSELECT 1"), "          \nSELECT 1");
    EXPECT_EQ(Rewrite("SELECT/* ' ? ; */1--\r\n+/**/2/***/"), "SELECT           1  \r\n+    2     ");
    EXPECT_EQ(Rewrite("/* a\r\n' \xC3\xA9 */SELECT/*/ */1"), "    \r\n       SELECT      1");
    EXPECT_EQ(Rewrite("A = 1 /* ' */ AND B = ' /* '' */ ' -- '"), "A = 1         AND B = ' /* '' */ '     ");
    EXPECT_EQ(Rewrite("SELECT 1 /* until the end ' ;"), "SELECT 1                     ");
    EXPECT_EQ(Rewrite("-- a\n/* b */"), "    \n       ");
    EXPECT_EQ(Rewrite("EXPLAIN CREATE VIEW V AS SELECT 1 -- a"), "EXPLAIN CREATE VIEW V AS SELECT 1     ");
    EXPECT_EQ(Rewrite("SELECT #1/2/2020#/*#*/, '' --#\n, #1:00#"), "SELECT '2020-01-02'     , ''    \n, '1:00'");
}

TEST(Rewrite, WhatOnlyLooksLikeACommentStays)
{
    ExpectUnchanged("SELECT '--', '/* '' */', \"/*\"\"--\", [--], `/*`, 1 - -1, 1 / 2 * 3");
    ExpectUnchanged("SELECT 1 - - 1 /*");
    ExpectUnchanged("SELECT 1 /* comment */ + 'open -- ");
    ExpectUnchanged("SELECT -- comment\n [open");
}

TEST(Rewrite, NamesThatWouldBeMisreadAreInDoubleQuotes)
{
    EXPECT_EQ(Rewrite("SELECT [a;b], `it's`, [what?] FROM `{a``b}`, [a\"b]"),
              "SELECT \"a;b\", \"it's\", \"what?\" FROM \"{a`b}\", \"a\"\"b\"");
    EXPECT_EQ(Rewrite("SELECT '[' || `a;b` || ']', ' ` ', [c;d]"), "SELECT '[' || \"a;b\" || ']', ' ` ', \"c;d\"");
    EXPECT_EQ(Rewrite("SELECT '`[', [a;b]"), "SELECT '`[', \"a;b\"");
    EXPECT_EQ(Rewrite("SELECT '[`', `a;b`"), "SELECT '[`', \"a;b\"");
    EXPECT_EQ(Rewrite("SELECT [x`y], `a;b`, `c``;`"), "SELECT [x`y], \"a;b\", \"c`;\"");
    EXPECT_EQ(Rewrite("SELECT ']', `]`, [a;b]"), "SELECT ']', `]`, \"a;b\"");
    EXPECT_EQ(Rewrite("CREATE VIEW [V;] AS SELECT 1 -- [a;b]"), "CREATE VIEW \"V;\" AS SELECT 1 -- [a b]");
    ExpectUnchanged("SELECT [a b], `c#d`, \"e;f?\", '[g;h]', '`i;j`'");
    ExpectUnchanged("SELECT [a;b], [open");
    for (const char quote : {'[', '`'})
        ExpectUnchanged("SELECT '" + std::string(200000, quote) + "'");
}

TEST(Rewrite, CommentsThatAreStoredStayButForWhatWouldBeMisread)
{
    EXPECT_EQ(Rewrite("CREATE VIEW V AS -- it's {a}\nSELECT 'x?' /* \"y\"; ? */"),
              "CREATE VIEW V AS -- it s  a \nSELECT 'x?' /*  y     */");
    const std::string view = "CREATE VIEW V AS -- #all\nSELECT 1 /* one */";
    ExpectUnchanged(view);
    ExpectUnchanged(view + " -- all");
    EXPECT_EQ(Rewrite("/* a */ " + view + "; -- b"), "        " + view + ";     ");
    EXPECT_EQ(Rewrite("BEGIN /* a */; " + view + "; COMMIT; /* b */"), "BEGIN        ; " + view + "; COMMIT;        ");
    ExpectUnchanged("create trigger G AFTER INSERT ON T BEGIN /* a */ SELECT 1; -- b\nSELECT 2; /* c */ END");
    EXPECT_EQ(Rewrite("-- a\nALTER TABLE T ADD COLUMN A /* b */ INTEGER -- c"),
              "    \nALTER TABLE T ADD COLUMN A         INTEGER     ");
    EXPECT_EQ(Rewrite("ALTER TABLE T ADD COLUMN A INT -- it's\n;"), "ALTER TABLE T ADD COLUMN A INT        \n;");
    EXPECT_EQ(Rewrite("DROP TABLE CREATE_ /* CREATE */"), "DROP TABLE CREATE_             ");
}

TEST(Rewrite, AByteOrderMarkInFrontIsBlank)
{
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_EQ(Rewrite(mark + "SELECT 1"), "   SELECT 1");
    EXPECT_EQ(Rewrite(" \n" + mark + " /* a */ " + mark + "SELECT '" + mark + "'"),
              " \n" + std::string(15, ' ') + "SELECT '" + mark + "'");
    EXPECT_EQ(Rewrite(mark), "   ");
}

TEST(Rewrite, TextLiteralsAreNeverTouched)
{
    for (unsigned seed = 1; seed <= 4000; ++seed) {
        StatementMaker maker(seed);
        const std::string first = maker.Text();
        const std::string second = maker.Text();
        const std::string third = maker.Text();
        const std::string rewritten = Rewrite("SELECT " + first + " FROM T ORDER BY " + second + " WHERE A = " + third);
        ASSERT_EQ(rewritten, "SELECT " + first + " FROM T WHERE A = " + third + " ORDER BY " + second + " ")
            << "seed " << seed;
        std::vector<std::string> found = Literals(Rewrite("SELECT " + first + ", #2020-01-02#, " + second));
        ASSERT_EQ(found, (std::vector<std::string>{first, "'2020-01-02'", second})) << "seed " << seed;
    }
}

TEST(Rewrite, AnyBytesAreTakenWithoutHarm)
{
    static const std::string alphabet = "'\"#[]`()-/*;\n WHEREORDBYSLCTa0_.\\\xF0\x9F";
    std::mt19937 random(4711);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (unsigned length = random() % 40; length > 0; --length)
            text += alphabet[random() % alphabet.size()];
        const std::string once = Rewrite(text);
        ASSERT_EQ(Rewrite(once), once) << text;
    }
}

TEST(Rewrite, DateLiteralsBecomeText)
{
    EXPECT_EQ(Rewrite("SELECT #1998-12-31#"), "SELECT '1998-12-31'");
    EXPECT_EQ(Rewrite("A = #12/31/1998# AND B"), "A = '1998-12-31' AND B");
    EXPECT_EQ(Rewrite("A=#1998/2/3#"), "A='1998-02-03'");
    EXPECT_EQ(Rewrite("A = #2/3/1998 10:11:12#"), "A = '1998-02-03 10:11:12'");
    EXPECT_EQ(Rewrite("A = #10:11:12#"), "A = '10:11:12'");
    EXPECT_EQ(Rewrite("[A] LIKE #1998%#"), "[A] LIKE '1998%'");
    EXPECT_EQ(Rewrite("A IN (#x'y#,#b#)"), "A IN ('x''y','b')");
}

TEST(Rewrite, DatesThatCouldMeanTwoThingsAreKept)
{
    EXPECT_EQ(Rewrite("#1/2/03#"), "'1/2/03'");
    EXPECT_EQ(Rewrite("#31/12/1998#"), "'31/12/1998'");
}

TEST(Rewrite, MalformedHashLiteralsAreLeftToBeRefused)
{
    ExpectUnchanged("SELECT ##");
    ExpectUnchanged("SELECT #1998-12-31");
    ExpectUnchanged("SELECT #1998\n-12-31#");
    ExpectUnchanged("SELECT A#B#C FROM T");
    ExpectUnchanged("SELECT #1998-12-31# AND 'open");
}

TEST(Rewrite, HashesInsideOfOtherThingsAreNoLiterals)
{
    ExpectUnchanged("SELECT '#1998-12-31#'");
    ExpectUnchanged("SELECT \"#a#\", [#b#], `#c#`");
    ExpectUnchanged("CREATE VIEW V AS SELECT 1 -- #a#");
    ExpectUnchanged("CREATE VIEW V AS SELECT /* #a# */ 1");
}

TEST(Rewrite, AWhereBehindOrderByMovesInFrontOfIt)
{
    EXPECT_EQ(Rewrite("SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME WHERE DATABASE_NAME <> 'TW'"),
              "SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME <> 'TW' ORDER BY DATABASE_NAME ");
    EXPECT_EQ(Rewrite("select a from t order by a desc where b = 1 and c = 2 limit 3;"),
              "select a from t where b = 1 and c = 2 order by a desc  limit 3;");
    EXPECT_EQ(Rewrite("SELECT A FROM T GROUP BY A ORDER BY A WHERE B = 1"),
              "SELECT A FROM T WHERE B = 1 GROUP BY A ORDER BY A ");
    EXPECT_EQ(Rewrite("SELECT A FROM T ORDER \vBY A WHERE B = 1"), "SELECT A FROM T WHERE B = 1 ORDER \vBY A ");
    EXPECT_EQ(Rewrite("SELECT OFFSET FROM T ORDER BY OFFSET WHERE OFFSET > 3"),
              "SELECT OFFSET FROM T WHERE OFFSET > 3 ORDER BY OFFSET ");
}

TEST(Rewrite, AWhereIsMovedInsideOfItsOwnSelect)
{
    EXPECT_EQ(Rewrite("SELECT A FROM (SELECT A FROM T ORDER BY A WHERE B = 1) WHERE C = 2 ORDER BY D"),
              "SELECT A FROM (SELECT A FROM T WHERE B = 1 ORDER BY A ) WHERE C = 2 ORDER BY D");
    EXPECT_EQ(Rewrite("SELECT A FROM T ORDER BY A WHERE B IN (SELECT B FROM U ORDER BY B WHERE C = 1)"),
              "SELECT A FROM T WHERE B IN (SELECT B FROM U WHERE C = 1 ORDER BY B ) ORDER BY A ");
    EXPECT_EQ(Rewrite("SELECT A FROM T -- first\nORDER BY A -- second\nWHERE B = 1 -- third"),
              "SELECT A FROM T         \nWHERE B = 1 ORDER BY A          \n         ");
    EXPECT_EQ(Rewrite("CREATE VIEW V AS SELECT A FROM T -- first\nORDER BY A -- second\nWHERE B = 1 -- third"),
              "CREATE VIEW V AS SELECT A FROM T -- first\nWHERE B = 1 ORDER BY A -- second\n -- third");
}

TEST(Rewrite, AWhereWithAnotherPlaceStays)
{
    ExpectUnchanged("SELECT A FROM T WHERE X = 1 ORDER BY A WHERE B = 1");
    ExpectUnchanged("SELECT A FROM T ORDER BY A UNION SELECT B FROM U WHERE C = 1");
    ExpectUnchanged("SELECT A FROM T ORDER BY A WHERE B = 1 UNION SELECT B FROM U");
    ExpectUnchanged("INSERT INTO T SELECT A FROM U WHERE 1 ORDER BY A ON CONFLICT (A) DO UPDATE SET B = 1 WHERE C = 2");
    ExpectUnchanged("INSERT INTO T SELECT A FROM U ORDER BY A ON CONFLICT (A) DO UPDATE SET B = 1 WHERE C = 2");
    ExpectUnchanged("SELECT sum(A) OVER (ORDER BY B) FROM T WHERE C = 1");
    ExpectUnchanged("SELECT A FROM T ORDER BY A; SELECT B FROM U WHERE C = 1");
    ExpectUnchanged("SELECT group_concat(A) FILTER (WHERE B = 1) FROM T ORDER BY A");
    ExpectUnchanged("DELETE FROM T ORDER BY A WHERE B = 1");
    ExpectUnchanged("SELECT A FROM T ORDER BY A WHERE");
}

TEST(Rewrite, AnEmptyTextGivenToANumericColumnBecomesZero)
{
    EXPECT_EQ(Rewrite("INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE, REMARKS) VALUES ('', '', '')"),
              "INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE, REMARKS) VALUES ('', 0, '')");
    EXPECT_EQ(
        Rewrite("insert or ignore into main.[tw_file]([record_size],\"REMARKS\")values('',''),(f('',''),''),('','')"),
        "insert or ignore into main.[tw_file]([record_size],\"REMARKS\")values(0,''),(f('',''),''),(0,'')");
    EXPECT_EQ(Rewrite("REPLACE INTO TW_TBLPRV VALUES ('D', 'T', '', '', '1', '', NULL, '');"),
              "REPLACE INTO TW_TBLPRV VALUES ('D', 'T', '', 0, '1', 0, NULL, '');");
    EXPECT_EQ(Rewrite("UPDATE TW_COLUMN SET LENGTH = '', REMARKS = '', RADIX='' WHERE LENGTH = '' AND SCALE = ''"),
              "UPDATE TW_COLUMN SET LENGTH = 0, REMARKS = '', RADIX=0 WHERE LENGTH = '' AND SCALE = ''");
    EXPECT_EQ(Rewrite("UPDATE OR FAIL TW_FIELD AS f SET OFFSET = (SELECT 1 WHERE ',' = ''), SCALE = ''"),
              "UPDATE OR FAIL TW_FIELD AS f SET OFFSET = (SELECT 1 WHERE ',' = ''), SCALE = 0");
}

TEST(Rewrite, AnEmptyTextElsewhereStays)
{
    ExpectUnchanged("INSERT INTO TW_FILE (FILE_NAME, REMARKS) VALUES ('', '')");
    ExpectUnchanged("INSERT INTO OTHER (LENGTH) VALUES ('')");
    ExpectUnchanged("INSERT INTO TW_FIELD (LENGTH) VALUES ('' || '1')");
    ExpectUnchanged("INSERT INTO TW_FIELD (LENGTH, OFFSET) VALUES ('1', '''')");
    ExpectUnchanged("INSERT INTO TW_FIELD (LENGTH) SELECT ''");
    ExpectUnchanged("INSERT INTO TW_FIELD (LENGTH, '')");
    ExpectUnchanged("UPDATE TW_FIELD SET REMARKS = LENGTH = ''");
    ExpectUnchanged("UPDATE TW_FIELD SET LENGTH = CASE WHEN OFFSET = '' THEN 1 ELSE 2 END");
    ExpectUnchanged("UPDATE OTHER SET LENGTH = ''");
    ExpectUnchanged("SELECT LENGTH FROM TW_FIELD WHERE LENGTH = ''");
    ExpectUnchanged("DELETE FROM TW_FIELD WHERE LENGTH = ''");
}
