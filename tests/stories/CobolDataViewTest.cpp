#include "CobolFiles.h"
#include "StoryFixture.h"

using namespace Qt::StringLiterals;

namespace
{

/// Definitions of the files that COBOL programs wrote, and what they printed.
class CobolDataView : public Story
{
protected:
    void SetUp() override
    {
        Story::SetUp();
        const std::string folder = world.folder().toStdString();
        printed = cobol::RunUsages(folder) + cobol::RunOthers(folder);
        change(u"INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME) VALUES ('BANK', '.', 'FLAT')"_s);
        for (const cobol::File* file :
             {&cobol::sequential, &cobol::relative, &cobol::lines, &cobol::varying, &cobol::others})
            for (const std::string& statement : cobol::Definition(*file))
                change(QString::fromStdString(statement));
        begin({u"FI"_s});
        expandTo(key({u"FI"_s}));
    }

    /// The records of a file in the data view.
    cobol::Rows view(const cobol::File& file)
    {
        QStringList columns;
        for (const cobol::Field& column : file.Columns())
            columns.append(QString::fromStdString(column.name));
        cobol::Rows rows;
        for (const QStringList& cells : viewData(u"BANK"_s, QString::fromStdString(file.name), columns)) {
            auto& row = rows.emplace_back();
            for (const QString& cell : cells)
                row.push_back(cell.toStdString());
        }
        EXPECT_TRUE(errors.shown().empty());
        return cobol::Shown(rows, file);
    }

    void makeTable(const cobol::File& file)
    {
        Story::makeTable(QString::fromStdString(file.name), u"BANK"_s, QString::fromStdString(file.DataFile()));
        if (file.organisation == "RELATIVE")
            change(QString::fromStdString(cobol::SlotNumber("BANK", file.name)));
    }

    /// Compares every cell that the data view shows with what was printed.
    void expectAsPrinted(const cobol::File& file, std::size_t records = 10)
    {
        const cobol::Rows expected = cobol::Printed(printed, file);
        ASSERT_EQ(expected.size(), records) << printed;
        EXPECT_EQ(view(file), expected);
    }

    /// The wizard makes floating point columns of fields with a scale, which hold 15 digits.
    void keepEveryDigit(const cobol::File& file, const QString& column)
    {
        const QStringList columns{u"DB"_s, u"db=BANK"_s, u"TA"_s, "ta="_L1 + QString::fromStdString(file.name),
                                  u"CO"_s};
        expandTo(key(columns));
        MainWindowTest::choose(key(columns + QStringList{"co="_L1 + column}), u"mnu_ColumnEdit"_s);
        pick(u"SQL_TYPE_NAME"_s, u"DECIMAL"_s);
        press(u"OK"_s);
        EXPECT_TRUE(errors.shown().empty());
    }

    std::string printed;
};

} // namespace

TEST_F(CobolDataView, ShowsEveryUsageOfASequentialFileAsItWasPrinted)
{
    makeTable(cobol::sequential);
    keepEveryDigit(cobol::sequential, u"PACK_WIDE"_s);
    expectAsPrinted(cobol::sequential);
}

TEST_F(CobolDataView, ShowsEveryUsageOfARelativeFileAsItWasPrinted)
{
    makeTable(cobol::relative);
    keepEveryDigit(cobol::relative, u"PACK_WIDE"_s);
    expectAsPrinted(cobol::relative, 9);
}

TEST_F(CobolDataView, ShowsEveryUsageOfALineAsItWasPrinted)
{
    makeTable(cobol::lines);
    expectAsPrinted(cobol::lines);
}

TEST_F(CobolDataView, ShowsRecordsOfVaryingLengthAsTheyWerePrinted)
{
    makeTable(cobol::varying);
    expectAsPrinted(cobol::varying);
}

TEST_F(CobolDataView, ShowsUsagesOfOtherCompilersAsTheyWerePrinted)
{
    makeTable(cobol::others);
    expectAsPrinted(cobol::others);
}
