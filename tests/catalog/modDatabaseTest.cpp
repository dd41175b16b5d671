#include "modDatabase.h"

#include "RuntimeError.h"
#include "UpdateFixture.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <random>
#include <vector>

using modDatabase::BuildDelete;
using modDatabase::FieldInfo;
using modDatabase::FieldInfos;
using modDatabase::MakeInsert;

namespace
{

QString trimmedOfBlanks(QString text)
{
    while (text.startsWith(' '))
        text.remove(0, 1);
    while (text.endsWith(' '))
        text.chop(1);
    return text;
}

/// The layout told step by step, at whatever cost: each run length by itself, each replacement over the whole text.
QString formattedStepByStep(const QString& value)
{
    QString text = ' ' + trimmedOfBlanks(value) + ' ';
    for (QChar& character : text) {
        const ushort code = character.unicode();
        if ((code < 32 || code >= 129) && code != 13 && code != 10)
            character = ' ';
    }
    for (qsizetype n = text.size(); n >= 2; --n)
        text.replace(QString(n, ' '), " ");
    text.replace(")", ")");
    text.replace(")", ")\n\t");
    text.replace("( ", "(");
    text.replace("(", "(\n\t");
    text.replace(", ", ",");
    text.replace(",", ",\n\t");
    text.replace(" SELECT ", "\nSELECT\n\t");
    text.replace(" FROM ", "\nFROM\n\t");
    text.replace(" WHERE ", "\nWHERE\n\t");
    text.replace(" ORDER BY ", "\nORDER BY \n\t");
    text.replace(" INSERT INTO ", "INSERT INTO \n\t");
    text.replace("\t VALUES ", "\nVALUES ");
    text.replace(" UPDATE ", "UPDATE \n\t");
    text.replace(" SET ", "\nSET\n\t");
    text.replace(" AND ", "\n\tAND ");
    text.replace(" OR ", "\n\tOR ");
    return trimmedOfBlanks(text);
}

TEST(ModDatabase, SQLQuoteDoublesEveryApostrophe)
{
    EXPECT_EQ(modDatabase::SQLQuote(QString("O'Neil's 'file'")), "O''Neil''s ''file''");
    EXPECT_EQ(modDatabase::SQLQuote(QString("''")), "''''");
    EXPECT_EQ(modDatabase::SQLQuote(QString()), "");
}

TEST(ModDatabase, SQLQuoteOfANullIsTheEmptyText)
{
    EXPECT_EQ(modDatabase::SQLQuote(dao::Value()), "");
    EXPECT_EQ(modDatabase::SQLQuote(dao::Value("it's")), "it''s");
}

TEST(ModDatabase, CommentsAndSemicolonsEndAStatement)
{
    for (const char* text : {"--", "1--", "/*", "5 /*x*/", ";", "USER_NAME;", "a;b"})
        EXPECT_TRUE(modDatabase::endsStatement(QString(text))) << text;
    for (const char* text : {"", "-", "-1", "- -", "/", "*/", "/ *", "O''HARA", ":", "[a]"})
        EXPECT_FALSE(modDatabase::endsStatement(QString(text))) << text;
}

TEST(ModDatabase, AnInsertQuotesTextsAndPutsAZeroBeforeNumbers)
{
    const FieldInfos fields({{"NAME", dao::dbText, 32},
                             {"NOTE", dao::dbMemo, 0},
                             {"KIND", dao::dbChar, 4},
                             {"SIZE", dao::dbLong, 4},
                             {"SCALE", dao::dbInteger, 2}});
    EXPECT_EQ(
        MakeInsert({{"NAME", "O'Brien"}, {"SIZE", ""}, {"NOTE", ""}, {"KIND", "x"}, {"SCALE", "-2"}}, fields, "TW_X"),
        "INSERT INTO TW_X (NAME, SIZE, NOTE, KIND, SCALE) VALUES ('O''Brien', 0, '', 'x', 0-2)");
}

TEST(ModDatabase, AnInsertLeavesOutWhatHasNoTag)
{
    const FieldInfos fields({{"NAME", dao::dbText, 32}, {"SIZE", dao::dbLong, 4}});
    EXPECT_EQ(MakeInsert({{"", "mirror"}, {"NAME", "a"}, {"", ""}}, fields, "TW_X"),
              "INSERT INTO TW_X (NAME) VALUES ('a')");
}

TEST(ModDatabase, ATagThatTheTableLacksIsNoSuchItem)
{
    const FieldInfos fields({{"NAME", dao::dbText, 32}});
    try {
        MakeInsert({{"OTHER", "a"}}, fields, "TW_X");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::ItemNotFound);
    }
}

TEST(ModDatabase, ADeleteIsTheTableAndTheCriterion)
{
    EXPECT_EQ(BuildDelete("TW_FILE", "FILE_NAME = 'a'"), "DELETE FROM TW_FILE WHERE FILE_NAME = 'a'");
}

TEST(ModDatabase, AnEntryIsAsWideAsItsColumnsType)
{
    const auto width = [](dao::DataType type) { return FieldInfo{"X", type, 40}.inputWidth(); };
    EXPECT_EQ(width(dao::dbBoolean), 1);
    EXPECT_EQ(width(dao::dbByte), 3);
    EXPECT_EQ(width(dao::dbInteger), 6);
    EXPECT_EQ(width(dao::dbCurrency), 20);
    EXPECT_EQ(width(dao::dbText), 40);
    EXPECT_EQ(width(dao::dbChar), 40);
    for (const dao::DataType type : {dao::dbLong, dao::dbDouble, dao::dbMemo, dao::dbDate})
        EXPECT_EQ(width(type), 9) << type;
}

TEST(ModDatabase, FormatSQLOfANullIsTheEmptyText)
{
    EXPECT_EQ(modDatabase::FormatSQL(dao::Value()), "");
    EXPECT_EQ(modDatabase::FormatSQL(QString("  ")), "");
}

TEST(ModDatabase, FormatSQLGivesEachClauseOfASelectItsLine)
{
    EXPECT_EQ(modDatabase::FormatSQL(QString("SELECT FILE_NAME, OPEN_STRING FROM TW_FILE WHERE FILE_NAME <> '' "
                                             "AND RECORD_SIZE > 1 OR RECORD_SIZE = 0 ORDER BY FILE_NAME ASC")),
              "\nSELECT\n\tFILE_NAME,\n\tOPEN_STRING\nFROM\n\tTW_FILE\nWHERE\n\tFILE_NAME <> ''\n\tAND RECORD_SIZE > 1"
              "\n\tOR RECORD_SIZE = 0\nORDER BY \n\tFILE_NAME ASC");
}

TEST(ModDatabase, FormatSQLLaysOutInsertAndUpdate)
{
    EXPECT_EQ(modDatabase::FormatSQL(QString("INSERT INTO TW_DB (A, B) VALUES ('x', 02)")),
              "INSERT INTO \n\tTW_DB (\n\tA,\n\tB)\n\nVALUES (\n\t'x',\n\t02)\n\t");
    EXPECT_EQ(modDatabase::FormatSQL(QString("UPDATE TW_DB SET A = 'x' WHERE B = 02")),
              "UPDATE \n\tTW_DB\nSET\n\tA = 'x'\nWHERE\n\tB = 02");
}

TEST(ModDatabase, FormatSQLBlanksControlAndHighCharactersButKeepsLineEnds)
{
    EXPECT_EQ(modDatabase::FormatSQL(QStringLiteral("a\tb\r\nc\u00e9d\u0080e\U0001F600f")),
              QStringLiteral("a b\r\nc d\u0080e f"));
}

TEST(ModDatabase, FormatSQLFoldsEveryRunOfBlanks)
{
    EXPECT_EQ(modDatabase::FormatSQL(QString("a  b" + QString(1000, ' ') + "c d")), "a b c d");
}

TEST(ModDatabase, FormatSQLFindsClausesBetweenBlanksInUpperCaseOnly)
{
    EXPECT_EQ(modDatabase::FormatSQL(QString("select a from b")), "select a from b");
    // The comma has taken the blank in front of the second FROM.
    EXPECT_EQ(modDatabase::FormatSQL(QString("a, FROM b")), "a,\n\tFROM b");
    EXPECT_EQ(modDatabase::FormatSQL(QString("x AND AND y")), "x\n\tAND AND y");
}

TEST(ModDatabase, FormatSQLEqualsTheLayoutToldStepByStepOnRandomTexts)
{
    std::mt19937 random(19990301);
    const std::vector<QString> pieces{
        " ",      "  ",       "   ",     "(",   ")",     ",",      "\t",         "\n",   "\r",         "\t ",
        "SELECT", "FROM",     "WHERE",   "SET", "ORDER", " BY ",   "INSERT",     "INTO", "VALUES",     " VALUES ",
        "UPDATE", " UPDATE ", " WHERE ", "AND", " OR ",  " SET ",  " ORDER BY ", "x",    "'it''s'",    "TW_FILE",
        "\x7f",   "( ",       ", ",      "=",   "12",    "\u0080", "\u0081",     "é",    "\U0001F600", " INSERT INTO "};
    for (int round = 0; round < 3'000; ++round) {
        QString text;
        for (auto count = random() % 60; count > 0; --count)
            text += random() % 20 == 0 ? QString(static_cast<qsizetype>(random() % 40), ' ')
                                       : pieces[random() % pieces.size()];
        ASSERT_EQ(modDatabase::FormatSQL(text), formattedStepByStep(text)) << text.toStdString();
    }
}

TEST(ModDatabase, FormatSQLOfALongTextTakesMilliseconds)
{
    // Runs of every length up to some hundred: the case that a replacement for each run length is slow on.
    QString text;
    for (qsizetype run = 1; text.size() < 64 * 1024; ++run)
        text += QString(run % 400, ' ') + "A, (B) AND SELECT";
    qint64 best = std::numeric_limits<qint64>::max();
    for (int attempt = 0; attempt < 5; ++attempt) {
        QElapsedTimer timer;
        timer.start();
        EXPECT_FALSE(modDatabase::FormatSQL(text).isEmpty());
        best = std::min(best, timer.nsecsElapsed());
    }
    RecordProperty("microseconds", static_cast<int>(best / 1000));
    EXPECT_LT(best, 100'000'000) << "nanoseconds";
}

/// Unique names for databases, whose names have up to ten characters, and for tables.
class FindUniqueNameTest : public UpdateFixture
{
protected:
    FindUniqueNameTest() { statements.clear(); }

    QString databaseName(const QString& base)
    {
        return modDatabase::FindUniqueName(*connections.Item(datasource)->db(),
                                           "SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME='?'", base);
    }

    void addDatabases(const QStringList& names)
    {
        for (const QString& name : names)
            run({"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('" + modDatabase::SQLQuote(name) + "')"});
    }

    QStringList asked() const
    {
        QStringList names = statements.statements();
        names.replaceInStrings("SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME=", "");
        return names;
    }
};

TEST_F(FindUniqueNameTest, TheBaseWithoutItsDigitsIsTakenWhenItIsFree)
{
    addDatabases({"DATA12"});
    EXPECT_EQ(databaseName("DATA12"), "DATA");
    EXPECT_EQ(asked(), QStringList("'DATA'"));
}

TEST_F(FindUniqueNameTest, ElseTheFirstFreeCounterFollows)
{
    addDatabases({"DATA", "DATA1", "DATA3"});
    EXPECT_EQ(databaseName("DATA3"), "DATA2");
    EXPECT_EQ(asked(), QStringList({"'DATA'", "'DATA1'", "'DATA2'"}));
}

TEST_F(FindUniqueNameTest, ABaseOfDigitsIsEmptyWithoutThem)
{
    EXPECT_EQ(databaseName("2024"), "");
    addDatabases({""});
    EXPECT_EQ(databaseName("2024"), "1");
}

TEST_F(FindUniqueNameTest, DigitsWithinTheBaseAndThoseOfOtherScriptsStay)
{
    EXPECT_EQ(databaseName("A1B22"), "A1B");
    EXPECT_EQ(databaseName(QStringLiteral("A\u0663")), QStringLiteral("A\u0663"));
}

TEST_F(FindUniqueNameTest, ApostrophesAndQuestionMarksOfTheNameAreAskedForAsTheyAre)
{
    addDatabases({"IT'S ?"});
    EXPECT_EQ(databaseName("IT'S ?7"), "IT'S ?1");
    EXPECT_EQ(asked(), QStringList({"'IT''S ?'", "'IT''S ?1'"}));
}

TEST_F(FindUniqueNameTest, AQuestionMarkInFrontOfTheNamesPlaceBelongsToTheStatement)
{
    run({"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('WHY?', 'PARTS')"});
    EXPECT_EQ(modDatabase::FindUniqueName(
                  *connections.Item(datasource)->db(),
                  "SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'WHY?' AND TABLE_NAME = '?'", "PARTS"),
              "PARTS1");
    EXPECT_EQ(statements.statements().back(),
              "SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'WHY?' AND TABLE_NAME = 'PARTS1'");
}

TEST_F(FindUniqueNameTest, ANameLongerThanTheColumnIsCut)
{
    addDatabases({"LONG-DATABASE-NAME"});
    EXPECT_EQ(databaseName("LONG-DATABASE-NAME"), "LONG-DATAB");
}

TEST_F(FindUniqueNameTest, ACounterThatTheCutLosesTakesThePlaceOfTheBasesEnd)
{
    addDatabases({"WAREHOUSES"});
    EXPECT_EQ(databaseName("WAREHOUSES"), "WAREHOUSE1");
    addDatabases({"WAREHOUSE1", "WAREHOUSE2", "WAREHOUSE3", "WAREHOUSE4", "WAREHOUSE5", "WAREHOUSE6", "WAREHOUSE7",
                  "WAREHOUSE8", "WAREHOUSE9"});
    const QString name = databaseName("WAREHOUSES");
    EXPECT_EQ(name.size(), 10);
    EXPECT_TRUE(name.startsWith("WAREHOUS1")) << name.toStdString();
}

TEST_F(FindUniqueNameTest, AFailureShowsTheStatementAskedAndGivesNoNameOnIgnore)
{
    addDatabases({"DATA"});
    statements.failAt(2);
    form.expect(Press::Ignore);
    EXPECT_EQ(databaseName("DATA"), "");
    EXPECT_EQ(asked(), QStringList({"'DATA'", "'DATA1'"}));
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().number, "ODBC Error");
    EXPECT_EQ(form.shown().front().trappedIn, "modDatabase.FindUniqueName");
    EXPECT_EQ(form.shown().front().callStack, QStringList("modDatabase.FindUniqueName"));
    EXPECT_EQ(form.shown().front().additional, modDatabase::FormatSQL(statements.statements().back()));
}

TEST_F(FindUniqueNameTest, ARetryAsksForTheSameNameAgain)
{
    addDatabases({"DATA"});
    statements.failAt(2);
    form.expect(Press::Retry);
    EXPECT_EQ(databaseName("DATA"), "DATA1");
    EXPECT_EQ(asked(), QStringList({"'DATA'", "'DATA1'", "'DATA1'"}));
}

TEST_F(FindUniqueNameTest, WhenNoNameOfThatSizeIsFreeItIsAFailedCallAndNoName)
{
    run({"CREATE TABLE CLASSES (CLASS VARCHAR(1))", "INSERT INTO CLASSES VALUES ('A')"});
    for (int number = 1; number <= 9; ++number)
        run({QStringLiteral("INSERT INTO CLASSES VALUES ('%1')").arg(number)});
    const QString statement = "SELECT CLASS FROM CLASSES WHERE CLASS = '?'";
    form.expect(Press::Ignore);
    EXPECT_EQ(modDatabase::FindUniqueName(*connections.Item(datasource)->db(), statement, "A"), "");
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().number, "5");
    EXPECT_EQ(form.shown().front().trappedIn, "modDatabase.FindUniqueName");
    EXPECT_EQ(form.shown().front().additional, statements.statements().back());
    for (const char* name : {"A", "1", "2", "3", "4", "5", "6", "7", "8", "9"})
        EXPECT_TRUE(statements.statements().contains(QString(statement).replace("?", name))) << name;

    // One that has become free is found.
    run({"DELETE FROM CLASSES WHERE CLASS = '7'"});
    EXPECT_EQ(modDatabase::FindUniqueName(*connections.Item(datasource)->db(), statement, "A"), "7");
}

TEST_F(FindUniqueNameTest, AStatementWithoutAPlaceForTheNameIsAFailedCall)
{
    try {
        modDatabase::FindUniqueName(*connections.Item(datasource)->db(), "SELECT 1", "A");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::FailedCall);
    }
}

} // namespace
