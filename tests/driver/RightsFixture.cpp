#include "RightsFixture.h"

void Rights::SetUp()
{
    Records::SetUp();
    Make("ACCOUNT", {{"NO", "ZONED-U", 2}}, "0102");
    Make("OWNER", {{"NO", "ZONED-U", 2}}, "03");
    Run("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL, ALLOW_SELECT, ALLOW_UPDATE) VALUES "
        "('AUDITOR', 'BANK', 'DATABASE', 1, 0), ('TELLER', 'BANK', 'TABLE', 1, 1), "
        "('CLERK', 'TW', 'DATABASE', 1, 1), ('READER', 'TW', 'TABLE', 0, 0)");
    Run("INSERT INTO TW_TBLPRV (USER_NAME, DATABASE_NAME, TABLE_NAME, ALLOW_SELECT) VALUES "
        "('TELLER', 'BANK', 'ACCOUNT', 1), ('READER', 'TW', 'FILE', 1)");
}

OdbcClient& Rights::As(const std::string& user)
{
    m_client.emplace();
    Connect(*m_client, "UID=" + user);
    return *m_client;
}

void Rights::ExpectRefused(OdbcClient& on, const std::string& statement, const std::string& action)
{
    const Result result = on.Execute(statement);
    EXPECT_FALSE(result.Succeeded()) << statement;
    EXPECT_NE(result.diagnostic.message.find("does not have the privileges to " + action), std::string::npos)
        << statement << ": " << result.diagnostic.message;
    EXPECT_EQ(result.diagnostic.state, "42000");
}
