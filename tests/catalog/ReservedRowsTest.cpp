#include "ReservedRows.h"

#include <gtest/gtest.h>

TEST(ReservedRows, TheAdministratorGoesByItsExactName)
{
    EXPECT_TRUE(reservedrows::isAdministrator("ADMIN"));
    for (const char* name : {"", "Admin", "admin", "ADMIN ", "ADMIN2", "'ADMIN'"})
        EXPECT_FALSE(reservedrows::isAdministrator(name)) << name;
}
