#pragma once

#include <QString>
#include <QStringList>

#include <functional>
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

    struct Value {
        QStringView text;
        /// Of a character type.
        bool isText = false;
    };
    using Row = std::vector<Value>;

    /// Hands over each row of a SELECT, its values as strings, columns bound as wide characters. Any other statement is
    /// run and has no rows. The values live until the call returns.
    void read(const QString& statement, const std::function<void(const Row&)>& take);
    /// All values of a SELECT, kept row by row.
    Rows read(const QString& statement);

private:
    struct Handles;
    std::unique_ptr<Handles> m_handles;
};
