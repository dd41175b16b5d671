#include "ConnectString.h"

#include <gtest/gtest.h>

using tarnwick::ConnectString;

TEST(ConnectString, KeysAreFoundInAnyCase)
{
    const ConnectString text("DSN=Ledger;catalog=/a/b.cat");
    EXPECT_EQ(text.Value("Catalog"), "/a/b.cat");
    EXPECT_EQ(text.Value("dsn"), "Ledger");
    EXPECT_EQ(text.Value("UID"), std::nullopt);
}

TEST(ConnectString, TheFirstOfEqualKeysCounts)
{
    EXPECT_EQ(ConnectString("DATABASE=PUBS;DATABASE=OTHER").Value("DATABASE"), "PUBS");
}

TEST(ConnectString, ARepeatedAttributeWithoutASeparatorIsOneValue)
{
    const ConnectString text("DSN=Ledger;DATABASE=PUBSDATABASE=PUBS");
    EXPECT_EQ(text.Value("DSN"), "Ledger");
    EXPECT_EQ(text.Value("DATABASE"), "PUBSDATABASE=PUBS");
}

TEST(ConnectString, BracedValuesKeepSemicolonsAndBraces)
{
    const ConnectString text("Driver={Tarnwick ODBC};Catalog={/a;b/c}}d.cat};StatementLog=/x");
    EXPECT_EQ(text.Value("Driver"), "Tarnwick ODBC");
    EXPECT_EQ(text.Value("Catalog"), "/a;b/c}d.cat");
    EXPECT_EQ(text.Value("StatementLog"), "/x");
}

TEST(ConnectString, OddTextsAreReadAsFarAsTheyGo)
{
    EXPECT_EQ(ConnectString("").Value(""), std::nullopt);
    EXPECT_EQ(ConnectString(";;Catalog = a b ;;").Value("Catalog"), "a b");
    EXPECT_EQ(ConnectString("Catalog={open").Value("Catalog"), "open");
    EXPECT_EQ(ConnectString("nothing;Catalog=x").Value("Catalog"), "x");
    EXPECT_EQ(ConnectString("Catalog=").Value("Catalog"), "");
}
