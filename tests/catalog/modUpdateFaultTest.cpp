#include "UpdateFixture.h"
#include "frmTWErr.h"

namespace
{

/// Keeps how deep the call stack was at each statement.
class DepthRecorder final : public dao::StatementObserver
{
public:
    DepthRecorder() : m_former(dao::DBEngine::setObserver(this)) {}
    ~DepthRecorder() override { dao::DBEngine::setObserver(m_former); }
    DepthRecorder(const DepthRecorder&) = delete;
    DepthRecorder& operator=(const DepthRecorder&) = delete;

    std::vector<dao::Error> beforeStatement(const QString& datasource, const QString& statement) override
    {
        depths.push_back(frmTWErr::CallStack().size());
        return m_former->beforeStatement(datasource, statement);
    }

    std::vector<qsizetype> depths;

private:
    dao::StatementObserver* m_former;
};

/// Every statement of every routine fails once.
class ModUpdateFaultTest : public UpdateFixture
{
protected:
    /// Calls the routine on a fresh world with the k-th statement failing.
    QStringList sentWithFault(const Update& update, int k, Press answer)
    {
        restore();
        statements.clear();
        statements.failAt(k);
        form.expect(answer);
        update.call();
        return statements.statements();
    }
};

TEST_F(ModUpdateFaultTest, OnRetryTheStatementAloneIsSentAgainAndTheCatalogEndsAsWithoutTheFault)
{
    for (const Update& update : updates()) {
        const QStringList expected = catalogAfter(update.changes);
        const QStringList undisturbed = sentBy(update.call);
        for (int k = 1; k <= undisturbed.size(); ++k) {
            SCOPED_TRACE(testing::Message() << update.name << ", statement " << k);
            QStringList repeated = undisturbed;
            repeated.insert(k, undisturbed[k - 1]);
            EXPECT_EQ(lines(sentWithFault(update, k, Press::Retry)), lines(repeated));
            EXPECT_EQ(lines(catalog()), lines(expected));
        }
    }
}

/// The statements that are sent when the k-th one fails and is ignored: the routine that sent it sends no more, nor do
/// those that it would have called, and its caller goes on.
QStringList withoutTheRestOfTheRoutine(const QStringList& statements, const std::vector<qsizetype>& depths, int k)
{
    QStringList sent = statements.mid(0, k);
    const qsizetype depth = depths[static_cast<std::size_t>(k - 1)];
    bool left = false;
    for (qsizetype next = k; next < statements.size(); ++next) {
        const qsizetype nextDepth = depths[static_cast<std::size_t>(next)];
        left = left || nextDepth < depth || (nextDepth == depth && statements[next].startsWith("SELECT * "));
        if (left)
            sent.append(statements[next]);
    }
    return sent;
}

TEST_F(ModUpdateFaultTest, OnIgnoreTheRoutineEndsAndItsCallerGoesOn)
{
    for (const Update& update : updates()) {
        restore();
        // A table privilege that stays behind would be found again by the privileges on the database.
        const QStringList without =
            QByteArray(update.name) == "UpdateDatabase" ? QStringList("DELETE FROM TW_TBLPRV") : QStringList();
        const auto call = [&] {
            run(without);
            update.call();
        };
        DepthRecorder recorder;
        const QStringList undisturbed = sentBy(call);
        const std::vector<qsizetype> depths = recorder.depths;
        ASSERT_EQ(depths.size(), static_cast<std::size_t>(undisturbed.size()));
        for (int k = 1; k <= undisturbed.size(); ++k) {
            SCOPED_TRACE(testing::Message() << update.name << ", statement " << k);
            QStringList sent = sentWithFault({update.name, call, {}}, k, Press::Ignore);
            EXPECT_EQ(lines(sent), lines(withoutTheRestOfTheRoutine(undisturbed, depths, k)));
            EXPECT_EQ(frmTWErr::CallStack(), QStringList());

            const QStringList found = catalog();
            sent.removeAt(k - 1);
            EXPECT_EQ(lines(found), lines(catalogAfter(without + sent)));
        }
    }
}

} // namespace
