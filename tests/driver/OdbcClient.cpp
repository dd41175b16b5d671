#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <sqlucode.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <unistd.h>

namespace
{

/// The reading of UTF-8 here is not the driver's, so that neither hides a fault of the other.
std::u32string CodePoints(const std::string& utf8)
{
    std::u32string points;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        char32_t point = more == 0 ? lead : lead & (0x3F >> more);
        for (int k = 1; k <= more; ++k)
            point = point * 64 + (static_cast<unsigned char>(utf8[i + static_cast<std::size_t>(k)]) & 0x3F);
        points.push_back(point);
        i += static_cast<std::size_t>(more) + 1;
    }
    return points;
}

void Append(std::string& utf8, char32_t point)
{
    const auto byte = [&utf8](char32_t value) { utf8.push_back(static_cast<char>(value)); };
    if (point < 0x80)
        return byte(point);
    if (point < 0x800) {
        byte(0xC0 + point / 64);
    } else if (point < 0x10000) {
        byte(0xE0 + point / 4096);
        byte(0x80 + point / 64 % 64);
    } else {
        byte(0xF0 + point / 262144);
        byte(0x80 + point / 4096 % 64);
        byte(0x80 + point / 64 % 64);
    }
    byte(0x80 + point % 64);
}

int NextNumber()
{
    static int number = 0;
    return ++number;
}

} // namespace

std::vector<SQLWCHAR> Wide(const std::string& utf8)
{
    std::vector<SQLWCHAR> units;
    for (const char32_t point : CodePoints(utf8)) {
        if (point < 0x10000) {
            units.push_back(static_cast<SQLWCHAR>(point));
        } else {
            units.push_back(static_cast<SQLWCHAR>(0xD800 + (point - 0x10000) / 1024));
            units.push_back(static_cast<SQLWCHAR>(0xDC00 + (point - 0x10000) % 1024));
        }
    }
    units.push_back(0);
    return units;
}

std::string Narrow(const SQLWCHAR* text, std::size_t units)
{
    std::string utf8;
    for (std::size_t i = 0; i < units; ++i) {
        char32_t point = text[i];
        if (point >= 0xD800 && point < 0xDC00 && i + 1 < units)
            point = 0x10000 + (point - 0xD800) * 1024 + (text[++i] - 0xDC00u);
        Append(utf8, point);
    }
    return utf8;
}

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "tarnwick-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder");
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

namespace
{

/// The ini files of this process, and its environment pointing to them.
class IniFiles
{
public:
    static const IniFiles& Shared()
    {
        static const IniFiles files;
        return files;
    }

    std::string Datasources() const { return m_folder.File("odbc.ini"); }

private:
    IniFiles()
    {
        std::ofstream(m_folder.File("odbcinst.ini")) << "[Tarnwick ODBC]\nDriver = " << TARNWICK_DRIVER_FILE << "\n";
        std::ofstream(Datasources()).flush();
        std::filesystem::permissions(m_folder.Path(), std::filesystem::perms(0755));
        ::setenv("ODBCSYSINI", m_folder.Path().c_str(), 1);
        ::setenv("ODBCINI", Datasources().c_str(), 1);
    }

    TemporaryFolder m_folder;
};

} // namespace

OdbcSetup::OdbcSetup()
{
    IniFiles::Shared();
}

std::string OdbcSetup::AddDataSource(const std::vector<std::string>& lines)
{
    const std::string name = "DS" + std::to_string(::getpid()) + "N" + std::to_string(NextNumber());
    std::ofstream file(IniFiles::Shared().Datasources(), std::ios::app);
    file << "[" << name << "]\nDriver = Tarnwick ODBC\n";
    for (const std::string& line : lines)
        file << line << "\n";
    return name;
}

std::string OdbcSetup::AddCatalog(const std::string& fileName)
{
    return AddDataSource({"Catalog = " + File(fileName)});
}

std::string Result::Single() const
{
    EXPECT_TRUE(Succeeded()) << diagnostic.message;
    if (rows.size() != 1 || rows.front().size() != 1) {
        ADD_FAILURE() << rows.size() << " rows";
        return {};
    }
    return rows.front().front().value_or("<null>");
}

OdbcClient::OdbcClient()
{
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
    SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
}

OdbcClient::~OdbcClient()
{
    Disconnect();
    SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
    SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
}

bool OdbcClient::Connect(const std::string& connectString)
{
    std::vector<SQLWCHAR> text = Wide(connectString);
    std::array<SQLWCHAR, 1024> completed{};
    SQLSMALLINT length = 0;
    const SQLRETURN answer =
        SQLDriverConnectW(m_connection, nullptr, text.data(), SQL_NTS, completed.data(),
                          static_cast<SQLSMALLINT>(completed.size()), &length, SQL_DRIVER_NOPROMPT);
    m_connected = SQL_SUCCEEDED(answer);
    if (m_connected)
        m_completed = Narrow(completed.data(), static_cast<std::size_t>(length));
    else
        m_failure = DiagnosticOf(SQL_HANDLE_DBC, m_connection);
    return m_connected;
}

void OdbcClient::Disconnect()
{
    if (m_connected)
        SQLDisconnect(m_connection);
    m_connected = false;
}

SQLHSTMT OdbcClient::NewStatement()
{
    SQLHSTMT statement = nullptr;
    EXPECT_EQ(SQLAllocHandle(SQL_HANDLE_STMT, m_connection, &statement), SQL_SUCCESS);
    return statement;
}

Result OdbcClient::Execute(const std::string& statement)
{
    std::vector<SQLWCHAR> text = Wide(statement);
    return Read([&](SQLHSTMT handle) { return SQLExecDirectW(handle, text.data(), SQL_NTS); });
}

Result OdbcClient::Prepared(const std::string& statement)
{
    std::vector<SQLWCHAR> text = Wide(statement);
    return Read([&](SQLHSTMT handle) {
        const SQLRETURN answer = SQLPrepareW(handle, text.data(), SQL_NTS);
        return SQL_SUCCEEDED(answer) ? SQLExecute(handle) : answer;
    });
}

std::string OdbcClient::Native(const std::string& statement)
{
    std::vector<SQLWCHAR> text = Wide(statement);
    std::vector<SQLWCHAR> native(text.size() + 100);
    SQLINTEGER length = 0;
    EXPECT_EQ(SQLNativeSqlW(m_connection, text.data(), SQL_NTS, native.data(), static_cast<SQLINTEGER>(native.size()),
                            &length),
              SQL_SUCCESS);
    return Narrow(native.data(), static_cast<std::size_t>(length));
}

std::string OdbcClient::Info(SQLUSMALLINT type)
{
    std::array<SQLWCHAR, 512> text{};
    SQLSMALLINT bytes = 0;
    EXPECT_EQ(SQLGetInfoW(m_connection, type, text.data(), sizeof text, &bytes), SQL_SUCCESS);
    return Narrow(text.data(), static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR));
}

Diagnostic OdbcClient::DiagnosticOf(SQLSMALLINT type, SQLHANDLE handle)
{
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 2048> message{};
    SQLSMALLINT length = 0;
    Diagnostic diagnostic;
    if (!SQL_SUCCEEDED(SQLGetDiagRecW(type, handle, 1, state.data(), &diagnostic.native, message.data(),
                                      static_cast<SQLSMALLINT>(message.size()), &length)))
        return {"", 0, "(none)"};
    diagnostic.state = Narrow(state.data(), 5);
    diagnostic.message = Narrow(message.data(), std::min(static_cast<std::size_t>(length), message.size() - 1));
    return diagnostic;
}

namespace
{

/// A cell in pieces, so that no length is too long.
Cell GetCell(SQLHSTMT statement, SQLUSMALLINT column)
{
    std::vector<SQLWCHAR> whole;
    for (;;) {
        std::array<SQLWCHAR, 200> piece{};
        SQLLEN bytes = 0;
        const SQLRETURN answer = SQLGetData(statement, column, SQL_C_WCHAR, piece.data(), sizeof piece, &bytes);
        if (!SQL_SUCCEEDED(answer))
            return "<error>";
        if (bytes == SQL_NULL_DATA)
            return std::nullopt;
        const bool cut = answer == SQL_SUCCESS_WITH_INFO;
        const std::size_t units = cut ? piece.size() - 1 : static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR);
        whole.insert(whole.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(units));
        if (!cut)
            return Narrow(whole.data(), whole.size());
    }
}

} // namespace

Result OdbcClient::Fetch(SQLHSTMT statement, SQLRETURN answer)
{
    Result result;
    result.answer = answer;
    if (!SQL_SUCCEEDED(answer)) {
        if (answer != SQL_NO_DATA)
            result.diagnostic = DiagnosticOf(SQL_HANDLE_STMT, statement);
        return result;
    }
    SQLSMALLINT count = 0;
    SQLNumResultCols(statement, &count);
    for (SQLSMALLINT i = 1; i <= count; ++i) {
        std::array<SQLWCHAR, 256> name{};
        SQLSMALLINT length = 0;
        SQLSMALLINT digits = 0;
        ResultColumn column;
        SQLDescribeColW(statement, static_cast<SQLUSMALLINT>(i), name.data(), static_cast<SQLSMALLINT>(name.size()),
                        &length, &column.type, &column.size, &digits, &column.nullable);
        column.name = Narrow(name.data(), std::min(static_cast<std::size_t>(length), name.size() - 1));
        result.columns.push_back(column);
    }
    if (count == 0) {
        SQLRowCount(statement, &result.changed);
        return result;
    }
    while (SQL_SUCCEEDED(SQLFetch(statement))) {
        Row row;
        for (SQLSMALLINT i = 1; i <= count; ++i)
            row.push_back(GetCell(statement, static_cast<SQLUSMALLINT>(i)));
        result.rows.push_back(std::move(row));
    }
    return result;
}
