#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <string>
#include <vector>

/// A connection through the bare ODBC functions: what the same statements cost without the program.
class OdbcFloor
{
public:
    /// Connects to a datasource. Throws std::runtime_error where that fails.
    explicit OdbcFloor(const QString& datasource);
    ~OdbcFloor();
    OdbcFloor(const OdbcFloor&) = delete;
    OdbcFloor& operator=(const OdbcFloor&) = delete;

    using Rows = std::vector<std::vector<std::u16string>>;

    /// All values of a SELECT as strings, columns bound as wide characters, row by row. Any other statement is run and
    /// has no rows.
    Rows read(const QString& statement);

private:
    struct Handles;
    std::unique_ptr<Handles> m_handles;
};
