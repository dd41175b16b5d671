#include "RuntimeError.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace
{

struct Usual {
    ErrorNumber number;
    int value;
    const char* description;
};

constexpr Usual usual[] = {
    {ErrorNumber::FailedCall, 5, "Invalid procedure call or argument"},
    {ErrorNumber::Overflow, 6, "Overflow"},
    {ErrorNumber::SubscriptOutOfRange, 9, "Subscript out of range"},
    {ErrorNumber::TypeMismatch, 13, "Type mismatch"},
    {ErrorNumber::FileNotFound, 53, "File not found"},
    {ErrorNumber::DiskFull, 61, "Disk full"},
    {ErrorNumber::PathFileAccess, 75, "Path/File access error"},
    {ErrorNumber::PathNotFound, 76, "Path not found"},
    {ErrorNumber::ObjectNotSet, 91, "Object variable or With block variable not set"},
    {ErrorNumber::InvalidUseOfNull, 94, "Invalid use of Null"},
    {ErrorNumber::KeyAlreadyThere, 457, "This key is already associated with an element of this collection"},
    {ErrorNumber::PrinterError, 482, "Printer error"},
    {ErrorNumber::NoCurrentRecord, 3021, "No current record."},
    {ErrorNumber::Cancelled, 3059, "Operation canceled by user."},
    {ErrorNumber::OdbcFailed, 3146, "ODBC--call failed."},
    {ErrorNumber::ItemNotFound, 3265, "Item not found in this collection."},
    {ErrorNumber::DialogCancelled, 32755, "Cancel was selected."},
};

} // namespace

TEST(RuntimeError, EveryNumberHasItsUsualDescription)
{
    for (const Usual& row : usual) {
        const RuntimeError error(row.number);
        EXPECT_EQ(static_cast<int>(error.number()), row.value);
        EXPECT_EQ(error.description().toStdString(), row.description);
        EXPECT_STREQ(error.what(), row.description);
    }
}

TEST(RuntimeError, AnUnknownNumberIsDescribedByItself)
{
    EXPECT_EQ(RuntimeError(static_cast<ErrorNumber>(7)).description(), "Error 7");
}

TEST(RuntimeError, ADescriptionOfOnesOwnReplacesTheUsualOne)
{
    const RuntimeError error(ErrorNumber::OdbcFailed, QStringLiteral("größer"));
    EXPECT_EQ(error.description(), QStringLiteral("größer"));
    EXPECT_STREQ(error.what(), "größer");
}

TEST(RuntimeError, SystemErrorsMapToNumbersAndKeepTheSystemsText)
{
    const struct {
        int code;
        ErrorNumber number;
        const char* description;
    } rows[] = {
        {ENOENT, ErrorNumber::FileNotFound, "File not found: No such file or directory"},
        {ENOTDIR, ErrorNumber::PathNotFound, "Path not found: Not a directory"},
        {ENOSPC, ErrorNumber::DiskFull, "Disk full: No space left on device"},
        {EDQUOT, ErrorNumber::DiskFull, "Disk full: Disk quota exceeded"},
        {EACCES, ErrorNumber::PathFileAccess, "Path/File access error: Permission denied"},
        {EROFS, ErrorNumber::PathFileAccess, "Path/File access error: Read-only file system"},
        {EISDIR, ErrorNumber::PathFileAccess, "Path/File access error: Is a directory"},
        {EIO, ErrorNumber::PathFileAccess, "Path/File access error: Input/output error"},
    };
    for (const auto& row : rows) {
        const RuntimeError error = RuntimeError::fromErrno(row.code);
        EXPECT_EQ(error.number(), row.number) << row.description;
        EXPECT_EQ(error.description().toStdString(), row.description);
    }
}
