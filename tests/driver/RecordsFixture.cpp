#include "RecordsFixture.h"

#include <fstream>

void Records::SetUp()
{
    std::filesystem::create_directory(setup.File("data"));
    Connect(client);
    Run("INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME) VALUES ('BANK', '" + setup.File("data") +
        "', 'FLAT')");
}

void Records::Connect(OdbcClient& another, const std::string& attributes)
{
    ASSERT_TRUE(another.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("c.cat") + ";" + attributes))
        << another.Failure().message;
}

void Records::DefineFile(const std::string& name, const std::vector<FieldRow>& fields, const std::string& organisation,
                         const std::string& recordType, const std::string& openString, int recordSize)
{
    int offset = 0;
    int number = 0;
    for (const FieldRow& field : fields) {
        Run("INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
            "SCALE, FORMAT) VALUES ('" +
            name + "', " + std::to_string(++number) + ", '" + field.name + "', '" + field.type + "', " +
            std::to_string(offset) + ", " + std::to_string(field.length) + ", " + std::to_string(field.length) + ", " +
            std::to_string(field.scale) + ", '" + field.format + "')");
        offset += field.length;
    }
    Run("INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE) VALUES ('" + name +
        "', '" + openString + "', " + std::to_string(recordSize > 0 ? recordSize : offset) + ", '" + organisation +
        "', '" + recordType + "')");
}

void Records::DefineTable(const std::string& name, const std::string& file, const std::string& specification,
                          const std::string& criteria)
{
    std::string quoted;
    for (const char c : criteria)
        quoted += c == '\'' ? std::string("''") : std::string(1, c);
    Run("INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, CRITERIA) VALUES "
        "('BANK', '" +
        name + "', 'TABLE', '" + file + "', '" + specification + "', '" + quoted + "')");
    Run("INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, "
        "LENGTH, PRECISION, SCALE, NULLABLE, VISIBLE) SELECT 'BANK', '" +
        name +
        "', f.FIELD_NUMBER, replace(f.FIELD_NAME, '-', '_'), f.FIELD_NAME, l.SQL_TYPE_NAME, f.LENGTH, CASE "
        "f.LOCAL_TYPE_NAME WHEN 'HEXADECIMAL' THEN 2 * f.LENGTH ELSE f.LENGTH END, f.SCALE, 1, 1 FROM TW_FIELD f "
        "JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = f.LOCAL_TYPE_NAME WHERE f.FILE_NAME = '" +
        file + "'");
}

void Records::Make(const std::string& name, const std::vector<FieldRow>& fields, const std::string& content,
                   const std::string& organisation, const std::string& recordType, const std::string& openString)
{
    DefineFile(name, fields, organisation, recordType, openString);
    DefineTable(name, name, name + ".dat");
    WriteData(name + ".dat", content);
}

void Records::WriteData(const std::string& name, const std::string& content) const
{
    std::ofstream(DataFile(name), std::ios::binary) << content;
}

void Records::Run(OdbcClient& on, const std::string& statement)
{
    const Result result = on.Execute(statement);
    ASSERT_TRUE(result.Succeeded()) << statement << ": " << result.diagnostic.message;
}

std::string Records::Rows(OdbcClient& on, const std::string& query)
{
    const Result result = on.Execute(query);
    EXPECT_TRUE(result.Succeeded()) << query << ": " << result.diagnostic.message;
    std::string text;
    for (const Row& row : result.rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            text += (i > 0 ? "|" : "") + row[i].value_or("~");
        text += "\n";
    }
    return text;
}

std::string Records::Failure(OdbcClient& on, const std::string& statement)
{
    const Result result = on.Execute(statement);
    EXPECT_FALSE(result.Succeeded()) << statement;
    return result.diagnostic.message;
}
