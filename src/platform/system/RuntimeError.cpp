#include "RuntimeError.h"

#include <cerrno>
#include <cstring>
#include <utility>

RuntimeError::RuntimeError(ErrorNumber number) : RuntimeError(number, usualDescription(number)) {}

RuntimeError::RuntimeError(ErrorNumber number, QString description)
    : m_number(number), m_description(std::move(description)), m_what(m_description.toUtf8())
{
}

RuntimeError RuntimeError::fromErrno(int code)
{
    const auto number = [code] {
        switch (code) {
        case ENOENT:
            return ErrorNumber::FileNotFound;
        case ENOTDIR:
            return ErrorNumber::PathNotFound;
        case ENOSPC:
        case EDQUOT:
            return ErrorNumber::DiskFull;
        default:
            return ErrorNumber::PathFileAccess;
        }
    }();
    return {number, usualDescription(number) + ": " + QString::fromLocal8Bit(std::strerror(code))};
}

QString RuntimeError::usualDescription(ErrorNumber number)
{
    switch (number) {
    case ErrorNumber::FailedCall:
        return "Invalid procedure call or argument";
    case ErrorNumber::Overflow:
        return "Overflow";
    case ErrorNumber::SubscriptOutOfRange:
        return "Subscript out of range";
    case ErrorNumber::TypeMismatch:
        return "Type mismatch";
    case ErrorNumber::FileNotFound:
        return "File not found";
    case ErrorNumber::DiskFull:
        return "Disk full";
    case ErrorNumber::PathFileAccess:
        return "Path/File access error";
    case ErrorNumber::PathNotFound:
        return "Path not found";
    case ErrorNumber::ObjectNotSet:
        return "Object variable or With block variable not set";
    case ErrorNumber::InvalidUseOfNull:
        return "Invalid use of Null";
    case ErrorNumber::KeyAlreadyThere:
        return "This key is already associated with an element of this collection";
    case ErrorNumber::PrinterError:
        return "Printer error";
    case ErrorNumber::NoCurrentRecord:
        return "No current record.";
    case ErrorNumber::Cancelled:
        return "Operation canceled by user.";
    case ErrorNumber::OdbcFailed:
        return "ODBC--call failed.";
    case ErrorNumber::ItemNotFound:
        return "Item not found in this collection.";
    case ErrorNumber::DialogCancelled:
        return "Cancel was selected.";
    }
    return QString("Error %1").arg(static_cast<int>(number));
}
