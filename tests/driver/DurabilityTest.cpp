#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <csignal>
#include <future>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

std::string ConnectString(const OdbcSetup& setup, const std::string& more = "")
{
    return "Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat") + ";" + more;
}

} // namespace

TEST(Durability, ACommitIsSyncedIntoTheWriteAheadLog)
{
    OdbcSetup setup;
    OdbcClient client;
    ASSERT_TRUE(client.Connect(ConnectString(setup))) << client.Failure().message;
    EXPECT_EQ(client.Execute("PRAGMA journal_mode").Single(), "wal");
    EXPECT_EQ(client.Execute("PRAGMA synchronous").Single(), "2");
}

TEST(Durability, WhatWasAcknowledgedSurvivesAKilledProcess)
{
    OdbcSetup setup;
    int acknowledgements[2];
    ASSERT_EQ(::pipe(acknowledgements), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        OdbcClient client;
        if (!client.Connect(ConnectString(setup)))
            ::_exit(1);
        for (unsigned char i = 0;; ++i) {
            const std::string name = "USER" + std::to_string(i);
            if (!client.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('" + name + "')").Succeeded())
                ::_exit(2);
            if (::write(acknowledgements[1], &i, 1) != 1)
                ::_exit(3);
        }
    }
    unsigned char last = 0;
    while (last < 50)
        ASSERT_EQ(::read(acknowledgements[0], &last, 1), 1);
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    OdbcClient client;
    ASSERT_TRUE(client.Connect(ConnectString(setup))) << client.Failure().message;
    for (int i = 0; i <= last; ++i)
        EXPECT_EQ(
            client.Execute("SELECT COUNT(*) FROM TW_USER WHERE USER_NAME = 'USER" + std::to_string(i) + "'").Single(),
            "1");
    EXPECT_EQ(client.Execute("PRAGMA integrity_check").Single(), "ok");
}

TEST(Durability, ReadersAndAWriterDoNotWaitForEachOther)
{
    OdbcSetup setup;
    OdbcClient writer;
    OdbcClient reader;
    ASSERT_TRUE(writer.Connect(ConnectString(setup, "Timeout=0")));
    ASSERT_TRUE(reader.Connect(ConnectString(setup, "Timeout=0")));
    ASSERT_TRUE(writer.Execute("BEGIN IMMEDIATE").Succeeded());
    ASSERT_TRUE(writer.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('X')").Succeeded());
    EXPECT_EQ(reader.Execute("SELECT COUNT(*) FROM TW_USER").Single(), "1");
    ASSERT_TRUE(writer.Execute("COMMIT").Succeeded());
    EXPECT_EQ(reader.Execute("SELECT COUNT(*) FROM TW_USER").Single(), "2");
}

TEST(Durability, ASecondWriterIsToldWhenItsPatienceEnds)
{
    OdbcSetup setup;
    OdbcClient first;
    OdbcClient second;
    ASSERT_TRUE(first.Connect(ConnectString(setup)));
    ASSERT_TRUE(second.Connect(ConnectString(setup, "Timeout=50")));
    ASSERT_TRUE(first.Execute("BEGIN IMMEDIATE").Succeeded());
    const Result refused = second.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('X')");
    EXPECT_EQ(refused.answer, SQL_ERROR);
    EXPECT_EQ(refused.diagnostic.state, "HYT00");
    EXPECT_NE(refused.diagnostic.message.find("locked"), std::string::npos) << refused.diagnostic.message;
    ASSERT_TRUE(first.Execute("COMMIT").Succeeded());
    EXPECT_TRUE(second.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('X')").Succeeded());
}

TEST(Durability, ASecondWriterWaitsForTheFirst)
{
    OdbcSetup setup;
    OdbcClient first;
    ASSERT_TRUE(first.Connect(ConnectString(setup)));
    ASSERT_TRUE(first.Execute("BEGIN IMMEDIATE").Succeeded());
    std::promise<void> started;
    std::thread second([&] {
        OdbcClient client;
        ASSERT_TRUE(client.Connect(ConnectString(setup)));
        started.set_value();
        EXPECT_TRUE(client.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('X')").Succeeded());
    });
    started.get_future().wait();
    EXPECT_TRUE(first.Execute("COMMIT").Succeeded());
    second.join();
    EXPECT_EQ(first.Execute("SELECT COUNT(*) FROM TW_USER").Single(), "2");
}
