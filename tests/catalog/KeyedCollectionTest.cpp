#include "KeyedCollection.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace
{

template <class Call>
int raisedBy(Call&& call)
{
    try {
        call();
    } catch (const RuntimeError& error) {
        return static_cast<int>(error.number());
    }
    return 0;
}

KeyedCollection<QString> threeRows()
{
    KeyedCollection<QString> rows;
    rows.add("b", "second letter");
    rows.add("a", "first letter");
    rows.add("c", "third letter");
    return rows;
}

TEST(KeyedCollection, KeepsTheOrderInWhichRowsWereAdded)
{
    const auto rows = threeRows();
    EXPECT_EQ(QStringList(rows.begin(), rows.end()), QStringList({"second letter", "first letter", "third letter"}));
    EXPECT_EQ(rows.Count(), 3);
}

TEST(KeyedCollection, RaisesFiveForAMissingKey)
{
    auto rows = threeRows();
    EXPECT_EQ(raisedBy([&] { static_cast<void>(rows.Item("d")); }), 5);
    EXPECT_EQ(raisedBy([&] { rows.Remove("d"); }), 5);
    EXPECT_EQ(rows.find("d"), nullptr);
}

TEST(KeyedCollection, ComparesKeysExactly)
{
    auto rows = threeRows();
    EXPECT_EQ(raisedBy([&] { static_cast<void>(rows.Item("A")); }), 5);
    rows.add("A", "capital");
    EXPECT_EQ(rows.Item("A"), "capital");
    EXPECT_EQ(rows.Item("a"), "first letter");
}

TEST(KeyedCollection, RaisesFourHundredFiftySevenForASecondRowOfAKey)
{
    auto rows = threeRows();
    EXPECT_EQ(raisedBy([&] { rows.add("a", "again"); }), 457);
    EXPECT_EQ(rows.Count(), 3);
    EXPECT_EQ(rows.Item("a"), "first letter");
}

TEST(KeyedCollection, FindsTheRowsBehindARemovedOne)
{
    auto rows = threeRows();
    rows.Remove("b");
    EXPECT_EQ(rows.Item("a"), "first letter");
    EXPECT_EQ(rows.Item("c"), "third letter");
    EXPECT_EQ(QStringList(rows.begin(), rows.end()), QStringList({"first letter", "third letter"}));
    rows.add("b", "back again");
    EXPECT_EQ(rows.Item("b"), "back again");
}

} // namespace
