// Files that COBOL programs wrote, against what the same programs printed.

#include "CobolFiles.h"
#include "Command.h"
#include "RecordsFixture.h"

namespace
{

class Cobol : public Records
{
protected:
    /// A table over the file of a program.
    void Define(const cobol::File& file)
    {
        for (const std::string& statement : cobol::Definition(file))
            Run(statement);
        DefineTable(file.name, file.name, file.DataFile());
        if (file.organisation == "RELATIVE")
            Run(cobol::SlotNumber("BANK", file.name));
    }

    /// Reads every value of a file through the ODBC functions and through isql.
    void ExpectAsPrinted(const cobol::File& file, const std::string& output, std::size_t records = 10)
    {
        Define(file);
        const cobol::Rows printed = cobol::Printed(output, file);
        ASSERT_EQ(printed.size(), records) << output;
        const std::string query = cobol::SelectAll(file, "BANK_" + file.name);

        const Result result = client.Execute(query);
        ASSERT_TRUE(result.Succeeded()) << result.diagnostic.message;
        cobol::Rows read;
        for (const Row& row : result.rows) {
            auto& cells = read.emplace_back();
            for (const Cell& cell : row)
                cells.push_back(cell.value_or(""));
        }
        EXPECT_EQ(cobol::Shown(read, file), printed);

        const CommandOutput shown = RunIsql(setup.AddCatalog("c.cat"), query + "\n");
        EXPECT_EQ(shown.exitCode, 0) << shown.text;
        EXPECT_EQ(cobol::Shown(cobol::Cells(shown.text), file), printed) << shown.text;
    }

    std::string RunUsages() const { return cobol::RunUsages(setup.File("data")); }
};

} // namespace

TEST_F(Cobol, EveryUsageOfASequentialFileIsReadAsItWasPrinted)
{
    ExpectAsPrinted(cobol::sequential, RunUsages());
}

TEST_F(Cobol, EveryUsageOfARelativeFileIsReadAsItWasPrinted)
{
    ExpectAsPrinted(cobol::relative, RunUsages(), 9);
    EXPECT_EQ(Rows("SELECT MIN(RELATIVE_NUMBER), MAX(RELATIVE_NUMBER) FROM BANK_REL"), "1|19\n");
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BANK_REL WHERE RELATIVE_NUMBER = 11 OR ID_NO = 4"), "0\n") << "it was deleted";
}

TEST_F(Cobol, EveryUsageOfALineIsReadAsItWasPrinted)
{
    ExpectAsPrinted(cobol::lines, RunUsages());
    EXPECT_EQ(Rows("SELECT PLAIN FROM BANK_LIN WHERE WORDS IS NULL"), "3\n") << "its line ends before them";
}

TEST_F(Cobol, RecordsOfVaryingLengthAreReadAsTheyWerePrinted)
{
    ExpectAsPrinted(cobol::varying, RunUsages());
    EXPECT_EQ(Rows("SELECT NO FROM BANK_VAR WHERE WORDS IS NULL"), "0\n") << "its record ends before them";
}

TEST_F(Cobol, UsagesOfOtherCompilersAreReadAsTheyWerePrinted)
{
    ExpectAsPrinted(cobol::others, cobol::RunOthers(setup.File("data")));
}

TEST_F(Cobol, WideDecimalNumbersKeepEveryDigitAndTheirOrder)
{
    RunUsages();
    Define(cobol::sequential);
    EXPECT_EQ(Rows("SELECT PACK_WIDE FROM BANK_SEQ WHERE PACK_WIDE > 0 ORDER BY PACK_WIDE DESC LIMIT 2"),
              "7999999999999999.48\n5999999999999999.61\n");
    EXPECT_EQ(Rows("SELECT MIN(PACK_WIDE), MAX(PACK_WIDE) FROM BANK_SEQ"),
              "-9999999999999999.35|7999999999999999.48\n");
    EXPECT_EQ(Rows("SELECT ID_NO FROM BANK_SEQ WHERE PACK_WIDE BETWEEN -1 AND 1"), "5\n");
}
