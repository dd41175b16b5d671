#include "MainWindowFixture.h"

#include "RuntimeError.h"

using namespace Qt::StringLiterals;

namespace
{

/// The nodes of a started program, without the one datasource that it lists.
class Nodes : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        start();
        nodes().Clear();
    }

    CNodes& nodes() { return window->nodes(); }
    TreeNodes& shown() { return window->tvwExplorer().Nodes(); }

    /// "A" with the files F1, with two fields, and F2.
    void addSmallTree()
    {
        const CNode* root = nodes().add(nullptr, u"DSN"_s, u"A"_s, u"A"_s);
        const CNode* files = nodes().add(*root, u"FI"_s, u"A"_s, u"Files"_s);
        const CNode* f1 = nodes().add(*files, u"fi"_s, u"F1"_s, u"F1"_s);
        nodes().add(*files, u"fi"_s, u"F2"_s, u"F2"_s);
        nodes().add(*f1, u"fd"_s, u"X"_s, u"X"_s);
        nodes().add(*f1, u"fd"_s, u"Y"_s, u"Y"_s);
    }

    QStringList keys()
    {
        QStringList all;
        for (const CNode* payload : nodes().NewEnum())
            all.append(payload->Key);
        return all;
    }

    QStringList shownKeys()
    {
        QStringList all;
        const std::function<void(const TreeNode*)> walk = [&](const TreeNode* node) {
            for (; node; node = node->Next()) {
                all.append(node->Key());
                walk(node->Child());
            }
        };
        walk(shown().Root());
        return all;
    }
};

const QString root = u"DSN=A:"_s;
const QString files = u"DSN=A:FI=A:"_s;
const QString f1 = u"DSN=A:FI=A:fi=F1:"_s;
const QString f2 = u"DSN=A:FI=A:fi=F2:"_s;
const QString x = u"DSN=A:FI=A:fi=F1:fd=X:"_s;
const QString y = u"DSN=A:FI=A:fi=F1:fd=Y:"_s;

} // namespace

TEST_F(Nodes, AKeyIsTheChainOfAllAncestors)
{
    addSmallTree();
    EXPECT_EQ(keys(), (QStringList{root, files, f1, f2, x, y}));
    EXPECT_EQ(shownKeys(), (QStringList{root, files, f1, x, y, f2}));
    EXPECT_EQ(nodes().Item(x).NodeType(), u"fd"_s);
    EXPECT_EQ(nodes().Item(x).NodeData(), u"X"_s);
    EXPECT_EQ(&nodes().Item(*shown().find(x)), &nodes().Item(x));
    EXPECT_EQ(nodes().Count(), 6);
}

TEST_F(Nodes, DatasourcesAndFileDatasourcesAreRootsOfOneScheme)
{
    EXPECT_EQ(nodes().add(nullptr, u"DSN"_s, u"A"_s, u"A"_s)->Key, u"DSN=A:"_s);
    const CNode* fileSource = nodes().add(nullptr, u"FDSN"_s, u"/x/b.dsn"_s, u"b"_s);
    EXPECT_EQ(fileSource->Key, u"DSN=/x/b.dsn:"_s);
    // The kind of root is not part of the chain below it.
    EXPECT_EQ(nodes().add(*fileSource, u"FI"_s, u"/x/b.dsn"_s, u"Files"_s)->Key, u"DSN=/x/b.dsn:FI=/x/b.dsn:"_s);
    const CNode* below = nodes().add(*fileSource, u"DSN"_s, u"C"_s, u"C"_s);
    EXPECT_EQ(below->Key, u"DSN=C:"_s);
    EXPECT_EQ(shown().find(u"DSN=C:"_s)->Parent(), shown().find(fileSource->Key));
}

TEST_F(Nodes, NamesStandInKeysWithoutAnyEscapes)
{
    const CNode* source = nodes().add(nullptr, u"DSN"_s, u"a:b=c"_s, u"a"_s);
    EXPECT_EQ(source->Key, u"DSN=a:b=c:"_s);
    EXPECT_EQ(nodes().add(*source, u"us"_s, u"O'Brien"_s, u"o"_s)->Key, u"DSN=a:b=c:us=O'Brien:"_s);
}

TEST_F(Nodes, PlaceholdersAreNumberedThroughTheWholeRun)
{
    const CNode* a = nodes().add(nullptr, u"DSN"_s, u"A"_s, u"A"_s);
    TreeNode& node = *shown().find(a->Key);
    nodes().addPlaceholder(node);
    ASSERT_TRUE(node.Child());
    const QString first = node.Child()->Key();
    // The datasource that the start has listed took the first number.
    EXPECT_EQ(first, u"K2"_s);
    EXPECT_EQ(node.Child()->Text(), QString());
    EXPECT_EQ(node.Child()->Image(), QString());
    EXPECT_EQ(nodes().Item(first).NodeType(), QString());
    EXPECT_EQ(nodes().Item(first).NodeData(), QString());

    nodes().RemoveChildren(node);
    const CNode* third = nodes().add(&node, {}, {}, {});
    EXPECT_EQ(third->Key, u"K3"_s);
    nodes().Clear();
    EXPECT_EQ(nodes().add(nullptr, {}, {}, {})->Key, u"K4"_s);
}

TEST_F(Nodes, TheSelectedImageIsTheImageUnlessItIsGiven)
{
    const CNode* same = nodes().add(nullptr, u"DSN"_s, u"A"_s, u"A"_s, u"DSN Ghost"_s);
    EXPECT_EQ(shown().find(same->Key)->Image(), u"DSN Ghost"_s);
    EXPECT_EQ(shown().find(same->Key)->SelectedImage(), u"DSN Ghost"_s);
    const CNode* two = nodes().add(nullptr, u"DSN"_s, u"B"_s, u"B"_s, u"DSN Ghost"_s, u"Datasource"_s);
    EXPECT_EQ(shown().find(two->Key)->SelectedImage(), u"Datasource"_s);
    const CNode* none = nodes().add(nullptr, u"DSN"_s, u"C"_s, u"C"_s);
    EXPECT_EQ(shown().find(none->Key)->Image(), QString());
    EXPECT_EQ(shown().find(none->Key)->SelectedImage(), QString());
}

TEST_F(Nodes, AKeyThatIsAlreadyThereIsReported)
{
    addSmallTree();
    errors.expect(Press::Ignore);

    EXPECT_EQ(nodes().add(nodes().Item(files), u"fi"_s, u"F1"_s, u"again"_s), nullptr);

    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"457"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"CNodes.Add"_s);
    EXPECT_EQ(errors.shown()[0].callStack, QStringList{u"CNodes.Add"_s});
    EXPECT_EQ(shownKeys(), (QStringList{root, files, f1, x, y, f2}));
    EXPECT_EQ(nodes().Count(), 6);
    EXPECT_EQ(shown().find(f1)->Text(), u"F1"_s);
}

TEST_F(Nodes, AKeyThatOnlyTheTreeHasIsReportedToo)
{
    addSmallTree();
    shown().Add(nullptr, u"DSN=B:"_s, u"B"_s);
    errors.expect(Press::Ignore);
    EXPECT_EQ(nodes().add(nullptr, u"DSN"_s, u"B"_s, u"B"_s), nullptr);
    EXPECT_EQ(errors.shown().back().number, u"457"_s);
}

TEST_F(Nodes, AnUnknownKeyIsAFailedLookUp)
{
    addSmallTree();
    try {
        nodes().Item(u"DSN=a:"_s);
        FAIL() << "keys compare exactly";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::FailedCall);
    }
    EXPECT_EQ(nodes().find(u"DSN=a:"_s), nullptr);
}

TEST_F(Nodes, RemovingAnObjectTakesItsWholeSubtree)
{
    addSmallTree();
    nodes().Remove(nodes().Item(f1));
    EXPECT_EQ(keys(), (QStringList{root, files, f2}));
    EXPECT_EQ(shownKeys(), (QStringList{root, files, f2}));
    nodes().Remove(nodes().Item(root));
    EXPECT_EQ(nodes().Count(), 0);
    EXPECT_EQ(shown().Count(), 0);
}

TEST_F(Nodes, RemovingByKeyLeavesTheEntryOfTheLastChild)
{
    addSmallTree();
    nodes().Remove(f1);
    EXPECT_EQ(shownKeys(), (QStringList{root, files, f2}));
    EXPECT_EQ(keys(), (QStringList{root, files, f2, y}));
    EXPECT_EQ(nodes().Count(), 4);
}

TEST_F(Nodes, RemovingByKeyANodeWithOneChildLeavesThatEntry)
{
    const CNode* source = nodes().add(nullptr, u"DSN"_s, u"A"_s, u"A"_s);
    nodes().addPlaceholder(*shown().find(source->Key));
    nodes().Remove(root);
    EXPECT_EQ(shown().Count(), 0);
    EXPECT_EQ(keys(), QStringList{u"K2"_s});
    EXPECT_EQ(nodes().Count(), 1);
}

TEST_F(Nodes, RemovingByKeyLeavesTheEntriesBelowTheLastChildToo)
{
    addSmallTree();
    nodes().Remove(root);
    EXPECT_EQ(shown().Count(), 0);
    EXPECT_EQ(keys(), (QStringList{files, f1, f2, x, y}));
    EXPECT_EQ(nodes().Count(), 5);
    EXPECT_EQ(nodes().find(root), nullptr);
}

TEST_F(Nodes, RemovingByKeyALeafLeavesNothing)
{
    addSmallTree();
    nodes().Remove(y);
    EXPECT_EQ(keys(), (QStringList{root, files, f1, f2, x}));
    EXPECT_EQ(shownKeys(), (QStringList{root, files, f1, x, f2}));
}

TEST_F(Nodes, ALeftEntryRefusesItsKeyUntilItIsRemovedToo)
{
    addSmallTree();
    nodes().Remove(f1);
    nodes().add(nodes().Item(files), u"fi"_s, u"F1"_s, u"F1"_s);
    errors.expect(Press::Ignore);
    EXPECT_EQ(nodes().add(nodes().Item(f1), u"fd"_s, u"Y"_s, u"Y"_s), nullptr);
    EXPECT_EQ(errors.shown().back().trappedIn, u"CNodes.Add"_s);
    EXPECT_EQ(errors.shown().back().number, u"457"_s);

    nodes().Remove(nodes().Item(y));
    EXPECT_TRUE(nodes().add(nodes().Item(f1), u"fd"_s, u"Y"_s, u"Y"_s));
}

TEST_F(Nodes, NothingIsAddedBelowAnEntryThatWasLeftBehind)
{
    addSmallTree();
    nodes().Remove(f1);
    const QStringList before = keys();
    errors.expect(Press::Ignore);
    EXPECT_EQ(nodes().add(nodes().Item(y), u"fd"_s, u"Z"_s, u"Z"_s), nullptr);
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"3265"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"CNodes.Add"_s);
    EXPECT_EQ(keys(), before);
    EXPECT_EQ(shownKeys(), (QStringList{root, files, f2}));
}

TEST_F(Nodes, ATreeNodeWithoutAnEntryIsAFailedLookUp)
{
    const TreeNode& bare = shown().Add(nullptr, u"DSN=B:"_s, u"B"_s);
    try {
        nodes().Item(bare);
        FAIL() << "nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::FailedCall);
    }
}

TEST_F(Nodes, RemovingWhatIsNotThereIsNotReported)
{
    addSmallTree();
    nodes().Remove(u"DSN=B:"_s);
    CNode stranger;
    stranger.Key = u"DSN=C:"_s;
    nodes().Remove(stranger);
    EXPECT_EQ(nodes().Count(), 6);
    EXPECT_EQ(shown().Count(), 6);
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(Nodes, RemovingChildrenKeepsTheNode)
{
    addSmallTree();
    nodes().RemoveChildren(*shown().find(files));
    EXPECT_EQ(keys(), (QStringList{root, files}));
    EXPECT_EQ(shownKeys(), (QStringList{root, files}));
    nodes().RemoveChildren(*shown().find(files));
    EXPECT_EQ(keys(), (QStringList{root, files}));
}

TEST_F(Nodes, ARenamedNodeKeepsItsPlaceAndItsChildren)
{
    addSmallTree();
    const TreeNode* node = shown().find(f1);

    const QString renamed = u"DSN=A:FI=A:fi=NEW:"_s;
    nodes().ChangeKey(f1, renamed);

    EXPECT_EQ(shown().find(renamed), node);
    EXPECT_EQ(shown().find(f1), nullptr);
    EXPECT_EQ(nodes().find(f1), nullptr);
    EXPECT_EQ(nodes().Item(renamed).NodeType(), u"fi"_s);
    EXPECT_EQ(nodes().Item(renamed).NodeData(), u"F1"_s);
    EXPECT_EQ(shown().find(renamed)->Text(), u"F1"_s);
    EXPECT_EQ(shownKeys(), (QStringList{root, files, renamed, x, y, f2}));
    EXPECT_EQ(nodes().Count(), 6);
    EXPECT_EQ(shown().find(x)->Parent(), node);
}

TEST_F(Nodes, RenamingToAKeyThatIsTakenIsReported)
{
    addSmallTree();
    errors.expect(Press::Ignore);
    nodes().ChangeKey(f1, f2);
    EXPECT_EQ(errors.shown().back().number, u"457"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"CNodes.ChangeKey"_s);
    EXPECT_EQ(keys(), (QStringList{root, files, f1, f2, x, y}));
    EXPECT_EQ(shownKeys(), (QStringList{root, files, f1, x, y, f2}));
}

TEST_F(Nodes, RenamingAnUnknownKeyIsReported)
{
    addSmallTree();
    errors.expect(Press::Ignore);
    nodes().ChangeKey(u"DSN=B:"_s, u"DSN=C:"_s);
    EXPECT_EQ(errors.shown().back().number, u"5"_s);
    EXPECT_EQ(nodes().Count(), 6);
}

TEST_F(Nodes, TheSelectedItemIsThatOfTheTree)
{
    addSmallTree();
    window->tvwExplorer().setSelectedItem(nullptr);
    EXPECT_EQ(nodes().SelectedItem(), nullptr);
    nodes().setSelectedItem(nodes().Item(root));
    EXPECT_EQ(selectedKey(), root);
    EXPECT_EQ(nodes().SelectedItem(), &nodes().Item(root));
}

TEST_F(Nodes, ClearingEmptiesTheTreeToo)
{
    addSmallTree();
    nodes().Clear();
    EXPECT_EQ(nodes().Count(), 0);
    EXPECT_EQ(shown().Count(), 0);
    EXPECT_EQ(selectedKey(), QString());
    addSmallTree();
    EXPECT_EQ(nodes().Count(), 6);
}

namespace
{

class RealNodes : public MainWindowTest
{
};

} // namespace

TEST_F(RealNodes, ARenamedNodeStaysOpenWhereItIs)
{
    const QString files = key({u"FI"_s});
    const QString file = key({u"FI"_s, u"fi=EMPTY"_s});
    start();
    expandTo(file);
    click(file);
    ASSERT_TRUE(node(file).Expanded());

    window->nodes().ChangeKey(file, key({u"FI"_s, u"fi=ZULU"_s}));
    node(key({u"FI"_s, u"fi=ZULU"_s})).setText(u"ZULU"_s);

    EXPECT_EQ(children(files), (QStringList{u"ZULU"_s, u"KEY"_s, u"PAYROLL"_s}));
    EXPECT_TRUE(node(key({u"FI"_s, u"fi=ZULU"_s})).Expanded());
    EXPECT_EQ(selectedKey(), key({u"FI"_s, u"fi=ZULU"_s}));
    // The children keep the keys that they were read under.
    EXPECT_EQ(node(key({u"FI"_s, u"fi=ZULU"_s})).Child()->Key(), file + "FD=EMPTY:");
}

TEST_F(RealNodes, ExpandingChildrenReadsEveryLevelAnewInTurn)
{
    const QString database = key({u"DB"_s, u"db=SALES"_s});
    start();
    expandTo(key({u"DB"_s}));
    expandTo(key({u"DB"_s, u"db=SALES"_s, u"TA"_s}));
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('SALES', 'BILLS')"_s);
    statements.clear();

    window->nodes().ExpandChildren(window->nodes().Item(database));

    EXPECT_EQ(
        statements.statements(),
        (QStringList{
            u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' ORDER BY TABLE_NAME ASC"_s,
            u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'BILLS' AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s,
            u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'BILLS' ORDER BY USER_NAME "_s,
            u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s,
            u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' ORDER BY USER_NAME "_s,
            u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' ORDER BY USER_NAME "_s}));
    EXPECT_EQ(children(key({u"DB"_s, u"db=SALES"_s, u"TA"_s})), (QStringList{u"BILLS"_s, u"ORDERS"_s}));
    EXPECT_TRUE(node(key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s})).Expanded());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(RealNodes, ExpandingChildrenSaysWhichNodeItIsAt)
{
    start();
    clickExpander(key());
    // A node that was open is collapsed before, which says so.
    for (const QString& expected : {u"Expanding Users"_s, u"Collapse"_s}) {
        QString said;
        statements.clear();
        statements.failAt(1);
        errors.expect([&](QWidget& form) {
            said = statusText();
            ScriptedErrorForm::press(form, Press::Retry);
        });
        window->nodes().ExpandChildren(window->nodes().Item(key({u"US"_s})));
        EXPECT_EQ(said, expected);
        EXPECT_EQ(statusText(), u"Ready"_s);
    }
}

TEST_F(RealNodes, ExpandingTheChildrenOfALeafReadsNothing)
{
    const QString leaf = key({u"US"_s, u"us=CLERK"_s});
    start();
    expandTo(key({u"US"_s}));
    statements.clear();
    window->nodes().ExpandChildren(window->nodes().Item(leaf));
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_FALSE(node(leaf).Expanded());
}

TEST_F(RealNodes, AFailureWithinExpandChildrenCostsThatLevelAlone)
{
    const QString table = key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s});
    start();
    expandTo(table);
    statements.clear();
    statements.failAt(1);
    errors.expect(Press::Ignore);

    window->nodes().ExpandChildren(window->nodes().Item(table));

    EXPECT_EQ(errors.shown().back().trappedIn, u"mdiMain.tvwExplorer_Expand"_s);
    EXPECT_EQ(errors.shown().back().callStack.first(2),
              (QStringList{u"mdiMain.tvw_Explorer_Expand"_s, u"CNodes.ExpandChildren"_s}));
    EXPECT_EQ(node(table + "CO=ORDERS:").Children(), 0);
    EXPECT_EQ(children(table + "TBLPRV=ORDERS:"), QStringList{u"CLERK"_s});
}
