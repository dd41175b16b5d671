#include "RuntimeError.h"
#include "TreeFixture.h"

#include <QHash>

#include <functional>
#include <memory>
#include <optional>

namespace
{

class TreeNodesTest : public TreeFixture
{
};

ErrorNumber numberOf(const std::function<void()>& step)
{
    try {
        step();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    ADD_FAILURE() << "nothing was raised";
    return {};
}

TEST_F(TreeNodesTest, NodesStandInTheOrderInWhichTheyWereAdded)
{
    addSmallTree();
    TreeNode& a = nodes().Item("a");
    EXPECT_EQ(nodes().Root(), &a);
    EXPECT_EQ(a.Next()->Key(), "b");
    EXPECT_EQ(a.Next()->Next(), nullptr);
    EXPECT_EQ(a.Parent(), nullptr);
    EXPECT_EQ(a.Children(), 3);
    EXPECT_EQ(a.Child()->Key(), "a1");
    EXPECT_EQ(a.Child()->Next()->Key(), "a2");
    EXPECT_EQ(a.Child()->Next()->Next()->Key(), "a3");
    EXPECT_EQ(a.Child()->Next()->Next()->Next(), nullptr);
    EXPECT_EQ(a.Child()->Parent(), &a);
    EXPECT_EQ(nodes().Count(), 5);
}

TEST_F(TreeNodesTest, AKeyIsFoundAndAnUnknownOneRaises5)
{
    addSmallTree();
    EXPECT_EQ(nodes().Item("a2").Key(), "a2");
    EXPECT_EQ(nodes().find("a2"), &nodes().Item("a2"));
    EXPECT_EQ(nodes().find("A2"), nullptr);
    EXPECT_EQ(nodes().find(""), nullptr);
    EXPECT_EQ(numberOf([&] { nodes().Item("A2"); }), ErrorNumber::FailedCall);
}

TEST_F(TreeNodesTest, ANodeOutsideTheIndexIsFoundByAWalkAloneUntilItIsRekeyed)
{
    addSmallTree();
    TreeNode& standIn = nodes().Add(nodes().find("a2"), "K1", "", {}, {}, TreeNodes::FoundBy::walk);
    EXPECT_EQ(nodes().find("K1"), nullptr);
    EXPECT_EQ(nodes().findByWalk("K1"), &standIn);
    EXPECT_EQ(nodes().findByWalk("a2"), nullptr);
    EXPECT_EQ(nodes().findByWalk("K2"), nullptr);

    standIn.setKey("a21");
    EXPECT_EQ(nodes().find("a21"), &standIn);
    EXPECT_EQ(nodes().findByWalk("a21"), nullptr);

    nodes().Add(nodes().find("b"), "K2", "", {}, {}, TreeNodes::FoundBy::walk);
    nodes().Remove(nodes().Item("b"));
    EXPECT_EQ(nodes().findByWalk("K2"), nullptr);
    EXPECT_EQ(nodes().Count(), 5);
}

TEST_F(TreeNodesTest, ASecondNodeOfAKeyRaises457AndChangesNothing)
{
    addSmallTree();
    EXPECT_EQ(numberOf([&] { add(nodes().find("b"), "a2"); }), ErrorNumber::KeyAlreadyThere);
    EXPECT_EQ(nodes().Count(), 5);
    EXPECT_EQ(nodes().Item("b").Children(), 0);
}

TEST_F(TreeNodesTest, RekeyingKeepsTheNodeItsPlaceAndItsChildren)
{
    addSmallTree();
    TreeNode& a = nodes().Item("a");
    a.setExpanded(true);
    a.setKey("z");
    EXPECT_EQ(&nodes().Item("z"), &a);
    EXPECT_EQ(nodes().find("a"), nullptr);
    EXPECT_EQ(nodes().Root(), &a);
    EXPECT_TRUE(a.Expanded());
    EXPECT_EQ(nodes().Item("a1").Parent(), &a);
    EXPECT_EQ(numberOf([&] { a.setKey("b"); }), ErrorNumber::KeyAlreadyThere);
    EXPECT_EQ(a.Key(), "z");
    a.setKey("z");
    EXPECT_EQ(&nodes().Item("z"), &a);
    add(nullptr, "a");
}

TEST_F(TreeNodesTest, RemovingTakesTheSubtreeAndFreesItsKeys)
{
    addSmallTree();
    add(&nodes().Item("a2"), "deep");
    nodes().Remove(nodes().Item("a"));
    EXPECT_EQ(nodes().Count(), 1);
    EXPECT_EQ(nodes().find("a"), nullptr);
    EXPECT_EQ(nodes().find("deep"), nullptr);
    EXPECT_EQ(nodes().Root()->Key(), "b");
    add(nullptr, "a");
    add(nullptr, "deep");
}

TEST_F(TreeNodesTest, AnyChildCanBeTakenOut)
{
    for (const char* gone : {"a1", "a2", "a3"}) {
        nodes().Clear();
        addSmallTree();
        QStringList left{"a1", "a2", "a3"};
        left.removeOne(gone);
        nodes().Remove(nodes().Item(gone));
        TreeNode& a = nodes().Item("a");
        EXPECT_EQ(a.Children(), 2);
        EXPECT_EQ(a.Child()->Key(), left[0]);
        EXPECT_EQ(a.Child()->Next()->Key(), left[1]);
        EXPECT_EQ(a.Child()->Next()->Next(), nullptr);
        add(&a, "a4");
        EXPECT_EQ(a.Child()->Next()->Next()->Key(), "a4");
    }
}

TEST_F(TreeNodesTest, TheViewFollowsEveryChange)
{
    addSmallTree();
    show();
    nodes().Item("a").setExpanded(true);
    EXPECT_EQ(rows(), QStringList({"a", "a1", "a2", "a3", "b"}));
    nodes().Remove(nodes().Item("a2"));
    EXPECT_EQ(rows(), QStringList({"a", "a1", "a3", "b"}));
    add(&nodes().Item("a"), "a4");
    add(nullptr, "c");
    EXPECT_EQ(rows(), QStringList({"a", "a1", "a3", "a4", "b", "c"}));
    nodes().RemoveChildren(nodes().Item("a"));
    EXPECT_EQ(rows(), QStringList({"a", "b", "c"}));
    nodes().Clear();
    EXPECT_EQ(rows(), QStringList());
    EXPECT_EQ(nodes().Count(), 0);
}

TEST_F(TreeNodesTest, ChangesWhileRedrawIsOffShowAtItsEndAllAtOnce)
{
    addSmallTree();
    show();
    nodes().Item("a").setExpanded(true);
    {
        TreeView::RedrawOff outer(tree);
        {
            TreeView::RedrawOff inner(tree);
            nodes().Remove(nodes().Item("a1"));
            TreeNode& fresh = add(&nodes().Item("a"), "a4");
            add(&fresh, "a4x");
            fresh.setExpanded(true);
            add(nullptr, "c");
        }
        EXPECT_FALSE(tree.updatesEnabled());
        EXPECT_EQ(nodes().Item("a").Children(), 3);
        EXPECT_EQ(nodes().Item("c").Parent(), nullptr);
    }
    EXPECT_TRUE(tree.updatesEnabled());
    EXPECT_EQ(rows(), QStringList({"a", "a2", "a3", "a4", "a4x", "b", "c"}));
}

TEST_F(TreeNodesTest, RedrawCanBeSwitchedOnBeforeTheScopeEnds)
{
    show();
    TreeView::RedrawOff off(tree);
    add(nullptr, "a");
    off.end();
    EXPECT_EQ(rows(), QStringList({"a"}));
    EXPECT_TRUE(tree.updatesEnabled());
    TreeView::RedrawOff again(tree);
    off.end();
    EXPECT_FALSE(tree.updatesEnabled());
}

TEST_F(TreeNodesTest, OpenBranchesAreStillOpenAfterTheirLevelChangedWithRedrawOff)
{
    addSmallTree();
    add(&nodes().Item("a2"), "a2x");
    show();
    nodes().Item("a").setExpanded(true);
    nodes().Item("a2").setExpanded(true);
    {
        TreeView::RedrawOff off(tree);
        nodes().Remove(nodes().Item("a1"));
        nodes().Remove(nodes().Item("b"));
        add(&nodes().Item("a2"), "a2y");
    }
    EXPECT_EQ(rows(), QStringList({"a", "a2", "a2x", "a2y", "a3"}));
}

TEST_F(TreeNodesTest, ALevelThatChangesUnderOneThatIsRemovedGoesWithIt)
{
    addSmallTree();
    add(&nodes().Item("a2"), "a2x");
    show();
    nodes().Item("a").setExpanded(true);
    nodes().Item("a2").setExpanded(true);
    {
        TreeView::RedrawOff off(tree);
        add(&nodes().Item("a2"), "a2y");
        add(&nodes().Item("a"), "a4");
        nodes().Remove(nodes().Item("a2"));
        nodes().Remove(nodes().Item("a"));
    }
    EXPECT_EQ(rows(), QStringList({"b"}));
}

TEST_F(TreeNodesTest, OneInsertionShowsALevelOfAnySize)
{
    addSmallTree();
    show();
    int insertions = 0;
    int removals = 0;
    QObject::connect(tree.model(), &QAbstractItemModel::rowsInserted, &tree, [&] { ++insertions; });
    QObject::connect(tree.model(), &QAbstractItemModel::rowsRemoved, &tree, [&] { ++removals; });
    {
        TreeView::RedrawOff off(tree);
        for (int i = 0; i < 1000; ++i)
            add(&nodes().Item("a"), QString::number(i));
        nodes().Remove(nodes().Item("17"));
    }
    EXPECT_EQ(insertions, 1);
    EXPECT_EQ(removals, 1);
    EXPECT_EQ(tree.model()->rowCount(tree.model()->index(0, 0)), 1002);
}

TEST_F(TreeNodesTest, AReferenceFollowsANodeThroughARekeyAndTurnsNullWhenItGoes)
{
    addSmallTree();
    TreeNodeRef reference(nodes().find("a2"));
    const TreeNodeRef copy = reference;
    const TreeNodeRef parent(nodes().find("a"));
    EXPECT_FALSE(TreeNodeRef());
    EXPECT_FALSE(TreeNodeRef(nullptr));
    reference->setKey("renamed");
    EXPECT_EQ(reference.get(), nodes().find("renamed"));
    nodes().Remove(nodes().Item("a3"));
    EXPECT_TRUE(copy);
    nodes().Remove(nodes().Item("a"));
    EXPECT_FALSE(reference);
    EXPECT_FALSE(copy);
    EXPECT_FALSE(parent);
    // A new node is another one, even where it has the old key or stands in the old memory.
    nodes().Clear();
    addSmallTree();
    EXPECT_FALSE(copy);
}

TEST_F(TreeNodesTest, AReferenceOutlivesTheTree)
{
    TreeNodeRef reference;
    {
        TreeView other;
        reference = TreeNodeRef(&other.Nodes().Add(nullptr, "x", "x"));
        EXPECT_TRUE(reference);
    }
    EXPECT_FALSE(reference);
}

TEST_F(TreeNodesTest, APayloadGoesWithItsNodeUnlessItIsTakenBefore)
{
    struct Counted : TreePayload {
        explicit Counted(int& living) : living(living) { ++living; }
        ~Counted() override { --living; }
        int& living;
    };
    int living = 0;
    addSmallTree();
    EXPECT_EQ(nodes().Item("a").Payload(), nullptr);
    for (const char* key : {"a", "a1", "a2"})
        nodes().Item(key).setPayload(std::make_unique<Counted>(living));
    EXPECT_NE(nodes().Item("a1").Payload(), nullptr);
    const std::unique_ptr<TreePayload> taken = nodes().Item("a1").takePayload();
    EXPECT_EQ(nodes().Item("a1").Payload(), nullptr);
    nodes().Remove(nodes().Item("a2"));
    EXPECT_EQ(living, 2);
    nodes().Remove(nodes().Item("a"));
    EXPECT_EQ(living, 1);
}

TEST_F(TreeNodesTest, RemovingTheSelectionsBranchMovesItToTheParent)
{
    addSmallTree();
    TreeNode& deep = add(&nodes().Item("a2"), "deep");
    show();
    for (const bool off : {false, true}) {
        SCOPED_TRACE(off);
        tree.setSelectedItem(nodes().find(off ? "deep2" : "deep"));
        {
            std::optional<TreeView::RedrawOff> redrawOff;
            if (off)
                redrawOff.emplace(tree);
            nodes().RemoveChildren(nodes().Item("a2"));
            EXPECT_EQ(tree.SelectedItem()->Key(), "a2");
            nodes().Remove(nodes().Item("a2"));
            EXPECT_EQ(tree.SelectedItem()->Key(), "a");
        }
        EXPECT_EQ(tree.HitTest(tree.visualRect(tree.currentIndex()).center()), tree.SelectedItem());
        EXPECT_EQ(tree.selectionModel()->selectedRows(), QModelIndexList{tree.currentIndex()});
        add(&add(&nodes().Item("a"), "a2"), "deep2");
    }
    (void)deep;
}

TEST_F(TreeNodesTest, RemovingASelectedRootSelectsTheNextOneThenTheLast)
{
    for (const char* key : {"a", "b", "c"})
        add(nullptr, key);
    tree.setSelectedItem(nodes().find("b"));
    nodes().Remove(nodes().Item("b"));
    EXPECT_EQ(tree.SelectedItem()->Key(), "c");
    nodes().Remove(nodes().Item("c"));
    EXPECT_EQ(tree.SelectedItem()->Key(), "a");
    nodes().Remove(nodes().Item("a"));
    EXPECT_EQ(tree.SelectedItem(), nullptr);
    EXPECT_FALSE(tree.currentIndex().isValid());
}

TEST_F(TreeNodesTest, RemovingWhatIsNotSelectedLeavesTheSelection)
{
    addSmallTree();
    tree.setSelectedItem(nodes().find("a2"));
    nodes().Remove(nodes().Item("a1"));
    nodes().Remove(nodes().Item("b"));
    EXPECT_EQ(tree.SelectedItem()->Key(), "a2");
    nodes().Clear();
    EXPECT_EQ(tree.SelectedItem(), nullptr);
}

TEST_F(TreeNodesTest, AChainOfAThousandLevelsIsBuiltAndFreed)
{
    TreeNode* above = nullptr;
    for (int i = 0; i < 1000; ++i)
        above = &add(above, QString::number(i));
    EXPECT_EQ(nodes().Count(), 1000);
    nodes().Remove(nodes().Item("0"));
    EXPECT_EQ(nodes().Count(), 0);
}

/// Keys come and go in any order and number, and every one that is there is found.
TEST_F(TreeNodesTest, EveryKeyIsFoundAfterManyWereAddedRemovedAndChanged)
{
    TreeView::RedrawOff off(tree);
    QHash<QString, TreeNode*> expected;
    QStringList keys;
    quint32 seed = 99;
    const auto random = [&seed](qsizetype below) {
        seed = seed * 1664525U + 1013904223U;
        return static_cast<qsizetype>((seed >> 8) % static_cast<quint32>(below));
    };
    for (int step = 0; step < 30'000; ++step) {
        // The number of keys swells and shrinks.
        const bool isGrowing = (step / 5'000) % 2 == 0;
        if (keys.isEmpty() || random(10) < (isGrowing ? 8 : 2)) {
            const QString key = QString::number(step);
            expected.insert(key, &add(nullptr, key));
            keys << key;
            continue;
        }
        const qsizetype place = random(keys.size());
        TreeNode* node = expected.take(keys[place]);
        if (random(4) == 0) {
            keys[place] = "r" + QString::number(step);
            node->setKey(keys[place]);
            expected.insert(keys[place], node);
        } else {
            nodes().Remove(*node);
            keys.swapItemsAt(place, keys.size() - 1);
            EXPECT_EQ(nodes().find(keys.takeLast()), nullptr);
        }
        if (step % 100 == 0) {
            ASSERT_EQ(nodes().Count(), expected.size());
            for (auto entry = expected.cbegin(); entry != expected.cend(); ++entry)
                ASSERT_EQ(nodes().find(entry.key()), entry.value());
        }
    }
}

/// Any sequence of changes, with redraw on or off, leaves the view with the rows that the nodes say.
TEST_F(TreeNodesTest, AfterAnyChangesTheRowsAreTheOpenNodesInOrder)
{
    show();
    tree.disconnect();
    quint32 seed = 12345;
    const auto random = [&seed](int below) {
        seed = seed * 1664525U + 1013904223U;
        return static_cast<int>((seed >> 8) % static_cast<quint32>(below));
    };
    QStringList keys;
    std::unique_ptr<TreeView::RedrawOff> off;
    for (int step = 0; step < 4000; ++step) {
        TreeNode* node = keys.isEmpty() ? nullptr : nodes().find(keys[random(static_cast<int>(keys.size()))]);
        switch (random(12)) {
        case 0:
        case 1:
        case 2:
        case 3:
            keys << QString::number(step);
            add(random(5) == 0 ? nullptr : node, keys.back());
            break;
        case 4:
            if (node)
                nodes().Remove(*node);
            break;
        case 5:
            if (node && random(2) == 0)
                nodes().RemoveChildren(*node);
            break;
        case 6:
        case 7:
            if (node)
                node->setExpanded(true);
            break;
        case 8:
            if (node)
                node->setExpanded(false);
            break;
        case 9:
            tree.setSelectedItem(node);
            break;
        case 10:
            off = std::make_unique<TreeView::RedrawOff>(tree);
            break;
        default:
            off.reset();
        }
        if (step % 997 == 996)
            nodes().Clear();
        if (!off && step % 10 == 0) {
            QStringList expected;
            const std::function<void(TreeNode*)> walk = [&](TreeNode* first) {
                for (; first; first = first->Next()) {
                    expected << first->Key();
                    if (first->Expanded())
                        walk(first->Child());
                }
            };
            walk(nodes().Root());
            ASSERT_EQ(rows(), expected) << "step " << step;
            ASSERT_EQ(tree.currentIndex().isValid(), tree.SelectedItem() != nullptr);
            if (tree.SelectedItem()) {
                ASSERT_EQ(tree.currentIndex().data().toString(), tree.SelectedItem()->Key());
                ASSERT_TRUE(tree.selectionModel()->isSelected(tree.currentIndex()));
            }
        }
        keys.erase(std::remove_if(keys.begin(), keys.end(), [&](const QString& key) { return !nodes().find(key); }),
                   keys.end());
    }
}

} // namespace
