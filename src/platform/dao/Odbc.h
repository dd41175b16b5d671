#pragma once

#include "DBEngine.h"

#include <QByteArray>
#include <QString>

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <string_view>
#include <utility>
#include <vector>

/// What the rest of this room needs of the driver manager's C interface: owned handles, texts, diagnostic records, and
/// the one way to raise a failure.
namespace dao::odbc
{

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "the driver manager is built for UTF-16");

/// The driver manager takes texts that it only reads as pointers to mutable characters.
inline SQLWCHAR* wide(const QString& text)
{
    return reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(text.utf16()));
}
inline SQLCHAR* narrow(const QByteArray& text)
{
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.data()));
}

/// A text that came back in a buffer: cut at its first null character, since the driver manager reports some lengths
/// in bytes of the driver's own encoding.
QString fromWide(const SQLWCHAR* text, qsizetype length);
QString fromNarrow(const SQLCHAR* text, qsizetype length);

/// UTF-8 of a text; a surrogate without its other half is kept as the three bytes that its number gives.
QByteArray toNarrow(const QString& text);

/// Which entry points of a connection carry every character. A driver with wide entry points gets wide texts. One
/// without gets UTF-8, since the driver manager's own conversion for it loses what lies beyond the basic plane.
enum class Encoding { Wide, Utf8 };

/// An ODBC handle with its owner. A handle that could not be had is null.
template <SQLSMALLINT Type>
class Handle
{
public:
    Handle() = default;
    explicit Handle(SQLHANDLE parent)
    {
        if (!SQL_SUCCEEDED(SQLAllocHandle(Type, parent, &m_handle)))
            m_handle = nullptr;
    }
    ~Handle() { reset(); }
    Handle(Handle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }

    void reset()
    {
        if (m_handle != nullptr)
            SQLFreeHandle(Type, std::exchange(m_handle, nullptr));
    }
    SQLHANDLE get() const { return m_handle; }
    explicit operator bool() const { return m_handle != nullptr; }

private:
    SQLHANDLE m_handle = nullptr;
};

using Environment = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

/// An environment of the third version of ODBC, or null.
Environment makeEnvironment();

/// Whether records of the class "01" count.
enum class Warnings { Kept, LeftOut };

/// All diagnostic records of a handle in their order, with their full texts.
std::vector<Error> diagnostics(SQLSMALLINT type, SQLHANDLE handle, Encoding encoding = Encoding::Wide,
                               Warnings warnings = Warnings::Kept);

/// Puts the records into the error chain, closes it with the generic entry and raises 3146.
[[noreturn]] void fail(std::vector<Error> records);

/// Makes the driver manager read its files anew. It keeps what it read from them for 20 seconds, by section and key but
/// not by file, unless it writes one itself: so it is made to write an entry to nowhere.
void forgetIniFiles();

/// The observer that is hung on every statement, or null.
StatementObserver* observer();

/// Makes UTF-8 the character encoding of the calling thread while it lives. The driver manager looks at it when it
/// connects, to know how to convert texts for that connection.
class Utf8Scope
{
public:
    Utf8Scope();
    ~Utf8Scope();
    Utf8Scope(const Utf8Scope&) = delete;
    Utf8Scope& operator=(const Utf8Scope&) = delete;

private:
    void* m_former = nullptr;
    void* m_utf8 = nullptr;
};

} // namespace dao::odbc
