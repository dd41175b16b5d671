#include "CLOCDTs.h"

#include "RuntimeError.h"

#include <gtest/gtest.h>

namespace
{

CLOCDT typeWith(const QString& attributes)
{
    CLOCDT type;
    type.ATTRIBUTES = attributes;
    return type;
}

TEST(CLOCDT, TheDefaultLengthIsTheVariableOneOrElseTheFixedOne)
{
    EXPECT_EQ(typeWith(";DEFAULT_LENGTH=10;LENGTH=4").DEFAULT_LENGTH(), 10);
    EXPECT_EQ(typeWith(";DEFAULT_LENGTH=0;LENGTH=4").DEFAULT_LENGTH(), 4);
    EXPECT_EQ(typeWith(";LENGTH=4").DEFAULT_LENGTH(), 4);
    EXPECT_EQ(typeWith("").DEFAULT_LENGTH(), 0);
}

TEST(CLOCDT, AFirstItemIsFoundOnlyBehindASemicolon)
{
    EXPECT_EQ(typeWith("LENGTH=4;PRECISION=9").DEFAULT_LENGTH(), 0);
    EXPECT_EQ(typeWith("LENGTH=4;PRECISION=9").DEFAULT_PRECISION(), 9);
}

TEST(CLOCDT, ThePrecisionIsTheFixedOneOrElseTheLength)
{
    EXPECT_EQ(typeWith(";PRECISION=9;LENGTH=4").DEFAULT_PRECISION(), 9);
    EXPECT_EQ(typeWith(";LENGTH=4").DEFAULT_PRECISION(), 4);
}

TEST(CLOCDT, ABinaryTypeThatIsNoIntegerKeepsItsDefaultPrecision)
{
    EXPECT_EQ(typeWith(";BINARY;DEFAULT_PRECISION=15;LENGTH=8").DEFAULT_PRECISION(), 15);
    EXPECT_EQ(typeWith(";BINARY;STRING;DEFAULT_PRECISION=15;LENGTH=8").DEFAULT_PRECISION(), 15);
}

TEST(CLOCDT, ABinaryIntegerHasTheDigitsOfItsLength)
{
    EXPECT_EQ(typeWith(";BINARY;INTEGER;DEFAULT_PRECISION=1;LENGTH=3").DEFAULT_PRECISION(), 7);
    EXPECT_EQ(typeWith(";BINARY;INTEGER;UNSIGNED;DEFAULT_PRECISION=1;LENGTH=3").DEFAULT_PRECISION(), 8);
    EXPECT_EQ(typeWith(";BINARY;INTEGER;DEFAULT_PRECISION=6;LENGTH=16").DEFAULT_PRECISION(), 6);
    // A word at the very end of the stored text lacks its closing semicolon, so it does not count.
    EXPECT_EQ(typeWith(";BINARY;DEFAULT_PRECISION=6;LENGTH=4;INTEGER").DEFAULT_PRECISION(), 6);
}

TEST(CLOCDT, APackedTypeHasTwoDigitsAByte)
{
    EXPECT_EQ(typeWith(";PACKED;DEFAULT_PRECISION=1;DEFAULT_LENGTH=4").DEFAULT_PRECISION(), 8);
}

TEST(CLOCDT, ElsewhereADefaultPrecisionOnlyMarksThatItFollowsTheLength)
{
    EXPECT_EQ(typeWith(";DEFAULT_PRECISION=99;DEFAULT_LENGTH=4").DEFAULT_PRECISION(), 4);
    EXPECT_EQ(typeWith("PACKED;DEFAULT_PRECISION=99;DEFAULT_LENGTH=4").DEFAULT_PRECISION(), 4);
}

TEST(CLOCDT, TheDefaultFormatIsTheVariableOneOrElseTheFixedOne)
{
    EXPECT_EQ(typeWith(";DEFAULT_FORMAT=DDMMYY;FORMAT=YYMMDD").DEFAULT_FORMAT(), "DDMMYY");
    EXPECT_EQ(typeWith(";DEFAULT_FORMAT=;FORMAT=YYMMDD").DEFAULT_FORMAT(), "YYMMDD");
    EXPECT_EQ(typeWith(";LENGTH=4").DEFAULT_FORMAT(), "");
}

TEST(CLOCDTs, AddRaisesForASecondTypeOfTheSameNameAndItemForAMissingOne)
{
    CLOCDTs types;
    CLOCDT date;
    date.LOCAL_TYPE_NAME = "DATE";
    types.add(date);
    try {
        types.add(date);
        FAIL() << "nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::KeyAlreadyThere);
    }
    try {
        static_cast<void>(types.Item("TIME"));
        FAIL() << "nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::FailedCall);
    }
    EXPECT_EQ(types.Count(), 1);
    types.Remove("DATE");
    EXPECT_EQ(types.Count(), 0);
}

} // namespace
