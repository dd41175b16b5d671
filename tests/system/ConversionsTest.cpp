#include "Conversions.h"
#include "RuntimeError.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <optional>
#include <random>

using conversions::IsNumeric;
using conversions::ToInteger;
using conversions::ToLong;
using conversions::Val;

namespace
{

template <class F>
std::optional<ErrorNumber> raised(F&& f)
{
    try {
        f();
        return std::nullopt;
    } catch (const RuntimeError& error) {
        return error.number();
    }
}

class Random
{
public:
    int between(int low, int high) { return std::uniform_int_distribution(low, high)(m_engine); }
    bool coin() { return between(0, 1) == 1; }
    QString digits(int least, int most)
    {
        QString text;
        for (int count = between(least, most); count > 0; --count)
            text.append(QChar(u'0' + between(0, 9)));
        return text;
    }
    QString blanks() { return QString(between(0, 2), ' '); }
    /// A well-formed number with blanks around it.
    QString number()
    {
        QString text = coin() ? "" : coin() ? "-" : "+";
        const bool fraction = coin();
        text += digits(fraction ? 0 : 1, 6);
        if (fraction)
            text += '.' + digits(1, 4);
        if (coin())
            text += (coin() ? "e" : "E") + QString(coin() ? "" : coin() ? "-" : "+") + digits(1, 2);
        return text;
    }

private:
    std::mt19937 m_engine{20030314};
};

} // namespace

TEST(Val, ReadsTheLeadingNumber)
{
    const struct {
        const char* text;
        double value;
    } rows[] = {
        {"", 0},
        {" ", 0},
        {"abc", 0},
        {"0", 0},
        {"12", 12},
        {"-12", -12},
        {"+3", 3},
        {"--3", 0},
        {"+-3", 0},
        {"12abc", 12},
        {"12,5", 12},
        {".5", .5},
        {"-.5", -.5},
        {"5.", 5},
        {".", 0},
        {"-", 0},
        {"+", 0},
        {".e5", 0},
        {"1.2.3", 1.2},
        {"1e5", 100000},
        {"1E5", 100000},
        {"1e+5", 100000},
        {"1e-2", .01},
        {"1e", 1},
        {"1e+", 1},
        {"1ex", 1},
        {"1d5", 1},
        {"&H10", 0},
        {"inf", 0},
        {"nan", 0},
        {"0x10", 0},
        {"  42", 42},
        {"4 2", 42},
        {"- 7", -7},
        {"1 e 2", 100},
        {"\t1\n2\r3", 123},
        {"007", 7},
        {"1e-400", 0},
        {"-1e-999999", 0},
        {"0e999999", 0},
        {"1615 198th", 1615198},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Val(QString(row.text)), row.value) << '"' << row.text << '"';
}

TEST(Val, KnowsAsciiDigitsAndBlanksAlone)
{
    EXPECT_EQ(Val(QStringLiteral(u"\u0661\u0662")), 0);
    EXPECT_EQ(Val(QStringLiteral(u"\uFF11")), 0);
    EXPECT_EQ(Val(QStringLiteral(u"1\u0662")), 1);
    EXPECT_EQ(Val(QStringLiteral(u"1\u00A02")), 1);
    EXPECT_EQ(Val(QStringLiteral(u"1\u0130")), 1);
    // Characters whose low byte is that of a digit.
    EXPECT_EQ(Val(QStringLiteral(u"\u0131\u0132")), 0);
}

TEST(Val, RaisesOverflowBeyondTheRangeOfADouble)
{
    EXPECT_EQ(Val(u"1e308"), 1e308);
    EXPECT_EQ(raised([] { Val(u"1e309"); }), ErrorNumber::Overflow);
    EXPECT_EQ(raised([] { Val(u"-1e99999999999"); }), ErrorNumber::Overflow);
    EXPECT_EQ(raised([] { Val(QString(400, '9')); }), ErrorNumber::Overflow);
    EXPECT_EQ(raised([] { Val(QString(400, '9') + "e-10"); }), ErrorNumber::Overflow);
    EXPECT_EQ(Val(QString(400, '9') + "e-9999"), 0);
    EXPECT_EQ(Val("0." + QString(400, '0') + "1"), 0);
    EXPECT_EQ(raised([] { Val("0." + QString(400, '0') + "1e999"); }), ErrorNumber::Overflow);
    EXPECT_EQ(Val("1" + QString(400, '0') + "e-400"), 1);
    EXPECT_EQ(Val(QString(100000, '0') + '7'), 7);
}

TEST(Val, DoesNotDependOnTheLocale)
{
    const std::string former = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "C"}) {
        std::setlocale(LC_NUMERIC, locale);
        EXPECT_EQ(Val(u"1.5"), 1.5) << locale;
        EXPECT_EQ(Val(u"1,5"), 1) << locale;
    }
    std::setlocale(LC_NUMERIC, former.c_str());
}

TEST(Val, ReadsEveryWellFormedNumberAsItsValueWhateverFollows)
{
    Random random;
    for (int i = 0; i < 20000; ++i) {
        const QString number = random.number();
        const double value = number.toDouble();
        EXPECT_EQ(Val(number), value) << number.toStdString();
        EXPECT_EQ(Val(random.blanks() + number + "x9"), value) << number.toStdString();
    }
}

TEST(Val, BlanksNeverMatter)
{
    Random random;
    for (int i = 0; i < 5000; ++i) {
        const QString number = random.number();
        QString spread;
        for (const QChar c : number)
            spread += random.blanks() + c;
        EXPECT_EQ(Val(spread), Val(number)) << spread.toStdString();
    }
}

TEST(IsNumeric, TakesASignDigitsAPointAndAnExponent)
{
    for (const char* text :
         {"0", "12", "-12", "+12", "1.5", ".5", "5.", "-.5", "1e5", "1E-5", "1.e+5", " 1", "1 ", "\t1\t"})
        EXPECT_TRUE(IsNumeric(QString(text))) << '"' << text << '"';
}

TEST(IsNumeric, TakesNothingElse)
{
    for (const char* text : {"",   " ",   "-",   "+",   ".",     "-.",   "e5",   ".e5", "1e",  "1e+",   "1.2.3", "--1",
                             "1-", "- 1", "1 2", "1,5", "12abc", "0x10", "&H10", "inf", "nan", "1e5.0", "1\n",   "1d5"})
        EXPECT_FALSE(IsNumeric(QString(text))) << '"' << text << '"';
    EXPECT_FALSE(IsNumeric(QStringLiteral(u"\u0661")));
    EXPECT_FALSE(IsNumeric(QStringLiteral(u"1\u00A0")));
}

TEST(IsNumeric, TakesEveryWellFormedNumberAndNoneWithAForeignCharacterInside)
{
    Random random;
    for (int i = 0; i < 20000; ++i) {
        QString number = random.number();
        EXPECT_TRUE(IsNumeric(random.blanks() + number + random.blanks())) << number.toStdString();
        number.insert(random.between(0, static_cast<int>(number.size())), 'x');
        EXPECT_FALSE(IsNumeric(number)) << number.toStdString();
    }
}

TEST(Rounding, GoesHalfToEven)
{
    const struct {
        const char* text;
        int value;
    } rows[] = {{"0.5", 0},   {"1.5", 2},  {"2.5", 2},    {"3.5", 4}, {"-0.5", 0},  {"-1.5", -2},
                {"-2.5", -2}, {"2.51", 3}, {"2.4999", 2}, {" 7 ", 7}, {"1e2", 100}, {"-0", 0}};
    for (const auto& row : rows) {
        EXPECT_EQ(ToInteger(QString(row.text)), row.value) << row.text;
        EXPECT_EQ(ToLong(QString(row.text)), row.value) << row.text;
    }
}

TEST(Rounding, AgreesWithExactArithmeticOnHalves)
{
    Random random;
    for (int i = 0; i < 20000; ++i) {
        const int halves = random.between(-65536, 65534);
        // A half lies between two integers, of which one is even.
        const int below = (halves - (halves & 1)) / 2;
        const int expected = (halves & 1) == 0 ? halves / 2 : (below & 1) == 0 ? below : below + 1;
        EXPECT_EQ(ToLong(halves / 2.0), expected) << halves;
        if (expected >= -32768 && expected <= 32767) {
            EXPECT_EQ(ToInteger(halves / 2.0), expected) << halves;
        }
    }
}

TEST(Rounding, RaisesOverflowOutOfRange)
{
    EXPECT_EQ(ToInteger(u"32767"), 32767);
    EXPECT_EQ(ToInteger(u"-32768"), -32768);
    EXPECT_EQ(ToInteger(u"32767.4"), 32767);
    EXPECT_EQ(ToInteger(u"-32768.5"), -32768);
    EXPECT_EQ(ToLong(u"2147483647"), 2147483647);
    EXPECT_EQ(ToLong(u"-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ToLong(u"2147483647.4"), 2147483647);

    for (const char* text : {"32768", "32767.5", "-32769", "1e300", "1e999"})
        EXPECT_EQ(raised([&] { ToInteger(QString(text)); }), ErrorNumber::Overflow) << text;
    for (const char* text : {"2147483648", "2147483647.5", "-2147483649", "-1e300", "1e999"})
        EXPECT_EQ(raised([&] { ToLong(QString(text)); }), ErrorNumber::Overflow) << text;
    EXPECT_EQ(raised([] { ToLong(std::numeric_limits<double>::quiet_NaN()); }), ErrorNumber::Overflow);
    EXPECT_EQ(raised([] { ToInteger(-std::numeric_limits<double>::infinity()); }), ErrorNumber::Overflow);
}

TEST(Rounding, RaisesTypeMismatchWhereNoNumberStands)
{
    for (const char* text : {"", " ", "abc", "12abc", "1 2", "&H10"}) {
        EXPECT_EQ(raised([&] { ToInteger(QString(text)); }), ErrorNumber::TypeMismatch) << text;
        EXPECT_EQ(raised([&] { ToLong(QString(text)); }), ErrorNumber::TypeMismatch) << text;
    }
}
