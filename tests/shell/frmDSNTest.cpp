#include "Boxes.h"
#include "FolderInPlace.h"
#include "MainWindowFixture.h"
#include "PaneForm.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace
{

/// Answers a box whose text ends in whatever the driver says.
class DriversOwnWords final : public boxes::Presenter
{
public:
    DriversOwnWords() : m_former(boxes::setPresenter(this)) {}
    ~DriversOwnWords() override { boxes::setPresenter(m_former); }
    boxes::Answer show(const boxes::Box& box) override
    {
        prompt = box.prompt;
        return boxes::Answer::Ok;
    }

    QString prompt;

private:
    boxes::Presenter* m_former;
};

} // namespace

class DatasourcePane : public MainWindowTest
{
protected:
    QString text(const QString& label) const { return window->currentPane()->findChild<QLabel*>(label)->text(); }

    QString connectedTitle() const { return datasource + u" (Connected) - Datasource Properties"_s; }
    QString unconnectedTitle() const { return datasource + u" (Unconnected) - Datasource Properties"_s; }
};

TEST_F(DatasourcePane, AnUnconnectedDatasourceSaysSoAndAsksToConnect)
{
    start();
    click(key());
    EXPECT_EQ(currentPane(), u"frmDSN"_s);
    EXPECT_EQ(paneTitle(), unconnectedTitle());
    EXPECT_EQ(text(u"lblDescription"_s), u"Please connect to this datasource to explorer it further..."_s);
}

TEST_F(DatasourcePane, AConnectedDatasourceSaysSoWithoutADescription)
{
    start();
    clickExpander(key());
    click(key());
    EXPECT_EQ(currentPane(), u"frmDSN"_s);
    EXPECT_EQ(paneTitle(), connectedTitle());
    EXPECT_EQ(text(u"lblDescription"_s), QString());
}

TEST_F(DatasourcePane, TheStateIsReadFromTheImageOfTheNodeAndNotFromTheConnections)
{
    start();
    clickExpander(key());
    node(key()).setImage(u"DSN Ghost"_s);
    click(key());
    EXPECT_EQ(paneTitle(), unconnectedTitle());
}

TEST_F(DatasourcePane, TheStateFollowsAtTheNextClick)
{
    start();
    click(key());
    clickExpander(key());
    click(key());
    EXPECT_EQ(paneTitle(), connectedTitle());

    choose(key(), u"mnu_DSNDisconnect"_s);
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    click(key());
    EXPECT_EQ(paneTitle(), unconnectedTitle());
}

TEST_F(DatasourcePane, ADatasourceThatFailedToConnectStaysUnconnected)
{
    const QString unreachable = u"Unreachable"_s;
    world.addUnreachableDatasource(unreachable);
    start();
    {
        DriversOwnWords box;
        clickExpander(u"DSN="_s + unreachable + u':');
        EXPECT_TRUE(box.prompt.startsWith(u"Failed to connect for the following reason:"_s));
    }
    click(u"DSN="_s + unreachable + u':');
    EXPECT_EQ(paneTitle(), unreachable + u" (Unconnected) - Datasource Properties"_s);
}

TEST_F(DatasourcePane, ShowsWhatTheDriverManagerKnowsOfTheDatasource)
{
    start();
    click(key());
    EXPECT_EQ(text(u"lblName"_s), datasource);
    EXPECT_EQ(text(u"lblDriver"_s), u"Tarnwick ODBC"_s);
    EXPECT_EQ(text(u"lblCatalog"_s), world.catalogFile(datasource));
    EXPECT_EQ(text(u"lblFile"_s), world.folder() + u"/user.ini"_s);
    EXPECT_FALSE(window->currentPane()->findChild<QLabel*>(u"lblRemarks"_s)->isVisible());
}

TEST_F(DatasourcePane, ShowsTheFactsOfTheDatasourceThatWasClickedLast)
{
    world.addDatasource(u"Archive"_s, {u"Description=What was closed"_s});
    start();
    click(key());
    click(u"DSN=Archive:"_s);
    EXPECT_EQ(text(u"lblName"_s), u"Archive"_s);
    EXPECT_EQ(text(u"lblRemarks"_s), u"What was closed"_s);
    EXPECT_TRUE(window->currentPane()->findChild<QLabel*>(u"lblRemarks"_s)->isVisible());
    click(key());
    EXPECT_FALSE(window->currentPane()->findChild<QLabel*>(u"lblRemarks"_s)->isVisible());
}

TEST_F(DatasourcePane, ASystemFileThatCantBeReadTakesNothingFromTheUsersDatasources)
{
    const FolderInPlace unreadable(world.systemFolder() + u"/odbc.ini"_s);
    start();
    EXPECT_EQ(rootTexts(), QStringList{datasource});
    click(key());
    EXPECT_EQ(currentPane(), u"frmDSN"_s);
    EXPECT_EQ(paneTitle(), unconnectedTitle());
    EXPECT_EQ(text(u"lblName"_s), datasource);
    EXPECT_EQ(text(u"lblCatalog"_s), world.catalogFile(datasource));
    EXPECT_EQ(text(u"lblFile"_s), world.folder() + u"/user.ini"_s);
    clickExpander(key());
    click(key());
    EXPECT_EQ(paneTitle(), connectedTitle());
    EXPECT_TRUE(errors.shown().empty());
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(DatasourcePane, AUsersFileThatCantBeReadHidesTheFactsAlone)
{
    start();
    const FolderInPlace unreadable(world.folder() + u"/user.ini"_s);
    click(key());
    EXPECT_EQ(currentPane(), u"frmDSN"_s);
    EXPECT_EQ(paneTitle(), unconnectedTitle());
    EXPECT_EQ(text(u"lblName"_s), datasource);
    EXPECT_FALSE(window->currentPane()->findChild<QLabel*>(u"lblCatalog"_s)->isVisible());
    EXPECT_FALSE(window->currentPane()->findChild<QLabel*>(u"lblFile"_s)->isVisible());
    EXPECT_TRUE(errors.shown().empty());
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(DatasourcePane, SendsNoStatement)
{
    start();
    clickExpander(key());
    statements.clear();
    click(key());
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(DatasourcePane, ADatasourceThatIsNotInTheTreeIsReported)
{
    start();
    errors.expect(Press::Ignore);
    window->PaneDisplay(u"frmDSN"_s, {u"Nowhere"_s});
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown().front().number, u"5"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmDSN.Display"_s);
}
