#include "LongNumbers.h"

#include <gtest/gtest.h>

using namespace tarnwick::records;

namespace
{

std::string Quoted(const std::string& statement)
{
    return QuoteLongNumbers(statement, [](const std::string& name) { return name == "WIDE"; });
}

} // namespace

TEST(LongNumbers, AreQuotedWhereADecimalColumnIsComparedWithThem)
{
    const char* const statements[][2] = {
        {"W WHERE WIDE = 12345678901234567.89", "W WHERE WIDE = '12345678901234567.89'"},
        {"[Wide]>=-12345678901234567.89 OR x.\"WIDE\" <> 1234567890123456",
         "[Wide]>='-12345678901234567.89' OR x.\"WIDE\" <> '1234567890123456'"},
        {"WIDE NOT BETWEEN -1 AND 1234567890123456.5 AND 1", "WIDE NOT BETWEEN -1 AND '1234567890123456.5' AND 1"},
        {"WIDE IN (1, 1234567890123456.5, -.12345678901234567)",
         "WIDE IN (1, '1234567890123456.5', '-.12345678901234567')"},
        {"WHERE 12345678901234567.89 = x.WIDE", "WHERE '12345678901234567.89' = x.WIDE"},
        {"(-12345678901234567 <= [WIDE]) AND WIDE = 12345678901234567",
         "('-12345678901234567' <= [WIDE]) AND WIDE = '12345678901234567'"},
        {"WIDE BETWEEN 1 AND 12345678901234567 = WIDE", "WIDE BETWEEN 1 AND '12345678901234567' = WIDE"},
        {"WIDE IS 12345678901234567 OR WIDE IS NOT -12345678901234567",
         "WIDE IS '12345678901234567' OR WIDE IS NOT '-12345678901234567'"},
        {"WIDE IS NOT DISTINCT FROM 12345678901234567", "WIDE IS NOT DISTINCT FROM '12345678901234567'"},
        {"1 < 2 AND (WIDE < 12345678901234567)", "1 < 2 AND (WIDE < '12345678901234567')"},
        {"NOT b.x.WIDE < 12345678901234567", "NOT b.x.WIDE < '12345678901234567'"},
    };
    for (const auto& statement : statements)
        EXPECT_EQ(Quoted(statement[0]), statement[1]);
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
                                  "12345678901234567 12345678901234567 WIDE"})
        EXPECT_EQ(Quoted(statement), statement);
}
