#include "Passwords.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(PasswordColumns, AreThoseOfUsersAndOfTheirRightsOnDatabases)
{
    for (const char* column : {"USER_PASSWORD", "DATABASE_PASSWORD", "user_password", "Database_Password"})
        EXPECT_TRUE(passwords::isPassword(QString(QLatin1String(column)))) << column;
    for (const char* column : {"", "PASSWORD", "USER_NAME", "DATABASE_USERNAME", "USER_PASSWORDS", "REMARKS"})
        EXPECT_FALSE(passwords::isPassword(QString(QLatin1String(column)))) << column;
}

TEST(PasswordColumns, ShowTheSameForEveryPasswordAndNothingForNone)
{
    EXPECT_EQ(passwords::mask(), u"**********"_s);
    EXPECT_EQ(passwords::shown(u"x"_s), u"**********"_s);
    EXPECT_EQ(passwords::shown(QString(40, 'x'_L1)), u"**********"_s);
    EXPECT_EQ(passwords::shown({}), QString());
}
