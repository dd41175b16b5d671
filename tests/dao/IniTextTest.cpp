#include "IniText.h"

#include "QtPrinting.h"

#include <gtest/gtest.h>

using dao::IniText;

namespace
{

const QByteArray sample = "# my file\n"
                          "\n"
                          "[ODBC Data Sources]\n"
                          "Sales=Tarnwick ODBC\n"
                          "\n"
                          "; the shop\n"
                          "[Sales]\n"
                          "Driver = Tarnwick ODBC\n"
                          "# where it is\n"
                          "  Catalog=/a/b.db\n"
                          "Description=Shop ; and stock\n"
                          "\n"
                          "# kept for June\n"
                          "[Other]\n"
                          "Driver=X\n";

} // namespace

TEST(IniText, AnUnchangedTextIsKeptByteForByte)
{
    for (const QByteArray& text :
         {sample, QByteArray(), QByteArray("no end"), QByteArray("\r\n[a\r\nb\r\n"), QByteArray("\n\n")})
        EXPECT_EQ(IniText(text).text(), text);
}

TEST(IniText, ChangedEntriesKeepTheirPlaceAndCommentsStay)
{
    IniText text(sample);
    text.setEntries("SALES", {{"driver", "Tarnwick ODBC"}, {"CATALOG", "/new.db"}, {"StatementLog", "/log"}});
    QByteArray expected = sample;
    expected.replace("  Catalog=/a/b.db\nDescription=Shop ; and stock\n", "CATALOG=/new.db\nStatementLog=/log\n");
    EXPECT_EQ(text.text(), expected);
}

TEST(IniText, ANewSectionComesToTheEndBehindABlankLine)
{
    IniText text("[a]\nb=1");
    text.setEntries("n", {{"Driver", "D"}});
    EXPECT_EQ(text.text(), "[a]\nb=1\n\n[n]\nDriver=D\n");
    IniText empty("");
    empty.setEntries("n", {{"Driver", "D"}});
    EXPECT_EQ(empty.text(), "[n]\nDriver=D\n");
    IniText carriage("[a]\r\nb=1\r\n");
    carriage.setEntries("n", {{"Driver", "D"}});
    EXPECT_EQ(carriage.text(), "[a]\r\nb=1\r\n\r\n[n]\r\nDriver=D\r\n");
}

TEST(IniText, ARemovedSectionLeavesTheCommentsOfTheNextOne)
{
    IniText text(sample);
    text.removeSection("sales");
    QByteArray expected = sample;
    expected.replace(expected.indexOf("[Sales]"), expected.indexOf("# kept") - expected.indexOf("[Sales]"), "");
    EXPECT_EQ(text.text(), expected);
    EXPECT_FALSE(text.hasSection("Sales"));
    EXPECT_TRUE(text.hasSection("Other"));
}

TEST(IniText, EverySectionOfTheNameIsRemoved)
{
    IniText text("[a]\nx=1\n[b]\ny=1\n[ A ]\nx=2\n[a");
    text.removeSection("a");
    EXPECT_EQ(text.text(), "[b]\ny=1\n");
}

TEST(IniText, EntriesAndSectionsAreRenamedAndRemovedAlone)
{
    IniText text(sample);
    text.renameSection("Sales", "Stock");
    text.removeEntry("ODBC Data Sources", "sales");
    text.setEntry("ODBC Data Sources", "Stock", "Tarnwick ODBC");
    QByteArray expected = sample;
    expected.replace("[Sales]", "[Stock]").replace("Sales=", "Stock=");
    EXPECT_EQ(text.text(), expected);
}
