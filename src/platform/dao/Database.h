#pragma once

#include <QString>

#include <memory>

namespace dao
{

class Recordset;

/// How a recordset is opened.
enum RecordsetType { dbOpenTable = 1, dbOpenSnapshot = 4 };

/// One open ODBC connection. It must outlive its recordsets' reading; recordsets still open when it closes end at once.
class Database
{
public:
    virtual ~Database() = default;

    /// Runs one INSERT, UPDATE or DELETE as plain text. Raises 3146. A step (see Step.h): Retry sends it again alone.
    virtual void Execute(const QString& statement) = 0;

    /// Runs one SELECT as plain text and stands on its first row. Raises 3146. A step as well.
    virtual std::unique_ptr<Recordset> OpenRecordset(const QString& statement, RecordsetType type = dbOpenSnapshot) = 0;

    virtual void Close() = 0;

    /// The datasource's name, or the path of a file datasource.
    virtual QString Name() const = 0;
    /// The whole connect string it was opened with.
    virtual QString Connect() const = 0;
};

} // namespace dao
