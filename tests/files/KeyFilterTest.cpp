#include "KeyFilter.h"

#include "QtPrinting.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace Qt::StringLiterals;

namespace
{

modDatabase::FieldInfo column(dao::DataType type, const char* name = "FILE_NAME", long size = 8)
{
    return {QLatin1String(name), type, size};
}

/// What of a run of keys an empty entry takes, each behind the one before.
QString typed(const QString& keys, const modDatabase::FieldInfo& field)
{
    QString text;
    for (const char32_t character : keys.toUcs4())
        text += modGUI::ControlKeyPress({text, text.size(), 0}, QString::fromUcs4(&character, 1), field);
    return text;
}

constexpr auto everyKey = u" !\"#$%&'()*+,-./0123456789:;<=>?@AZ[\\]^_`az{|}~\u0663é🚀\u212a";

} // namespace

TEST(KeyFilter, KeysBelowThirtyTwoPass)
{
    for (const char16_t key : {u'\b', u'\r', u'\t', u'\x1b', u'\x1f'})
        EXPECT_EQ(modGUI::ControlKeyPress({u"12345678"_s, 8, 0}, QString(key), column(dao::dbText)), QString(key));
}

TEST(KeyFilter, ABooleanTakesZeroOrOneOnce)
{
    EXPECT_EQ(typed(u"2a1"_s, column(dao::dbBoolean)), u"1"_s);
    EXPECT_EQ(typed(u"0111"_s, column(dao::dbBoolean)), u"0"_s);
}

TEST(KeyFilter, AByteTakesThreeDigits)
{
    EXPECT_EQ(typed(u"-1.2x345"_s, column(dao::dbByte)), u"123"_s);
}

TEST(KeyFilter, IntegersTakeDigitsAndASignInFront)
{
    EXPECT_EQ(typed(u"-1-2.34567"_s, column(dao::dbInteger)), u"-12345"_s);
    EXPECT_EQ(typed(u"12-"_s, column(dao::dbInteger)), u"12"_s);
    EXPECT_EQ(typed(u"-1.234567890"_s, column(dao::dbBigInt)), u"-12345678"_s);
}

TEST(KeyFilter, NumbersTakeOnePointToo)
{
    for (const auto type : {dao::dbLong, dao::dbCurrency, dao::dbSingle, dao::dbDouble, dao::dbDecimal, dao::dbFloat})
        EXPECT_EQ(typed(u"-1.2.3-e"_s, column(type)), u"-1.23"_s) << type;
    EXPECT_EQ(typed(QString(30, '7'_L1), column(dao::dbCurrency)).size(), 20);
    EXPECT_EQ(typed(QString(30, '7'_L1), column(dao::dbLong)).size(), 9);
}

TEST(KeyFilter, ASignIsTakenInFrontOfWhatStands)
{
    EXPECT_EQ(modGUI::ControlKeyPress({u"12"_s, 0, 0}, u"-"_s, column(dao::dbInteger)), u"-"_s);
    EXPECT_EQ(modGUI::ControlKeyPress({u"12"_s, 1, 0}, u"-"_s, column(dao::dbInteger)), u""_s);
    EXPECT_EQ(modGUI::ControlKeyPress({u"12"_s, 0, 2}, u"-"_s, column(dao::dbInteger)), u"-"_s);
}

TEST(KeyFilter, ANameIsUpperCaseWithUnderscoresForBlanks)
{
    for (const auto type : {dao::dbDate, dao::dbText, dao::dbGUID, dao::dbChar, dao::dbTime, dao::dbTimeStamp})
        EXPECT_EQ(typed(QString::fromUtf16(everyKey), column(type, "file_name", 99)),
                  u"_-0123456789AZ_AZ"_s.left(type == dao::dbText || type == dao::dbChar ? 99 : 9))
            << type;
}

TEST(KeyFilter, ADisplayNameKeepsItsCase)
{
    EXPECT_EQ(typed(QString::fromUtf16(everyKey), column(dao::dbText, "DISPLAY_NAME", 99)), u"_-0123456789AZ_az"_s);
}

TEST(KeyFilter, PasswordsTakeNoBlank)
{
    for (const char* name : {"USER_PASSWORD", "DATABASE_PASSWORD", "user_password"})
        EXPECT_EQ(typed(u"a b_c.d"_s, column(dao::dbText, name, 99)), u"AB_CD"_s) << name;
}

TEST(KeyFilter, FreeTextsTakeEverything)
{
    for (const char* name :
         {"REMARKS", "DEFAULT_VALUE", "CONNECTION_STRING", "FILE_SPECIFICATION", "DEFAULT_DIRECTORY"})
        EXPECT_EQ(typed(QString::fromUtf16(everyKey), column(dao::dbText, name, 99)), QString::fromUtf16(everyKey))
            << name;
}

TEST(KeyFilter, OtherTypesAreNotFilteredButForTheirWidth)
{
    for (const auto type : {dao::dbBinary, dao::dbMemo, dao::dbNumeric, dao::dbVarBinary})
        EXPECT_EQ(typed(u"a!b c;d%e'f"_s, column(type)), u"a!b c;d%e"_s) << type;
}

TEST(KeyFilter, AFullEntryTakesAKeyOnlyInPlaceOfWhatIsSelected)
{
    const auto field = column(dao::dbText, "FILE_NAME", 4);
    EXPECT_EQ(modGUI::ControlKeyPress({u"ABCD"_s, 2, 0}, u"x"_s, field), u""_s);
    EXPECT_EQ(modGUI::ControlKeyPress({u"ABCD"_s, 2, 1}, u"x"_s, field), u"X"_s);
    EXPECT_EQ(modGUI::ControlKeyPress({u"ABC"_s, 3, 0}, u"x"_s, field), u"X"_s);
}

TEST(KeyFilter, OnlyTextsAreCut)
{
    EXPECT_EQ(modGUI::cutToColumn(u"abcdef"_s, column(dao::dbText, "REMARKS", 4)), u"abcd"_s);
    EXPECT_EQ(modGUI::cutToColumn(u"abcdef"_s, column(dao::dbChar, "REMARKS", 4)), u"abcd"_s);
    for (const auto type : {dao::dbMemo, dao::dbLong, dao::dbInteger, dao::dbDate})
        EXPECT_EQ(modGUI::cutToColumn(u"abcdef"_s, column(type, "REMARKS", 4)), u"abcdef"_s) << type;
    EXPECT_EQ(modGUI::cutToColumn(u"abc🚀"_s, column(dao::dbText, "REMARKS", 4)), u"abc"_s);
    EXPECT_EQ(modGUI::cutToColumn(u"abc🚀"_s, column(dao::dbText, "REMARKS", 5)), u"abc🚀"_s);
    EXPECT_EQ(modGUI::cutToColumn(u"abc"_s, column(dao::dbText, "REMARKS", 0)), u""_s);
}

TEST(KeyFilter, NeitherKeysNorCutsLetATextPastItsColumn)
{
    std::mt19937 random(3);
    const QList<char32_t> alphabet{U'a', U'Z', U' ', U'\'', U'7', U'_', U'\u00e9', U'\U0001F680', U'\n'};
    const auto pick = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    for (int round = 0; round < 4000; ++round) {
        const auto field = column(pick(2) ? dao::dbText : dao::dbChar, pick(2) ? "REMARKS" : "FILE_NAME", pick(9));
        QString text;
        for (int step = 0; step < 20; ++step) {
            const qsizetype from = pick(static_cast<int>(text.size()) + 1);
            const qsizetype length = pick(static_cast<int>(text.size() - from) + 1);
            QString entered;
            if (pick(3) > 0) {
                const char32_t key = alphabet[pick(static_cast<int>(alphabet.size()))];
                entered = modGUI::ControlKeyPress({text, from, length}, QString::fromUcs4(&key, 1), field);
            } else {
                for (int i = pick(12); i > 0; --i) {
                    const char32_t pasted = alphabet[pick(static_cast<int>(alphabet.size()))];
                    entered += QString::fromUcs4(&pasted, 1);
                }
            }
            text = modGUI::cutToColumn(text.left(from) + entered + text.mid(from + length), field);
            ASSERT_LE(text.size(), field.Size);
        }
    }
}
