#include "ValuesFixture.h"

#include <array>

using namespace std::string_literals;

TEST_F(Values, ANumberThatItsPlaceCannotHoldIsRefused)
{
    ExpectLimits<SQLSCHAR>(SQL_C_STINYINT, "-129", "128");
    ExpectLimits<SQLSCHAR>(SQL_C_TINYINT, "-129", "128");
    ExpectLimits<SQLCHAR>(SQL_C_UTINYINT, "-1", "256");
    ExpectLimits<SQLSMALLINT>(SQL_C_SSHORT, "-32769", "32768");
    ExpectLimits<SQLSMALLINT>(SQL_C_SHORT, "-32769", "32768");
    ExpectLimits<SQLUSMALLINT>(SQL_C_USHORT, "-1", "65536");
    ExpectLimits<SQLINTEGER>(SQL_C_SLONG, "-2147483649", "2147483648");
    ExpectLimits<SQLINTEGER>(SQL_C_LONG, "-2147483649", "2147483648");
    ExpectLimits<SQLUINTEGER>(SQL_C_ULONG, "-1", "4294967296");
    ExpectLimits<SQLBIGINT>(SQL_C_SBIGINT, "-9223372036854775809", "9223372036854775808");
    ExpectLimits<SQLUBIGINT>(SQL_C_UBIGINT, "-1", "18446744073709551616");
}

TEST_F(Values, ABitHoldsZeroAndOneOnly)
{
    const auto bit = [&](const std::string& value) { return Get<SQLCHAR>("SELECT " + value, SQL_C_BIT); };
    EXPECT_EQ(bit("0"), "0");
    EXPECT_EQ(bit("1"), "1");
    EXPECT_EQ(bit("'01.00'"), "1");
    EXPECT_EQ(bit("1.5"), "01S07 1");
    EXPECT_EQ(bit("0.5"), "01S07 0");
    EXPECT_EQ(bit("2"), "22003");
    EXPECT_EQ(bit("-123.45"), "22003");
    EXPECT_EQ(bit("-0.5"), "22003");
    EXPECT_EQ(bit("'true'"), "1");
    EXPECT_EQ(bit("'No'"), "0");
    EXPECT_EQ(bit("'maybe'"), "22018");
}

TEST_F(Values, AFractionThatIsLeftOutIsWarnedOf)
{
    const auto number = [&](const std::string& value) { return Get<SQLINTEGER>("SELECT " + value, SQL_C_SLONG); };
    EXPECT_EQ(number("-123.45"), "01S07 -123");
    EXPECT_EQ(number("'0.001'"), "01S07 0");
    EXPECT_EQ(number("123.0"), "123");
    EXPECT_EQ(number("'-.5'"), "01S07 0");
    EXPECT_EQ(number("'12.'"), "12");
    EXPECT_EQ(number("1e5"), "100000");
    EXPECT_EQ(number("'12345e-2'"), "01S07 123");
    EXPECT_EQ(number("'12300E-2'"), "123");
    EXPECT_EQ(number("'0.00123e+5'"), "123");
    EXPECT_EQ(Get<SQLUBIGINT>("SELECT '-0.5'", SQL_C_UBIGINT), "01S07 0");
}

TEST_F(Values, ATextThatIsNoNumberIsRefused)
{
    for (const char* text : {"Juergen", "12 Mark", "1,5", "--1", ".", "e5", "1e", "0x10", "1998-12-31", "+", "1.2.3",
                             "+-1", "- 1", "nan", "infinity", "1e5x", "-.", "-"}) {
        const std::string query = "SELECT '"s + text + "'";
        EXPECT_EQ(Get<SQLINTEGER>(query, SQL_C_SLONG), "22018") << text;
        EXPECT_EQ(Get<SQL_NUMERIC_STRUCT>(query, SQL_C_NUMERIC), "22018") << text;
        EXPECT_EQ(Get<double>(query, SQL_C_DOUBLE), "22018") << text;
        EXPECT_EQ(Get<float>(query, SQL_C_FLOAT), "22018") << text;
    }
    EXPECT_EQ(Get<SQLINTEGER>("SELECT '  +0042  '", SQL_C_SLONG), "42");
    EXPECT_EQ(Get<SQLINTEGER>("SELECT x'3132'", SQL_C_SLONG), "22018");
    EXPECT_EQ(Get<double>("SELECT x'3132'", SQL_C_DOUBLE), "22018");
}

TEST_F(Values, AnEmptyTextInPlaceOfANumberReadsAsNull)
{
    for (const char* text : {"''", "'  '"}) {
        const std::string query = "SELECT "s + text;
        EXPECT_EQ(Get<SQLINTEGER>(query, SQL_C_SLONG), "null");
        EXPECT_EQ(Get<SQLBIGINT>(query, SQL_C_SBIGINT), "null");
        EXPECT_EQ(Get<SQL_NUMERIC_STRUCT>(query, SQL_C_NUMERIC), "null");
        EXPECT_EQ(Get<double>(query, SQL_C_DOUBLE), "null");
        EXPECT_EQ(Get<SQL_DATE_STRUCT>(query, SQL_C_TYPE_DATE), "null");
        EXPECT_EQ(Get<SQLCHAR>(query, SQL_C_BIT), "0");
    }
}

TEST_F(Values, AFloatingPointNumberIsTheOneThatItsTextNames)
{
    const auto number = [&](const std::string& value) { return Get<double>("SELECT " + value, SQL_C_DOUBLE); };
    EXPECT_EQ(number("'  +1.5e2  '"), std::to_string(150.0));
    EXPECT_EQ(number("'\t-42\n'"), std::to_string(-42.0));
    EXPECT_EQ(number("'12.'"), std::to_string(12.0));
    EXPECT_EQ(number("'-.5E+1'"), std::to_string(-5.0));
    EXPECT_EQ(number("7"), std::to_string(7.0));
    EXPECT_EQ(number("1e300"), std::to_string(1e300));
    EXPECT_EQ(number("'9007199254740993'"), std::to_string(9007199254740992.0));
    EXPECT_EQ(number("'1e-400'"), std::to_string(0.0)) << "too little to be told from zero";
    EXPECT_EQ(number("'-0." + std::string(400, '0') + "1'"), std::to_string(-0.0));
    EXPECT_EQ(number("1e400"), std::to_string(std::numeric_limits<double>::infinity())) << "SQLite's own";
    EXPECT_EQ(number("NULL"), "null");
    EXPECT_EQ(Get<float>("SELECT '16777217.0000001'", SQL_C_FLOAT), std::to_string(16777218.0F)) << "rounded once";
    EXPECT_EQ(Get<float>("SELECT 1.5", SQL_C_FLOAT), std::to_string(1.5));
    EXPECT_EQ(Get<float>("SELECT -1e400", SQL_C_FLOAT), std::to_string(-std::numeric_limits<double>::infinity()));
    EXPECT_EQ(Get<float>("SELECT NULL", SQL_C_FLOAT), "null");
}

TEST_F(Values, AFloatingPointNumberBeyondItsRangeIsRefused)
{
    for (const char* text : {"1e400", "-1e400", "1e99999999999999999999"}) {
        EXPECT_EQ(Get<double>("SELECT '"s + text + "'", SQL_C_DOUBLE), "22003") << text;
        EXPECT_EQ(Get<float>("SELECT '"s + text + "'", SQL_C_FLOAT), "22003") << text;
    }
    EXPECT_EQ(Get<double>("SELECT '1" + std::string(309, '0') + "'", SQL_C_DOUBLE), "22003");
    EXPECT_EQ(Get<float>("SELECT 1e300", SQL_C_FLOAT), "22003");
    EXPECT_EQ(Get<float>("SELECT 1e39", SQL_C_FLOAT), "22003");
    EXPECT_EQ(Get<float>("SELECT 3e38", SQL_C_FLOAT), std::to_string(3e38F));
}

TEST_F(Values, ANullWithoutAPlaceForItsMarkIsRefused)
{
    for (const SQLSMALLINT type :
         {SQL_C_SLONG, SQL_C_BIT, SQL_C_NUMERIC, SQL_C_DOUBLE, SQL_C_FLOAT, SQL_C_TYPE_DATE, SQL_C_TYPE_TIMESTAMP}) {
        Open("SELECT NULL");
        ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
        std::array<char, 40> place{};
        place.fill('Z');
        const auto before = place;
        EXPECT_EQ(SQLGetData(statement, 1, type, place.data(), sizeof place, nullptr), SQL_ERROR) << type;
        EXPECT_EQ(State(), "22002") << type;
        EXPECT_EQ(place, before) << type;
    }
}

TEST_F(Values, ADecimalComesAsANumericStruct)
{
    const auto numeric = [&](const std::string& value) {
        return Get<SQL_NUMERIC_STRUCT>("SELECT " + value, SQL_C_NUMERIC);
    };
    EXPECT_EQ(numeric("'-12345678901234567.88'"), "-1234567890123456788 precision 19 scale 2");
    EXPECT_EQ(numeric("'18446744073709551615'"), "+18446744073709551615 precision 20 scale 0");
    EXPECT_EQ(numeric("'0.00'"), "+0 precision 2 scale 2");
    EXPECT_EQ(numeric("'-0.05'"), "-5 precision 2 scale 2");
    EXPECT_EQ(numeric("0"), "+0 precision 1 scale 0");
    EXPECT_EQ(numeric("'-0'"), "+0 precision 1 scale 0");
    EXPECT_EQ(numeric("-70000"), "-70000 precision 5 scale 0");
    EXPECT_EQ(numeric("12.5"), "+125 precision 3 scale 1");
    EXPECT_EQ(numeric("'1.5e3'"), "+1500 precision 4 scale 0");
    EXPECT_EQ(numeric("'15e-3'"), "+15 precision 3 scale 3");
    EXPECT_EQ(numeric("NULL"), "null");
    const std::string most(38, '9');
    EXPECT_EQ(numeric("'" + most + "'"), "+" + most + " precision 38 scale 0");
    EXPECT_EQ(numeric("'-" + most + ".5'"), "01S07 -" + most + " precision 38 scale 0");
    EXPECT_EQ(numeric("'1" + std::string(38, '0') + "'"), "22003");
    EXPECT_EQ(numeric("'0." + std::string(38, '0') + "1'"), "01S07 +0 precision 38 scale 38");
}

TEST_F(Values, NumbersOfRecordsAreExactInEveryType)
{
    Make("WIDE", {{"AMOUNT", "PACKED", 10, 2}, {"COUNTER", "UNSIGNED-8", 8}, {"PLACE", "INTEGER-8", 8}},
         "\x12\x34\x56\x78\x90\x12\x34\x56\x78\x8D"s + std::string(8, '\xFF') + std::string(7, '\0') + "\x80");
    const auto column = [](const char* name) { return "SELECT "s + name + " FROM BANK_WIDE"; };
    EXPECT_EQ(Get<SQL_NUMERIC_STRUCT>(column("AMOUNT"), SQL_C_NUMERIC), "-1234567890123456788 precision 19 scale 2");
    EXPECT_EQ(Get<SQLBIGINT>(column("AMOUNT"), SQL_C_SBIGINT), "01S07 -12345678901234567");
    EXPECT_EQ(Get<SQLINTEGER>(column("AMOUNT"), SQL_C_SLONG), "22003");
    EXPECT_EQ(Get<SQLUBIGINT>(column("COUNTER"), SQL_C_UBIGINT), "18446744073709551615");
    EXPECT_EQ(Get<SQLBIGINT>(column("COUNTER"), SQL_C_SBIGINT), "22003");
    EXPECT_EQ(Get<SQL_NUMERIC_STRUCT>(column("COUNTER"), SQL_C_NUMERIC), "+18446744073709551615 precision 20 scale 0");
    EXPECT_EQ(Get<SQLBIGINT>(column("PLACE"), SQL_C_SBIGINT), "-9223372036854775808");
    EXPECT_EQ(Get<SQLBIGINT>(column("PLACE"), SQL_C_DEFAULT), "-9223372036854775808");
}

TEST_F(Values, WhatWasRefusedCanBeAskedForInAnotherType)
{
    Open("SELECT 'first', '70000', 'last'");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    SQLSMALLINT small = 0;
    SQLINTEGER large = 0;
    char text[10] = "";
    EXPECT_EQ(SQLGetData(statement, 2, SQL_C_SSHORT, &small, 0, nullptr), SQL_ERROR);
    EXPECT_EQ(SQLGetData(statement, 2, SQL_C_SLONG, &large, 0, nullptr), SQL_SUCCESS);
    EXPECT_EQ(large, 70000);
    EXPECT_EQ(SQLGetData(statement, 2, SQL_C_CHAR, text, sizeof text, nullptr), SQL_SUCCESS);
    EXPECT_STREQ(text, "70000");
    EXPECT_EQ(SQLGetData(statement, 3, SQL_C_CHAR, text, sizeof text, nullptr), SQL_SUCCESS);
    EXPECT_STREQ(text, "last");
}

TEST_F(Values, ATextThatIsNoFloatingPointNumberCanBeReadAsWhatItIs)
{
    Open("SELECT '12 Mark'");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    double number = 7;
    char text[10] = "";
    EXPECT_EQ(SQLGetData(statement, 1, SQL_C_DOUBLE, &number, 0, nullptr), SQL_ERROR);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(SQLGetData(statement, 1, SQL_C_CHAR, text, sizeof text, nullptr), SQL_SUCCESS);
    EXPECT_STREQ(text, "12 Mark");
}

TEST_F(Values, ANumberIsWholeWhateverWasReadBefore)
{
    for (const SQLSMALLINT type : {SQL_C_CHAR, SQL_C_WCHAR, SQL_C_BINARY})
        for (const SQLLEN capacity : {2, 4, 6, 100}) {
            Open("SELECT '19981231', 'next'");
            ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
            const auto readText = [&] {
                std::array<char, 100> text{};
                SQLLEN bytes = 0;
                EXPECT_TRUE(SQL_SUCCEEDED(SQLGetData(statement, 1, type, text.data(), capacity, &bytes)));
            };
            const auto number = [&]<typename Place>(SQLSMALLINT as, Place place) {
                SQLLEN bytes = 0;
                const SQLRETURN answer = SQLGetData(statement, 1, as, &place, sizeof place, &bytes);
                EXPECT_EQ(answer, SQL_SUCCESS) << "after " << capacity << " bytes as " << type;
                EXPECT_EQ(bytes, static_cast<SQLLEN>(sizeof place));
                return Shown(place);
            };
            readText();
            EXPECT_EQ(number(SQL_C_SLONG, SQLINTEGER{}), "19981231");
            readText();
            EXPECT_EQ(number(SQL_C_SBIGINT, SQLBIGINT{}), "19981231");
            EXPECT_EQ(number(SQL_C_DOUBLE, double{}), std::to_string(19981231.0)) << "and again";
            readText();
            EXPECT_EQ(number(SQL_C_NUMERIC, SQL_NUMERIC_STRUCT{}), "+19981231 precision 8 scale 0");
            readText();
            EXPECT_EQ(number(SQL_C_TYPE_DATE, SQL_DATE_STRUCT{}), "1998/12/31");
            readText();
            EXPECT_EQ(number(SQL_C_DOUBLE, double{}), std::to_string(19981231.0));
            char next[10] = "";
            EXPECT_EQ(SQLGetData(statement, 2, SQL_C_CHAR, next, sizeof next, nullptr), SQL_SUCCESS);
            EXPECT_STREQ(next, "next");
        }
}

TEST_F(Values, ATypeThatCannotBeReadIsRefusedWithItsReason)
{
    Open("SELECT 1");
    ASSERT_EQ(SQLFetch(statement), SQL_SUCCESS);
    SQLGUID place{};
    SQLLEN bytes = 0;
    EXPECT_EQ(SQLGetData(statement, 1, SQL_C_GUID, &place, sizeof place, &bytes), SQL_ERROR);
    EXPECT_EQ(State(), "07006");
}

TEST_F(Values, DatesAndTimesAreWhatTheirTextsSay)
{
    const auto date = [&](const std::string& text) {
        return Get<SQL_DATE_STRUCT>("SELECT '" + text + "'", SQL_C_TYPE_DATE);
    };
    const auto time = [&](const std::string& text) {
        return Get<SQL_TIME_STRUCT>("SELECT '" + text + "'", SQL_C_TYPE_TIME);
    };
    const auto moment = [&](const std::string& text) {
        return Get<SQL_TIMESTAMP_STRUCT>("SELECT '" + text + "'", SQL_C_TYPE_TIMESTAMP);
    };
    EXPECT_EQ(date("1998-12-31"), "1998/12/31");
    EXPECT_EQ(date("1998/12/31"), "1998/12/31");
    EXPECT_EQ(date("19981231"), "1998/12/31");
    EXPECT_EQ(date("1998-12-31 00:00:00"), "1998/12/31");
    EXPECT_EQ(date("1998-12-31 23:59:58"), "01S07 1998/12/31");
    EXPECT_EQ(time("23:59:58"), "23:59:58");
    EXPECT_EQ(time("23:59"), "23:59:0");
    EXPECT_EQ(time("1998-12-31 23:59:58"), "23:59:58");
    EXPECT_EQ(time("23:59:58.07"), "01S07 23:59:58");
    EXPECT_EQ(moment("1998-12-31 23:59:58.07"), "1998/12/31 23:59:58.70000000");
    EXPECT_EQ(moment("1998-12-31T23:59:58.123456789"), "1998/12/31 23:59:58.123456789");
    EXPECT_EQ(moment("1998-12-31 23:59:58.1234567891"), "01S07 1998/12/31 23:59:58.123456789");
    EXPECT_EQ(moment("19981231235958"), "1998/12/31 23:59:58.0");
    EXPECT_EQ(moment("1998-12-31"), "1998/12/31 0:0:0.0");
    EXPECT_TRUE(moment("08:15:00").ends_with(" 8:15:0.0")) << "a time of today";
    EXPECT_EQ(date("2000-02-29"), "2000/2/29");
    EXPECT_EQ(date("  \t1998-12-31 \n"), "1998/12/31");
    EXPECT_EQ(time(" 23:59:58 "), "23:59:58");
    EXPECT_EQ(moment(" 1998-12-31  23:59:58\t"), "1998/12/31 23:59:58.0");
    for (const char* text : {"23:59:58", "1900-02-29", "1998-13-01", "1998-00-10", "1998-12/31", "Juergen", "12.7",
                             "1998-12-31 x", "1998-12-31 24:00:00"})
        EXPECT_EQ(date(text), "22018") << text;
    for (const char* text : {"1998-12-31", "24:00:00", "23:60:00", "235958", "100000.0", "23", "23:59:58 Uhr"})
        EXPECT_EQ(time(text), "22018") << text;
    for (const char* text : {"Juergen", "1998", "-70000", "1998-12-31 23:59:58 24"})
        EXPECT_EQ(moment(text), "22018") << text;
}
