#include "CsvColumns.h"
#include "QtPrinting.h"
#include "RuntimeError.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{

QStringList texts(const CsvColumns& columns)
{
    QStringList all;
    for (int number = 1; number <= columns.count(); ++number)
        all.append(columns[number].toString());
    return all;
}

QStringList split(const QString& line)
{
    CsvColumns columns;
    splitLine(line, columns);
    return texts(columns);
}

QStringList scan(const QString& line)
{
    CsvColumns columns;
    scanLine(line, columns);
    return texts(columns);
}

struct Case {
    const char* what;
    QString line;
    QStringList split;
    QStringList scanned;
};

const std::vector<Case>& cases()
{
    static const std::vector<Case> all{
        {"a line as it is written",
         uR"("USER","BOB","SECRET")"_s,
         {"USER", "BOB", "SECRET"},
         {"USER", "BOB", "SECRET"}},
        {"without quotes", u"USER,BOB,SECRET"_s, {"USER", "BOB", "SECRET"}, {"USER", "BOB", "SECRET"}},
        {"blanks around columns", u" USER , \"BOB\" ,SECRET "_s, {"USER", "BOB", "SECRET"}, {"USER", "BOB", "SECRET"}},
        {"blanks within quotes", uR"("USER"," BOB ")"_s, {"USER", " BOB "}, {"USER", "BOB"}},
        {"a comma within quotes", uR"("A","B,C","D")"_s, {"A", "B", "C", "D"}, {"A", "B,C", "D"}},
        {"a quote within a quoted column", uR"("A","B"C","D")"_s, {"A", R"(B"C)", "D"}, {"A", "B", "C", "D"}},
        {"a quote within a bare column", uR"(A,B"C,D)"_s, {"A", R"(B"C)", "D"}, {"A", R"(B"C)", "D"}},
        {"an empty bare column", u"10,,5"_s, {"10", "", "5"}, {"10", "5"}},
        {"two empty bare columns", u"10,,,5"_s, {"10", "", "", "5"}, {"10", ",5"}},
        {"an empty quoted column", uR"("A","","B")"_s, {"A", "", "B"}, {"A", "", "B"}},
        {"an empty last column", u"A,"_s, {"A", ""}, {"A"}},
        {"an empty quoted last column", uR"(A,"")"_s, {"A", ""}, {"A", ""}},
        {"a comma at the beginning", u",A,B"_s, {"", "A", "B"}, {",A", "B"}},
        {"two commas at the beginning", u",,A"_s, {"", "", "A"}, {",", "A"}},
        {"commas alone", u",,,"_s, {"", "", "", ""}, {","}},
        {"one comma", u","_s, {"", ""}, {","}},
        {"a quote alone", u"\""_s, {""}, {""}},
        {"two quotes", u"\"\""_s, {""}, {""}},
        {"three quotes", u"\"\"\""_s, {"\""}, {"", ""}},
        {"a quote that is never closed", uR"("A,B)"_s, {"A", "B"}, {"A,B"}},
        {"a quote at the end alone", uR"(A",B)"_s, {"A", "B"}, {"A", "B"}},
        {"a tab around a column", u"A,\t5\t,B"_s, {"A", "\t5\t", "B"}, {"A", "5", "B"}},
        {"a letter beyond the limit at the end", QString(u"\"CAF\u00C9\",B"_s), {u"CAF\u00C9"_s, "B"}, {"CAF", "B"}},
        {"a letter beyond the limit inside", QString(u"Z\u00DCRICH"_s), {u"Z\u00DCRICH"_s}, {u"Z\u00DCRICH"_s}},
        {"blanks alone", u"   "_s, {""}, {""}},
        {"a quote behind a blank", uR"(A, "B,C")"_s, {"A", "B", "C"}, {"A", "B", "C"}},
        {"case is kept", u"User,bob"_s, {"User", "bob"}, {"User", "bob"}},
    };
    return all;
}

} // namespace

TEST(CsvColumns, TheValidationSplitsAtEveryComma)
{
    for (const Case& one : cases())
        EXPECT_EQ(split(one.line), one.split) << one.what;
}

TEST(CsvColumns, TheImportReadsOnFromColumnToColumn)
{
    for (const Case& one : cases())
        EXPECT_EQ(scan(one.line), one.scanned) << one.what;
}

TEST(CsvColumns, AnEmptyLineHasOneColumnForTheValidationAndNoneForTheImport)
{
    EXPECT_EQ(split({}), QStringList{""});
    EXPECT_EQ(scan({}), QStringList());
}

TEST(CsvColumns, WhatStandsBehindManyColumnsIsLeftOut)
{
    const QString line = QStringList(1000, u"A"_s).join(',');
    EXPECT_EQ(split(line), QStringList(CsvColumns::most, u"A"_s));
    EXPECT_EQ(scan(line), QStringList(CsvColumns::most, u"A"_s));
}

TEST(CsvColumns, AColumnThatIsNotThereRaises9)
{
    CsvColumns columns;
    splitLine(u"A,B", columns);
    for (const int number : {0, -1, 3}) {
        try {
            columns[number];
            ADD_FAILURE() << number;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), ErrorNumber::SubscriptOutOfRange);
        }
    }
}

TEST(CsvColumns, ColumnsTakeOtherTextsAndUpperCase)
{
    CsvColumns columns;
    splitLine(u"a,b", columns);
    columns.raise(2);
    columns.raise(7);
    columns.set(4, u"d"_s);
    EXPECT_EQ(texts(columns), (QStringList{"a", "B", "", "d"}));
}

TEST(CsvColumns, NoQuotesTakesBlanksAndOneQuoteAtEitherEndOff)
{
    const std::vector<std::pair<QString, QString>> rows{
        {"A", "A"},   {" A ", "A"}, {"\"A\"", "A"}, {" \" A \" ", "A"},     {"\"\"A\"\"", "\"A\""}, {"\"A", "A"},
        {"A\"", "A"}, {"\"", ""},   {"", ""},       {"\t\"\tA\t\"\t", "A"}, {u"\u00A0A"_s, "A"},    {"A B", "A B"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(NoQuotes(text), expected) << text.toStdString();
}

TEST(CsvColumns, PasswordsAreMasked)
{
    const std::vector<std::pair<QString, QString>> rows{
        {R"("USER","BOB","SECRET")", R"("USER","BOB",**********)"},
        {" user ,BOB,SECRET", " user ,BOB,**********"},
        {"USER,BOB,SEC,RET", "USER,BOB,**********"},
        {"USER,BOB", "USER,**********"},
        {"USER,SECRET", "USER,**********"},
        {"USER", "USER"},
        {"DBPRV,BOB,SALES,B,SECRET,1,1,1,1,TABLE", "DBPRV,BOB,SALES,B,**********,1,1,1,1,TABLE"},
        {"DBPRV,BOB,SALES,B,SEC,RET,1,1,1,1,TABLE", "DBPRV,BOB,SALES,B,**********"},
        {"DBPRV,BOB,SALES,B,SECRET", "DBPRV,BOB,**********"},
        {"DBPRV,BOB,SALES,SECRET", "DBPRV,BOB,**********"},
        {"DBPRV,BOB,SECRET", "DBPRV,BOB,**********"},
        {"DBPRV,BOB", "DBPRV,BOB"},
        {"DBPRV,BOB,SALES,SECRET,1,1,1,1,TABLE", "DBPRV,BOB,SALES,**********"},
        {"DBPRV,BOB,SALES,B,SECRET,1,1,1,1", "DBPRV,BOB,SALES,**********"},
        {"DBPRV,BOB,SECRET,1,1,1,1,TABLE", "DBPRV,BOB,**********"},
        {R"(DBPRV,BOB,SALES,B,"SEC,RET",1,1,1,1)", "DBPRV,BOB,SALES,B,**********"},
        {R"(DBPRV,BOB,SALES,"B,B",SECRET,1,1,1,1)", "DBPRV,BOB,SALES,\"B,**********"},
        {R"(DBPRV,"BOB",SALES,"B","SECRET",1,1,1,1,TABLE)", R"(DBPRV,"BOB",SALES,"B",**********,1,1,1,1,TABLE)"},
        {"\t\"DBPRV\",BOB,SALES,B,SECRET,1,0,1,0,TABLE", "\t\"DBPRV\",BOB,SALES,B,**********,1,0,1,0,TABLE"},
        {"FILE,A,B,C,D", "FILE,A,B,C,D"},
        {"", ""},
    };
    for (const auto& [line, shown] : rows)
        EXPECT_EQ(maskedLine(line), shown) << line.toStdString();
    for (const auto& [line, shown] : rows)
        EXPECT_FALSE(shown.contains(u"SECRET"_s)) << line.toStdString();
}

TEST(CsvColumns, APasswordIsMaskedInALineOfAnyLength)
{
    const QString rest(1024 * 1024, ',');
    EXPECT_EQ(maskedLine(u"USER,BOB,SECRET"_s + rest), u"USER,BOB,**********"_s);
    EXPECT_EQ(maskedLine(u"DBPRV,BOB,SALES,B,SECRET,1"_s + rest), u"DBPRV,BOB,SALES,B,**********"_s);
    EXPECT_EQ(maskedLine(u"FILE,"_s + rest), u"FILE,"_s + rest);
}

TEST(CsvColumns, BothReadersTakeAnyLine)
{
    QRandomGenerator random(20260314);
    const QString alphabet = u"\",,\" aA1\t\u00E9"_s;
    for (int round = 0; round < 20000; ++round) {
        QString line;
        for (int length = random.bounded(24); length > 0; --length)
            line.append(alphabet[random.bounded(static_cast<int>(alphabet.size()))]);
        EXPECT_EQ(split(line).size(), line.count(u',') + 1);
        const QStringList scanned = scan(line);
        EXPECT_EQ(scanned.isEmpty(), line.isEmpty());
        EXPECT_LE(scanned.size(), line.size());
        for (const QString& column : scanned)
            EXPECT_TRUE(line.contains(column)) << line.toStdString();
    }
}

TEST(CsvColumns, WhatTheWriterWritesOfPlainValuesBothReadAlike)
{
    QRandomGenerator random(7);
    for (int round = 0; round < 2000; ++round) {
        QStringList values;
        QStringList written;
        for (int count = 1 + random.bounded(9); count > 0; --count) {
            const bool isText = random.bounded(2) == 0;
            values.append(isText ? QString(random.bounded(6), u'x') : QString::number(random.bounded(70000)));
            written.append(isText ? u'"' + values.last() + u'"' : values.last());
        }
        const QString line = written.join(u',');
        EXPECT_EQ(split(line), values) << line.toStdString();
        EXPECT_EQ(scan(line), values) << line.toStdString();
    }
}
