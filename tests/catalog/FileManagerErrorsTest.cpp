#include "FileManagerErrors.h"

#include "RuntimeError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <random>
#include <string>

namespace
{

dao::Errors chainOf(std::initializer_list<dao::Error> entries)
{
    dao::Errors errors;
    for (const dao::Error& entry : entries)
        errors.Append(entry);
    return errors;
}

int raisedBy(const dao::Errors& errors)
{
    try {
        readableText(errors);
    } catch (const RuntimeError& error) {
        return static_cast<int>(error.number());
    }
    return 0;
}

TEST(FileManagerErrors, AnEmptyChainAndAGenericEntryGiveNoText)
{
    EXPECT_EQ(readableText({}), "");
    EXPECT_EQ(readableText(chainOf({{3146, "ODBC--call failed."}})), "");
    EXPECT_EQ(readableText(chainOf({{3146, "ODBC--call failed: isam"}})), "");
}

TEST(FileManagerErrors, AnEntryOfTheDriverGivesItsNumberInHexadecimalAndItsText)
{
    EXPECT_EQ(readableText(chainOf({{30, "first\r\nsecond"}, {3146, "ODBC--call failed."}})),
              "\nError: &H1E\nfirst \nsecond\n");
    EXPECT_EQ(readableText(chainOf({{0, ""}})), "\nError: &H0\n\n");
    EXPECT_EQ(readableText(chainOf({{-1, "x"}})), "\nError: &HFFFFFFFF\nx\n");
}

TEST(FileManagerErrors, AMessageOfTheFileManagerGivesItsCodeAndWhatItMeans)
{
    EXPECT_EQ(readableText(chainOf({{7, "isam error 105."}})),
              "\nD-ISAM Error: 105 - The isam file is corrupt, it must be repaired with DCHECK(I).\n");
    EXPECT_EQ(readableText(chainOf({{7, "isam: (111)"}})),
              "\nD-ISAM Error: 111 - No record was found to match your request.\n");
}

TEST(FileManagerErrors, ACodeThatNothingIsKnownOfGivesItsNumber)
{
    EXPECT_EQ(readableText(chainOf({{7, "isam 099)"}})), "\nD-ISAM Error: 99 - 99\n");
    EXPECT_EQ(readableText(chainOf({{7, "isam 117)"}})), "\nD-ISAM Error: 117 - 117\n");
}

TEST(FileManagerErrors, TheWordCountsInLowerCaseOnly)
{
    EXPECT_EQ(readableText(chainOf({{5, "ISAM error 105."}})), "\nError: &H5\nISAM error 105.\n");
}

TEST(FileManagerErrors, AMessageWithoutACodeRaisesATypeMismatch)
{
    EXPECT_EQ(raisedBy(chainOf({{7, "isam error"}})), 13);
    EXPECT_EQ(raisedBy(chainOf({{7, "isam 1e2."}})), 13);
    EXPECT_EQ(raisedBy(chainOf({{7, "isam -12."}})), 13);
    EXPECT_EQ(raisedBy(chainOf({{7, "isam  12."}})), 13);
    EXPECT_EQ(raisedBy(chainOf({{7, QString::fromUtf8("isam ١٠٥.")}})), 13);
    EXPECT_EQ(raisedBy(chainOf({{7, "isam"}})), 13);
    EXPECT_EQ(raisedBy(chainOf({{1, "fine"}, {7, "isam error"}})), 13);
}

TEST(FileManagerErrors, EntriesStandInTheOrderOfTheChain)
{
    EXPECT_EQ(readableText(chainOf({{1, "a"}, {3146, "ODBC--call failed."}, {2, "isam 103!"}, {3, "c"}})),
              "\nError: &H1\na\n\nD-ISAM Error: 103 - The values of the keys are not valid.\n\nError: &H3\nc\n");
}

TEST(FileManagerErrors, EveryCodeFromOneHundredToOneHundredSixteenHasItsMeaning)
{
    const std::map<int, const char*> meanings{
        {100, "An attempt was made to (re)write a duplicate where duplicates are prohibited, or an attempt was made to "
              "REWRITE(F) where the primary key permiteed duplicates."},
        {101, "The fd parameter does not reference an opened file."},
        {102, "One of the arguments has a value with no defined meaning."},
        {103, "The values of the keys are not valid."},
        {104, "All isam file descriptors are used, you cannot open any more files.  Note that this is different gtom "
              "the values ENFIL and EMFILE that are returned by the operating system when it runs out of handles and "
              "can easily be corrected by increasing the value of MAXFDS in isport.h"},
        {105, "The isam file is corrupt, it must be repaired with DCHECK(I)."},
        {106, "Exclusive access to the file was not possible."},
        {107, "Another process has a read-only lock on the requested record."},
        {108, "The value of the key has already been established as a key."},
        {109, "The requested function may not be performed on the primary key, as you have requested."},
        {110, "The beginning or end of the file has already been reached."},
        {111, "No record was found to match your request."},
        {112, "There is no current record set at this time."},
        {113, "The file has been exclusively locked by another, or if trying to establish an exclusive lock, another "
              "process is using the file."},
        {114, "The name given for the file is too long."},
        {115, "the lock file cannot be created. Presently not used by D-ISAM."},
        {116, "malloc() cannot allocate the request.  Usually means out of memory, but possibly the allocation list is "
              "corrupted."},
    };
    ASSERT_EQ(meanings.size(), 17U);
    for (const auto& [code, meaning] : meanings) {
        EXPECT_EQ(filemanager::meaning(code), meaning) << code;
        EXPECT_EQ(readableText(chainOf({{7, QStringLiteral("isam error %1.").arg(code)}})),
                  QStringLiteral("\nD-ISAM Error: %1 - %2\n").arg(code).arg(meaning));
    }
    EXPECT_EQ(filemanager::meaning(99), "99");
    EXPECT_EQ(filemanager::meaning(117), "117");
}

/// A second reading of one entry in plain C++; "!" stands for a raised error.
std::string secondReading(long number, const std::string& description)
{
    if (number == 3146)
        return {};
    if (description.find("isam") == std::string::npos) {
        char hexadecimal[32];
        std::snprintf(hexadecimal, sizeof hexadecimal, "%X", static_cast<unsigned>(number));
        std::string blanked = description;
        std::replace(blanked.begin(), blanked.end(), '\r', ' ');
        return std::string("\nError: &H") + hexadecimal + '\n' + blanked + '\n';
    }
    const std::string whole = '(' + std::to_string(number) + ") " + description;
    const std::string code = whole.substr(whole.size() - 4, 3);
    if (code.find_first_not_of("0123456789") != std::string::npos)
        return "!";
    const int value = std::stoi(code);
    return "\nD-ISAM Error: " + std::to_string(value) + " - " + filemanager::meaning(value).toStdString() + '\n';
}

TEST(FileManagerErrors, AgreeWithASecondReaderOnRandomDescriptions)
{
    std::mt19937 random(7);
    const std::vector<std::string> pieces{"isam", "ISAM", "105", "1", "0", "9", ")", " ", "\r", "\n", "error", "116."};
    const std::vector<long> numbers{0, 1, 30, 3146, -1, 2147483647L, 255};
    int raised = 0;
    int coded = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string description;
        for (auto count = random() % 7; count > 0; --count)
            description += pieces[random() % pieces.size()];
        const long number = numbers[random() % numbers.size()];
        const dao::Errors errors = chainOf({{number, QString::fromStdString(description)}});
        const std::string expected = secondReading(number, description);
        if (expected == "!") {
            ++raised;
            ASSERT_EQ(raisedBy(errors), 13) << description;
        } else {
            coded += expected.starts_with("\nD-ISAM") ? 1 : 0;
            ASSERT_EQ(readableText(errors).toStdString(), expected) << description;
        }
    }
    EXPECT_GT(raised, 100);
    EXPECT_GT(coded, 100);
}

} // namespace
