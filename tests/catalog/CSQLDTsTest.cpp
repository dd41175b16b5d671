#include "CSQLDTs.h"

#include "RuntimeError.h"

#include <gtest/gtest.h>

namespace
{

CSQLDT typeNamed(const QString& name, std::int32_t length = 0)
{
    CSQLDT type;
    type.SQL_TYPE_NAME = name;
    type.Length = length;
    return type;
}

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

QStringList names(const CSQLDTs& types)
{
    QStringList all;
    for (const CSQLDT& type : types)
        all.append(type.SQL_TYPE_NAME);
    return all;
}

TEST(CSQLDTs, AreEmptyAtFirst)
{
    const CSQLDTs types;
    EXPECT_EQ(types.Count(), 0);
    EXPECT_EQ(names(types), QStringList());
    EXPECT_EQ(types.find("CHAR"), nullptr);
}

TEST(CSQLDTs, StandInTheOrderInWhichTheyWereAdded)
{
    CSQLDTs types;
    for (const char* name : {"VARCHAR", "CHAR", "INTEGER", "BINARY"})
        types.add(typeNamed(name));
    EXPECT_EQ(names(types), QStringList({"VARCHAR", "CHAR", "INTEGER", "BINARY"}));
    types.Remove("CHAR");
    EXPECT_EQ(names(types), QStringList({"VARCHAR", "INTEGER", "BINARY"}));
    EXPECT_EQ(types.Item("BINARY").SQL_TYPE_NAME, "BINARY");
    types.add(typeNamed("CHAR"));
    EXPECT_EQ(names(types), QStringList({"VARCHAR", "INTEGER", "BINARY", "CHAR"}));
}

TEST(CSQLDTs, ASecondTypeOfTheSameNameRaisesAndTheFirstOneStays)
{
    CSQLDTs types;
    types.add(typeNamed("CHAR", 4));
    EXPECT_EQ(raisedBy([&] { types.add(typeNamed("CHAR", 8)); }), 457);
    EXPECT_EQ(types.Count(), 1);
    EXPECT_EQ(types.Item("CHAR").Length, 4);
    // Names compare exactly.
    types.add(typeNamed("char", 8));
    EXPECT_EQ(types.Item("char").Length, 8);
}

TEST(CSQLDTs, AMissingNameRaises)
{
    CSQLDTs types;
    types.add(typeNamed("CHAR"));
    EXPECT_EQ(raisedBy([&] { static_cast<void>(types.Item("VARCHAR")); }), 5);
    EXPECT_EQ(raisedBy([&] { static_cast<void>(types.Item("Char")); }), 5);
    EXPECT_EQ(raisedBy([&] { types.Remove("VARCHAR"); }), 5);
    EXPECT_EQ(types.Count(), 1);
    types.Remove("CHAR");
    EXPECT_EQ(raisedBy([&] { types.Remove("CHAR"); }), 5);
    EXPECT_EQ(types.Count(), 0);
}

} // namespace
