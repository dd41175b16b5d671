#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

/// The numbers of the run-time errors that the program raises and its traps test.
enum class ErrorNumber : int {
    FailedCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    FileNotFound = 53,
    DiskFull = 61,
    PathFileAccess = 75,
    PathNotFound = 76,
    ObjectNotSet = 91,
    InvalidUseOfNull = 94,
    KeyAlreadyThere = 457,
    PrinterError = 482,
    NoCurrentRecord = 3021,
    Cancelled = 3059,
    OdbcFailed = 3146,
    ItemNotFound = 3265,
    DialogCancelled = 32755,
};

/// A failure that a trap can report: a number that code tests and a description that a human reads.
class RuntimeError : public std::exception
{
public:
    /// The failure with its usual description.
    explicit RuntimeError(ErrorNumber number);
    RuntimeError(ErrorNumber number, QString description);

    /// The failure that `errno` names after a file operation: ENOENT is 53, ENOTDIR 76, ENOSPC and EDQUOT 61, all
    /// others 75.
    /// The description is the usual one, a colon and the system's own text.
    static RuntimeError fromErrno(int code);

    /// The usual description of a number.
    static QString usualDescription(ErrorNumber number);

    ErrorNumber number() const { return m_number; }
    const QString& description() const { return m_description; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    ErrorNumber m_number;
    QString m_description;
    QByteArray m_what;
};
