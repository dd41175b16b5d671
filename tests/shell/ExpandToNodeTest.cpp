#include "MainWindowFixture.h"

#include "CConnections.h"
#include "modGUI.h"

using namespace Qt::StringLiterals;

namespace
{

const QString fieldsStatement =
    u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' ORDER BY FIELD_NAME ASC"_s;
const QString filesStatement =
    u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME NOT IN ('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', 'FIELD', 'FILE', 'SQLDT', 'LOCDT', 'TABLE', 'TBLPRV', 'USER') ORDER BY FILE_NAME ASC"_s;
const QString usersStatement = u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s;

const QStringList file{u"FI"_s, u"fi=PAYROLL"_s};
const QStringList field{u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s, u"fd=SALARY"_s};

class ExpandToNode : public MainWindowTest
{
};

} // namespace

TEST_F(ExpandToNode, OpensEveryLevelOnTheWayToALeaf)
{
    start();
    modGUI::ExpandToNode(key(field));

    EXPECT_EQ(selectedKey(), key(field));
    for (qsizetype steps = 0; steps < field.size(); ++steps)
        EXPECT_TRUE(node(key(field.first(steps))).Expanded()) << steps;
    EXPECT_EQ(statements.statements(),
              (QStringList{u"SELECT * FROM TW_SQLDT"_s, u"SELECT * FROM TW_LOCDT"_s, filesStatement, fieldsStatement}));
}

TEST_F(ExpandToNode, ReadsNothingForALeafThatIsInSight)
{
    start();
    expandTo(key(field));
    statements.clear();
    modGUI::ExpandToNode(key(field));
    EXPECT_EQ(selectedKey(), key(field));
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(ExpandToNode, ReadsTheLevelAboveAnewForANodeThatTheTreeDoesNotKnow)
{
    start();
    expandTo(key({u"US"_s}));
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('BAKER')"_s);
    statements.clear();

    modGUI::ExpandToNode(key({u"US"_s, u"us=BAKER"_s}));

    EXPECT_EQ(statements.statements(), QStringList{usersStatement});
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"BAKER"_s, u"CLERK"_s}));
    EXPECT_EQ(selectedKey(), key({u"US"_s, u"us=BAKER"_s}));
}

TEST_F(ExpandToNode, FindsTheFirstRowOfALevelThatWasEmpty)
{
    const QStringList fields{u"FI"_s, u"fi=EMPTY"_s, u"FD"_s};
    start();
    expandTo(key(fields));
    ASSERT_EQ(node(key(fields)).Children(), 0);
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME) VALUES ('EMPTY', 1, 'FIRST')"_s);
    statements.clear();

    modGUI::ExpandToNode(key(fields + QStringList{u"fd=FIRST"_s}));

    EXPECT_EQ(selectedKey(), key(fields + QStringList{u"fd=FIRST"_s}));
    EXPECT_TRUE(node(key(fields)).Expanded());
    EXPECT_EQ(statements.statements(),
              QStringList{u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'EMPTY' ORDER BY FIELD_NAME ASC"_s});
}

TEST_F(ExpandToNode, FindsTheFirstRowOfALevelThatWasEmptyAndThenClosed)
{
    const QStringList fields{u"FI"_s, u"fi=EMPTY"_s, u"FD"_s};
    start();
    expandTo(key(fields));
    click(key(fields));
    type(Qt::Key_Minus);
    ASSERT_FALSE(node(key(fields)).Expanded());
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME) VALUES ('EMPTY', 1, 'FIRST')"_s);

    modGUI::ExpandToNode(key(fields + QStringList{u"fd=FIRST"_s}));

    EXPECT_EQ(selectedKey(), key(fields + QStringList{u"fd=FIRST"_s}));
    EXPECT_TRUE(node(key(fields)).Expanded());
    EXPECT_EQ(children(key(fields)), QStringList{u"FIRST"_s});
}

TEST_F(ExpandToNode, ReadsANodeWithChildrenOnceMore)
{
    const QString files = key({u"FI"_s});
    start();
    clickExpander(key());
    statements.clear();
    modGUI::ExpandToNode(files);
    EXPECT_EQ(selectedKey(), files);
    EXPECT_TRUE(node(files).Expanded());
    EXPECT_EQ(children(files), (QStringList{u"EMPTY"_s, u"KEY"_s, u"PAYROLL"_s}));
    EXPECT_EQ(statements.statements(), (QStringList{filesStatement, filesStatement}));

    statements.clear();
    modGUI::ExpandToNode(files);
    EXPECT_EQ(statements.statements(), QStringList{filesStatement});
    EXPECT_TRUE(node(files).Expanded());
}

TEST_F(ExpandToNode, ANodeWhoseNewChildrenHaveOldKeysIsReadAnew)
{
    const QString old = key({u"FI"_s, u"fi=EMPTY"_s});
    const QString renamed = key({u"FI"_s, u"fi=NEW"_s});
    start();
    expandTo(old);
    change(u"UPDATE TW_FILE SET FILE_NAME = 'NEW' WHERE FILE_NAME = 'EMPTY'"_s);
    window->nodes().ChangeKey(old, renamed);
    window->nodes().Item(renamed).setNodeData(u"NEW"_s);
    node(renamed).setText(u"NEW"_s);

    modGUI::ExpandToNode(renamed);

    EXPECT_EQ(lines(renamed), (QStringList{u"FD \"Fields\" Fields data \"NEW\" +"_s}));
    EXPECT_EQ(node(renamed).Child()->Key(), renamed + "FD=NEW:");
    EXPECT_EQ(window->nodes().Count(), window->tvwExplorer().Nodes().Count());
}

TEST_F(ExpandToNode, AnUnknownNodeSelectsTheLastOneThatIsThereAndReportsNothing)
{
    start();
    modGUI::ExpandToNode(key({u"FI"_s, u"fi=NOWHERE"_s, u"FD"_s, u"fd=X"_s}));
    EXPECT_EQ(selectedKey(), key({u"FI"_s}));
    EXPECT_TRUE(node(key({u"FI"_s})).Expanded());
    EXPECT_EQ(find(key({u"FI"_s, u"fi=NOWHERE"_s})), nullptr);
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(ExpandToNode, AnUnknownDatasourceChangesNothing)
{
    start();
    modGUI::ExpandToNode(u"DSN=Nowhere:FI=Nowhere:"_s);
    EXPECT_EQ(selectedKey(), QString());
    EXPECT_EQ(wholeTree(), (QStringList{u"DSN \"%1\" DSN Ghost +"_s.arg(datasource)}));
    EXPECT_EQ(CConnections::instance().Count(), 0);
}

TEST_F(ExpandToNode, ATextWithoutAColonDoesNothing)
{
    start();
    expandTo(key(file));
    click(key(file));
    const QStringList before = wholeTree();
    statements.clear();
    for (const QString& text : {u""_s, u"FI"_s, u"DSN="_s + datasource})
        modGUI::ExpandToNode(text);
    EXPECT_EQ(wholeTree(), before);
    EXPECT_EQ(selectedKey(), key(file));
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(ExpandToNode, NamesWithColonsAreFoundAllTheSame)
{
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('a:b')"_s);
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME) VALUES ('a:b', 1, 'x:=y')"_s);
    const QString leaf = key({u"FI"_s, u"fi=a:b"_s, u"FD"_s, u"fd=x:=y"_s});
    start();
    modGUI::ExpandToNode(leaf);
    EXPECT_EQ(selectedKey(), leaf);
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(ExpandToNode, BringsTheNodeIntoView)
{
    change(u"WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N WHERE I < 300) "
           "INSERT INTO TW_USER (USER_NAME) SELECT printf('U%03d', I) FROM N"_s);
    const QString last = key({u"US"_s, u"us=U300"_s});
    start();
    modGUI::ExpandToNode(last);
    const TreeView& tree = window->tvwExplorer();
    const TreeNode* under = nullptr;
    for (int y = 0; y < tree.viewport()->height() && under != find(last); ++y)
        under = tree.HitTest({tree.viewport()->width() / 2, y});
    EXPECT_EQ(under, find(last));
}

TEST_F(ExpandToNode, AFailedStatementOnTheWayEndsThereAndTheCallerGoesOn)
{
    start();
    clickExpander(key());
    statements.clear();
    // The level that fails lacks the node and is therefore read a second time.
    statements.failAt(1);
    statements.failAt(2);
    errors.expect(Press::Ignore);
    errors.expect(Press::Ignore);
    modGUI::ExpandToNode(key(file));
    EXPECT_EQ(selectedKey(), key({u"FI"_s}));
    EXPECT_EQ(errors.shown().back().trappedIn, u"mdiMain.tvwExplorer_Expand"_s);

    clickExpander(key());
    clickExpander(key());
    modGUI::ExpandToNode(key(file));
    EXPECT_EQ(selectedKey(), key(file));
}
