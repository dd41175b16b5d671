#include "OdbcFixture.h"

namespace
{

class Steps : public OdbcFixture
{
};

/// Writes down every statement and fails those whose number is asked for.
class Recorder final : public dao::StatementObserver
{
public:
    std::vector<dao::Error> beforeStatement(const QString& datasource, const QString& statement) override
    {
        seen << datasource + ": " + statement;
        if (fails.removeOne(static_cast<int>(seen.size())))
            return {{11, "first"}, {22, "second"}};
        return {};
    }
    QStringList seen;
    QList<int> fails;
};

const QString failure = QStringLiteral("3146: 11 first / 22 second / 3146 ODBC--call failed.");
const QString oneRow = QStringLiteral("RESULT\nCOLUMN A 12 10\nROW a\n");

} // namespace

TEST_F(Steps, TheObserverSeesEachStatementAsItStandsBeforeItIsSent)
{
    auto database = openScripted();
    Recorder recorder;
    EXPECT_EQ(dao::DBEngine::setObserver(&recorder), nullptr);
    database->Execute("COUNTED\n  'x'\t");
    database->OpenRecordset(oneRow);
    EXPECT_EQ(recorder.seen, QStringList({"scripted: COUNTED\n  'x'\t", "scripted: " + oneRow}));
    EXPECT_EQ(dao::DBEngine::setObserver(nullptr), &recorder);
    database->Execute("COUNTED");
    EXPECT_EQ(recorder.seen.size(), 2);
}

TEST_F(Steps, AnObserversRecordsFailTheStatementWithoutSendingIt)
{
    auto database = openScripted();
    Recorder recorder;
    dao::DBEngine::setObserver(&recorder);
    recorder.fails = {1, 3};
    EXPECT_EQ(raised([&] { database->Execute("BUMP"); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain(), QStringList({"11 first", "22 second", "3146 ODBC--call failed."}));
    EXPECT_EQ(database->OpenRecordset("RESULT\nCOLUMN A 4 10\nCOUNTER 1")->View(0).toString(), "0");
    EXPECT_EQ(chain(), QStringList());
    EXPECT_EQ(raised([&] { database->OpenRecordset(oneRow); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain().size(), 3);
}

TEST_F(Steps, RetrySendsTheStatementAgainAlone)
{
    auto database = openScripted();
    Recorder recorder;
    dao::DBEngine::setObserver(&recorder);
    recorder.fails = {2, 3};
    AnsweringTrap trap({StepAnswer::Retry, StepAnswer::Retry});
    database->Execute("BUMP");
    database->Execute("COUNTED");
    auto rows = database->OpenRecordset("RESULT\nCOLUMN A 4 10\nCOUNTER 1");
    EXPECT_EQ(trap.failures, QStringList({failure, failure}));
    EXPECT_EQ(rows->View(0).toString(), "1");
    EXPECT_EQ(recorder.seen.size(), 5);
    EXPECT_EQ(chain(), QStringList());
}

TEST_F(Steps, IgnoreLeavesTheRoutine)
{
    auto database = openScripted();
    AnsweringTrap trap({StepAnswer::Ignore});
    EXPECT_THROW(database->OpenRecordset("FAIL\n42000|5|no"), AnsweringTrap::Left);
    EXPECT_EQ(trap.failures, QStringList("3146: 5 no / 3146 ODBC--call failed."));
}

TEST_F(Steps, ARecordsetOpensAgainOnRetry)
{
    auto database = openScripted();
    Recorder recorder;
    dao::DBEngine::setObserver(&recorder);
    recorder.fails = {1};
    AnsweringTrap trap({StepAnswer::Retry});
    auto rows = database->OpenRecordset(oneRow);
    EXPECT_EQ(rows->View(0).toString(), "a");
    EXPECT_EQ(recorder.seen.size(), 2);
}

TEST_F(Steps, MovingAndConnectingAreStepsToo)
{
    auto database = openScripted();
    QString statement = QStringLiteral("RESULT\nCOLUMN A 12 10\n");
    statement += QStringLiteral("ROW a\n").repeated(40) + QStringLiteral("BREAK\nROW last\n");
    auto rows = database->OpenRecordset(statement);
    {
        AnsweringTrap trap({StepAnswer::Retry});
        const QStringList texts = columnTexts(*rows, "A");
        EXPECT_EQ(texts.size(), 41);
        EXPECT_EQ(texts.last(), "last");
        EXPECT_EQ(trap.failures, QStringList("3146: 1205 [Scripted]Deadlock / 3146 ODBC--call failed."));
    }
    {
        AnsweringTrap trap({StepAnswer::Ignore});
        EXPECT_THROW(rows->MoveNext(), AnsweringTrap::Left);
        EXPECT_EQ(trap.failures, QStringList("3021: "));
    }
    {
        AnsweringTrap trap({StepAnswer::Retry, StepAnswer::Ignore});
        EXPECT_THROW(openScripted(QStringLiteral("Reply=fail")), AnsweringTrap::Left);
        EXPECT_EQ(trap.failures.size(), 2);
    }
    rows = database->OpenRecordset(statement);
    {
        AnsweringTrap trap({StepAnswer::Retry});
        rows->MoveLast();
        EXPECT_EQ(rows->RecordCount(), 41);
        EXPECT_EQ(trap.failures.size(), 1);
    }
}
