#include "LongNumbers.h"
#include "GivenNames.h"

#include <gtest/gtest.h>

using namespace tarnwick::records;

namespace
{

std::string Quoted(const std::string& statement)
{
    return QuoteLongNumbers(statement, [](const std::string& name) { return name == "WIDE"; });
}

/// The text that is to come out, in which `#` stands around numbers that become decimal ones.
std::string WithDecimals(const std::string& text)
{
    std::string whole;
    bool isNumber = false;
    for (const char c : text) {
        if (c != '#') {
            whole += c;
            continue;
        }
        isNumber = !isNumber;
        whole += isNumber ? "CAST('" : "' AS TEXT) COLLATE TARNWICK_LITERAL";
    }
    return whole;
}

} // namespace

TEST(LongNumbers, AreQuotedWhereADecimalColumnIsComparedWithThem)
{
    const char* const statements[][2] = {
        {"W WHERE WIDE = 12345678901234567.89", "W WHERE WIDE = #12345678901234567.89#"},
        {"[Wide]>=-12345678901234567.89 OR x.\"WIDE\" <> 1234567890123456",
         "[Wide]>=#-12345678901234567.89# OR x.\"WIDE\" <> #1234567890123456#"},
        {"WIDE NOT BETWEEN -1 AND 1234567890123456.5 AND 1", "WIDE NOT BETWEEN -1 AND #1234567890123456.5# AND 1"},
        {"WIDE IN (1, 1234567890123456.5, -.12345678901234567)",
         "WIDE IN (1, '1234567890123456.5', '-.12345678901234567')"},
        {"WHERE 12345678901234567.89 = x.WIDE", "WHERE #12345678901234567.89# = x.WIDE"},
        {"(-12345678901234567 <= [WIDE]) AND WIDE = 12345678901234567",
         "(#-12345678901234567# <= [WIDE]) AND WIDE = #12345678901234567#"},
        {"WIDE BETWEEN 1 AND 12345678901234567 = WIDE", "WIDE BETWEEN 1 AND #12345678901234567# = WIDE"},
        {"WIDE IS 12345678901234567 OR WIDE IS NOT -12345678901234567",
         "WIDE IS #12345678901234567# OR WIDE IS NOT #-12345678901234567#"},
        {"WIDE IS NOT DISTINCT FROM 12345678901234567", "WIDE IS NOT DISTINCT FROM #12345678901234567#"},
        {"1 < 2 AND (WIDE < 12345678901234567)", "1 < 2 AND (WIDE < #12345678901234567#)"},
        {"WIDE IN (?, 12345678901234567, MAX(1, 1234567890123456), (2), 1234567890123456.5)",
         "WIDE IN (?, '12345678901234567', MAX(1, 1234567890123456), (2), '1234567890123456.5')"},
        {"WIDE IN ((SELECT 1 WHERE WIDE > 12345678901234567), 12345678901234568) OR WIDE = 12345678901234569",
         "WIDE IN ((SELECT 1 WHERE WIDE > #12345678901234567#), '12345678901234568') OR WIDE = #12345678901234569#"},
        {"WIDE IN (1) AND x IN (1, 12345678901234567)", "WIDE IN (1) AND x IN (1, 12345678901234567)"},
        {"NOT b.x.WIDE < 12345678901234567", "NOT b.x.WIDE < #12345678901234567#"},
        {"WIDE BETWEEN-12345678901234567 AND-1234567890123456",
         "WIDE BETWEEN #-12345678901234567# AND #-1234567890123456#"},
        {"WIDE BETWEEN.12345678901234567 AND 1", "WIDE BETWEEN #.12345678901234567# AND 1"},
        {"WIDE IS-12345678901234567", "WIDE IS #-12345678901234567#"},
        {"WHERE-12345678901234567<WIDE", "WHERE #-12345678901234567#<WIDE"},
        {"UPDATE T SET N = (SELECT 1, 2 WHERE WIDE = 12345678901234567), WIDE = 12345678901234568 WHERE WIDE = "
         "12345678901234569, WIDE = 12345678901234569",
         "UPDATE T SET N = (SELECT 1, 2 WHERE WIDE = #12345678901234567#), WIDE = 12345678901234568 WHERE WIDE = "
         "#12345678901234569#, WIDE = #12345678901234569#"},
        {"CASE x.[Wide] WHEN 1 THEN 2 WHEN -12345678901234567 THEN 12345678901234567 ELSE 12345678901234568 END",
         "CASE x.[Wide] WHEN 1 THEN 2 WHEN #-12345678901234567# THEN 12345678901234567 ELSE 12345678901234568 END"},
        {"CASE WIDE WHEN CASE x WHEN 12345678901234567 THEN 1 END THEN 1 WHEN 12345678901234568 THEN 3 END, CASE N "
         "WHEN "
         "12345678901234569 THEN 1 END",
         "CASE WIDE WHEN CASE x WHEN 12345678901234567 THEN 1 END THEN 1 WHEN #12345678901234568# THEN 3 END, CASE N "
         "WHEN 12345678901234569 THEN 1 END"},
        {"CASE WIDE WHEN (SELECT CASE WIDE WHEN 12345678901234567 THEN 1 END) THEN 1 WHEN.12345678901234568 THEN 3 END",
         "CASE WIDE WHEN (SELECT CASE WIDE WHEN #12345678901234567# THEN 1 END) THEN 1 WHEN #.12345678901234568# THEN "
         "3 "
         "END"},
        {"CASE WHEN WIDE = 12345678901234567 THEN 1 WHEN 12345678901234568 = WIDE THEN 2 END",
         "CASE WHEN WIDE = #12345678901234567# THEN 1 WHEN #12345678901234568# = WIDE THEN 2 END"},
        {"CASE x WHEN 1 THEN 12345678901234567 = WIDE ELSE -12345678901234567 IS WIDE END",
         "CASE x WHEN 1 THEN #12345678901234567# = WIDE ELSE #-12345678901234567# IS WIDE END"},
        {"CASE 12345678901234567 < WIDE WHEN 1 THEN 2 END", "CASE #12345678901234567# < WIDE WHEN 1 THEN 2 END"},
        {"SELECT DISTINCT 12345678901234567 = WIDE, ALL 12345678901234567 NOT IN (WIDE)",
         "SELECT DISTINCT #12345678901234567# = WIDE, ALL #12345678901234567# NOT IN (WIDE)"},
        {"GROUP BY 12345678901234567 <= WIDE ORDER BY 12345678901234567 BETWEEN 1 AND WIDE",
         "GROUP BY #12345678901234567# <= WIDE ORDER BY #12345678901234567# BETWEEN 1 AND WIDE"},
        {"RETURNING -12345678901234567 <> WIDE", "RETURNING #-12345678901234567# <> WIDE"},
        {"WHERE 12345678901234567 BETWEEN WIDE AND 5", "WHERE #12345678901234567# BETWEEN WIDE AND 5"},
        {"NOT -12345678901234567 NOT BETWEEN a.WIDE AND WIDE", "NOT #-12345678901234567# NOT BETWEEN a.WIDE AND WIDE"},
        {"WHERE 12345678901234567 BETWEEN -1 AND [WIDE]", "WHERE #12345678901234567# BETWEEN -1 AND [WIDE]"},
        {"WHERE 12345678901234567 BETWEEN b.LOW AND WIDE", "WHERE #12345678901234567# BETWEEN b.LOW AND WIDE"},
        {"WHERE 12345678901234567 IS WIDE OR -12345678901234567 IS NOT x.WIDE",
         "WHERE #12345678901234567# IS WIDE OR #-12345678901234567# IS NOT x.WIDE"},
        {"(12345678901234567 IS DISTINCT FROM WIDE) AND 12345678901234567 IS NOT DISTINCT FROM WIDE",
         "(#12345678901234567# IS DISTINCT FROM WIDE) AND #12345678901234567# IS NOT DISTINCT FROM WIDE"},
        {"(12345678901234567 IN (WIDE))", "(#12345678901234567# IN (WIDE))"},
        {"WHERE 12345678901234567 NOT IN (1, (2), F(3), x.WIDE, 4)",
         "WHERE #12345678901234567# NOT IN (1, (2), F(3), x.WIDE, 4)"},
        {"WIDE NOT IN (VALUES (12345678901234567), (1), (12345678901234568))",
         "WIDE NOT IN (VALUES ('12345678901234567'), (1), ('12345678901234568'))"},
        {"UPDATE T SET N = WIDE = 12345678901234567", "UPDATE T SET N = WIDE = 12345678901234567"},
        {"UPDATE T SET N = (WIDE = 12345678901234567)", "UPDATE T SET N = (WIDE = #12345678901234567#)"},
    };
    for (const auto& statement : statements)
        EXPECT_EQ(Quoted(statement[0]), WithDecimals(statement[1]));
}

TEST(LongNumbers, AreLeftAsTheyAreAnywhereElse)
{
    for (const char* statement : {"WIDE = 123456789012345",
                                  "OTHER = 12345678901234567.89",
                                  "WIDE + 1 = 12345678901234567.89",
                                  "WIDE = 12345678901234567.89 + 1",
                                  "WIDE = - 12345678901234567.89",
                                  "'WIDE = 12345678901234567.89'",
                                  "WIDE = '12345678901234567.89'",
                                  "SUM(WIDE) > 12345678901234567.89",
                                  "WIDE =",
                                  "WIDE IN (",
                                  "WIDE BETWEEN",
                                  "1 * WIDE < 12345678901234567.89",
                                  "-WIDE < 12345678901234567.89",
                                  "5 + x.WIDE BETWEEN 1 AND 1234567890123456",
                                  "5 % [a].[x].[WIDE] IN (12345678901234567)",
                                  "1 - WIDE >= 12345678901234567",
                                  "1 / WIDE = 12345678901234567",
                                  "'' || WIDE = 12345678901234567",
                                  "1 & WIDE = 12345678901234567",
                                  "~WIDE = 12345678901234567",
                                  "1 < WIDE < 12345678901234567",
                                  "1 <> WIDE = 12345678901234567",
                                  "WHERE 12345678901234567 < WIDE + 1",
                                  "WHERE 12345678901234567 = WIDE < 5",
                                  "WHERE 1 + 12345678901234567 < WIDE",
                                  "12345678901234567 = WIDE",
                                  "WHERE 12345678901234567 WIDE",
                                  "WHERE 12345678901234567 - WIDE = 1",
                                  "= WIDE",
                                  "WIDE IS NOT NULL",
                                  "WIDE = 1234567890123456e1",
                                  "WIDE > 1234567890123456.5e2",
                                  "WIDE > -1234567890123456.e+2",
                                  "WIDE IN (1234567890123456.5e-2)",
                                  "WIDE IN (1234567890123456'5')",
                                  "WIDE IN (1234567890123456#5#)",
                                  "UPDATE T SET WIDE = 12345678901234567 WHERE NO = 1",
                                  "UPDATE T SET NO = 1, [wide] = 12345678901234567 RETURNING NO",
                                  "INSERT INTO T VALUES (1) ON CONFLICT DO UPDATE SET WIDE = 12345678901234567",
                                  "WIDE = 12345678901234567 % 5",
                                  "WIDE = 12345678901234567 || 'x'",
                                  "WIDE < 12345678901234567.89.01",
                                  "WIDE IN (1..234567890123456)",
                                  "WHERE 12345678901.234567.89 = WIDE",
                                  "CASE WIDE WHEN 12345678901234567 + 1 THEN 1 END",
                                  "CASE WIDE WHEN 12345678901234567 = x THEN 1 END",
                                  "CASE WIDE + 1 WHEN 12345678901234567 THEN 1 END",
                                  "CASE WHEN WIDE THEN 12345678901234567 END",
                                  "CASE x WHEN WIDE THEN 1 WHEN 12345678901234567 THEN 2 END",
                                  "CASE WIDE WHEN 12345678901234567",
                                  "CASE WIDE",
                                  "CASE 12345678901234567 WHEN WIDE THEN 1 END",
                                  "WHERE 12345678901234567 BETWEEN WIDE + 1 AND 5",
                                  "WHERE 12345678901234567 BETWEEN 1 AND WIDE + 1",
                                  "WHERE 12345678901234567 BETWEEN 1 + 1 AND WIDE",
                                  "WHERE 12345678901234567 BETWEEN ? AND WIDE",
                                  "WHERE 12345678901234567 BETWEEN :x AND WIDE",
                                  "WHERE 12345678901234567 BETWEEN $x AND WIDE",
                                  "WHERE 1 + 12345678901234567 BETWEEN WIDE AND WIDE",
                                  "WHERE 12345678901234567 AND WIDE",
                                  "WHERE 12345678901234567 IS WIDE + 1",
                                  "IS NOT WIDE",
                                  "SELECT 12345678901234567 FROM WIDE",
                                  "BETWEEN WIDE AND WIDE",
                                  "IN (WIDE)",
                                  "WHERE 12345678901234567 IN (WIDE + 1)",
                                  "WHERE 12345678901234567 IN (1 + WIDE)",
                                  "WHERE 12345678901234567 IN (SELECT N, WIDE FROM T)",
                                  "WHERE 12345678901234567 IN (WITH a AS (VALUES (1)), WIDE AS (VALUES (2)) SELECT 1)",
                                  "WHERE 12345678901234567 IN (VALUES (WIDE))",
                                  "WHERE 12345678901234567 + F(WIDE)",
                                  "WIDE IN (SELECT 12345678901234567)",
                                  "12345678901234567 12345678901234567 WIDE"})
        EXPECT_EQ(Quoted(statement), statement);
}

TEST(LongNumbers, AreFoundWhereTheColumnsNameHasQuotesInIt)
{
    const auto isDecimal = [](const std::string& name) { return name == "A\"B"; };
    EXPECT_EQ(QuoteLongNumbers("\"a\"\"b\" = 12345678901234567", isDecimal),
              WithDecimals("\"a\"\"b\" = #12345678901234567#"));
}

TEST(LongNumbers, AreWhatTheColumnsValueIsInTheListsOfWhatIsGivenTheName)
{
    const std::string list = " IN (1, 12345678901234567)";
    const auto chosen = [](const std::string& column) {
        return " IN (1, CASE typeof(" + column + ") WHEN 'text' THEN '12345678901234567' ELSE 12345678901234567 END)";
    };
    const char* const given[][2] = {{"SELECT * FROM (SELECT SUM(X) AS WIDE FROM T) WHERE ", "WIDE"},
                                    {"SELECT SUM(X) [Wide] FROM T WHERE ", "\"WIDE\""},
                                    {"SELECT SUM(X) AS 'wide' FROM T WHERE ", "WIDE"},
                                    {"WITH V(A, Wide) AS (SELECT 1, 2) SELECT * FROM V WHERE ", "main . V.[wide]"},
                                    {"SELECT 1 + x.WIDE AS WIDE FROM T x WHERE ", "x.WIDE"},
                                    {"SELECT OTHER AS WIDE FROM T WHERE NOT ", "WIDE"}};
    for (const auto& [before, column] : given)
        EXPECT_EQ(Quoted(before + (column + list)), before + (column + chosen(column)));
    const std::string quoted = " IN (1, '12345678901234567')";
    for (const std::string own :
         {"SELECT CAST(X AS WIDE) FROM T WHERE WIDE", "SELECT NO, x.WIDE AS [Wide] FROM T x WHERE WIDE",
          "SELECT WIDE AS WIDE FROM T WHERE WIDE", "SELECT SUM(WIDE) AS TOTAL FROM T WHERE (1) AND WIDE"})
        EXPECT_EQ(Quoted(own + list), own + quoted);
    Namesakes namesakes;
    CollectGivenNames("CREATE VIEW V(NO, [Wide]) AS SELECT NO, SUM(X) FROM T", namesakes.given);
    EXPECT_EQ(QuoteLongNumbers(
                  "WIDE" + list, [](const std::string&) { return true; }, namesakes),
              "WIDE" + chosen("WIDE"));
}

TEST(LongNumbers, AreMereTextsWhereAColumnOfTextSharesTheName)
{
    const auto quoted = [](const std::string& statement) {
        return QuoteLongNumbers(statement, [](const std::string& name) { return name == "WIDE" || name == "OTHER"; },
                                {{}, {"WIDE"}});
    };
    EXPECT_EQ(quoted("WHERE n.WIDE = 1234567890123456 AND OTHER = 1234567890123456"),
              WithDecimals("WHERE n.WIDE = '1234567890123456' AND OTHER = #1234567890123456#"));
    EXPECT_EQ(quoted("WHERE -1234567890123456 < WIDE AND WIDE IS 1234567890123456"),
              "WHERE '-1234567890123456' < WIDE AND WIDE IS '1234567890123456'");
    EXPECT_EQ(quoted("WHERE WIDE BETWEEN-1234567890123456 AND 1234567890123456"),
              "WHERE WIDE BETWEEN '-1234567890123456' AND '1234567890123456'");
    EXPECT_EQ(quoted("SELECT SUM(X) AS WIDE FROM T HAVING WIDE > 1234567890123456"),
              "SELECT SUM(X) AS WIDE FROM T HAVING WIDE > CASE typeof(WIDE) WHEN 'text' THEN '1234567890123456' ELSE "
              "1234567890123456 END");
}
