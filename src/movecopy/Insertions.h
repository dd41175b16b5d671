#pragma once

#include <QString>

namespace dao
{
class Recordset;
}

/// The statements that bring a row of the catalog in again, under another owner or name. Values go into them by one
/// call of QString::arg: what looks like a place marker within a value is then left alone.
namespace insertions
{

/// A column of the current row as it is; a null is the empty text.
QString text(const dao::Recordset& row, const QString& column);
/// The same for between the apostrophes of a statement.
QString quoted(const dao::Recordset& row, const QString& column);

/// How the number in a column of the current row is written: by `text`, where a null leaves an empty place, which no
/// driver takes, or by `bareOrNull`, where it stays one.
using Number = QString (*)(const dao::Recordset& row, const QString& column);
QString bareOrNull(const dao::Recordset& row, const QString& column);

QString field(const dao::Recordset& row, const QString& file, Number number);
QString database(const dao::Recordset& row, const QString& name);
QString table(const dao::Recordset& row, const QString& database, const QString& name, Number number);
QString column(const dao::Recordset& row, const QString& database, const QString& table, Number number);
/// A privilege on a table, its flags as numbers that may be null.
QString tablePrivilege(const dao::Recordset& row, const QString& database, const QString& table);

} // namespace insertions
