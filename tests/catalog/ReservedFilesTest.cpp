#include "ReservedFiles.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(ReservedFiles, TheFilesThatDescribeTheCatalogAreReserved)
{
    for (const char* name : {"CNTRL", "COLUMN", "DB", "DBPRV", "DRIVER", "FIELD", "FILE", "KEY", "LOCDT", "SQLDT",
                             "TABLE", "TBLPRV", "USER"})
        EXPECT_TRUE(reservedfiles::isReserved(QLatin1String(name))) << name;
    for (const char* name : {"key", "KEYS", "DBPR", "B", "PAYROLL", "co", "Table"})
        EXPECT_FALSE(reservedfiles::isReserved(QLatin1String(name))) << name;
}

TEST(ReservedFiles, TheCriterionLeavesTheSameFilesOut)
{
    EXPECT_EQ(QLatin1String(reservedfiles::userFiles),
              u"FILE_NAME NOT IN ('CNTRL','COLUMN','DB','DBPRV','DRIVER','FIELD','FILE','KEY','LOCDT','SQLDT','TABLE',"
              "'TBLPRV','USER')"_s);
}

TEST(ReservedFiles, ANameThatSpansTwoOfThemIsFoundToo)
{
    EXPECT_TRUE(reservedfiles::isReserved(u"KEY,LOCDT"_s));
    EXPECT_FALSE(reservedfiles::isReserved(u"KEY,TABLE"_s));
}

TEST(ReservedFiles, TwelveNamesHaveControlBytesExactly)
{
    for (const char* name :
         {"CNTRL", "co", "DB", "DBPRV", "DRIVER", "fd", "fi", "LOCDT", "SQLDT", "ta", "TBLPRV", "us"})
        EXPECT_TRUE(reservedfiles::hasControlBytes(QLatin1String(name))) << name;
    for (const char* name : {"COLUMN", "FIELD", "FILE", "KEY", "TABLE", "USER", "CO", "TA", "Db", "db", ""})
        EXPECT_FALSE(reservedfiles::hasControlBytes(QLatin1String(name))) << name;
}
