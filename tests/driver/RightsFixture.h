#pragma once

#include "RecordsFixture.h"

/// A catalog with the tables BANK_ACCOUNT and BANK_OWNER, and users with rights of every kind.
class Rights : public Records
{
protected:
    void SetUp() override;

    /// A client that is connected as a user.
    OdbcClient& As(const std::string& user);

    static void ExpectRefused(OdbcClient& on, const std::string& statement, const std::string& action);

private:
    std::optional<OdbcClient> m_client;
};
