#pragma once

#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A field of a record under test; it stands behind the one before it.
struct FieldRow {
    std::string name;
    std::string type; ///< of TW_LOCDT
    int length = 0;
    int scale = 0;
    std::string format = "";
};

/// A catalog with the database BANK over a folder of data files, and a client that is connected to it.
class Records : public ::testing::Test
{
protected:
    void SetUp() override;

    /// Defines a file. A size of 0 is that of its fields.
    void DefineFile(const std::string& name, const std::vector<FieldRow>& fields,
                    const std::string& organisation = "SEQUENTIAL", const std::string& recordType = "FIXED",
                    const std::string& openString = "", int recordSize = 0);

    /// Defines a table of BANK with a column for each field of its file, as their types propose.
    void DefineTable(const std::string& name, const std::string& file, const std::string& specification,
                     const std::string& criteria = "");

    /// Both, and the file's content, under the name in small letters.
    void Make(const std::string& name, const std::vector<FieldRow>& fields, const std::string& content,
              const std::string& organisation = "SEQUENTIAL", const std::string& recordType = "FIXED",
              const std::string& openString = "");

    void WriteData(const std::string& name, const std::string& content) const;
    std::string DataFile(const std::string& name) const { return setup.File("data/" + name); }

    void Run(const std::string& statement) { Run(client, statement); }
    static void Run(OdbcClient& on, const std::string& statement);

    /// The rows of a query as text: cells with `|` between them, `~` for a null, a line for each row.
    std::string Rows(const std::string& query) { return Rows(client, query); }
    static std::string Rows(OdbcClient& on, const std::string& query);

    /// The message with which a statement fails.
    std::string Failure(const std::string& statement) { return Failure(client, statement); }
    static std::string Failure(OdbcClient& on, const std::string& statement);

    /// Connects a client to the catalog with more attributes.
    void Connect(OdbcClient& another, const std::string& attributes = "");

    OdbcSetup setup;
    OdbcClient client;
};
