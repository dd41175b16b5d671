#include "DecimalText.h"

#include <gtest/gtest.h>

using namespace tarnwick::records;

TEST(DecimalText, NumbersCompareByTheirValue)
{
    const char* const inOrder[] = {"-123456789012345678901",
                                   "-10.01",
                                   "-10",
                                   "-0.5",
                                   "0",
                                   "0.001",
                                   "0.01",
                                   "1",
                                   "9.99",
                                   "10",
                                   "12345678901234567.88",
                                   "12345678901234567.89",
                                   "1e+20",
                                   "none",
                                   "some"};
    for (std::size_t i = 0; i < std::size(inOrder); ++i)
        for (std::size_t k = 0; k < std::size(inOrder); ++k)
            EXPECT_EQ(CompareDecimals(inOrder[i], inOrder[k]), i < k   ? -1
                                                               : i > k ? 1
                                                                       : 0)
                << inOrder[i] << " " << inOrder[k];
}

TEST(DecimalText, FormsOfOneNumberAreEqual)
{
    const char* const forms[][2] = {
        {"1", "1.000"},       {"-0", "0.0"},  {"007", "7"}, {"1.0e+20", "100000000000000000000"},
        {"1.5e-03", ".0015"}, {"+12", "12."}, {"0e5", "0"}, {"-1.25", "-0001.2500"}};
    for (const auto& form : forms) {
        EXPECT_EQ(CompareDecimals(form[0], form[1]), 0) << form[0] << " " << form[1];
        EXPECT_EQ(PlainDecimal(form[0]), PlainDecimal(form[1])) << form[0];
    }
    EXPECT_NE(PlainDecimal("12"), PlainDecimal("1.2"));
    EXPECT_NE(PlainDecimal("-12"), PlainDecimal("12"));
    EXPECT_NE(PlainDecimal("e0"), PlainDecimal("0"));
    EXPECT_EQ(PlainDecimal("1e"), "1e");
    EXPECT_EQ(PlainDecimal(""), "");
}
