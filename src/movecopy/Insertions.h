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

/// A column of the current row as a text for between apostrophes; a null is the empty text.
QString quoted(const dao::Recordset& row, const QString& column);

/// How the number in a column of the current row is written.
using Number = QString (*)(const dao::Recordset& row, const QString& column);
/// As the row holds it; a null leaves an empty place, which no driver takes.
QString bare(const dao::Recordset& row, const QString& column);
/// The same, but a null stays one.
QString bareOrNull(const dao::Recordset& row, const QString& column);

QString field(const dao::Recordset& row, const QString& file, Number number);
QString database(const dao::Recordset& row, const QString& name);
QString table(const dao::Recordset& row, const QString& database, const QString& name, Number number);
QString column(const dao::Recordset& row, const QString& database, const QString& table, Number number);

} // namespace insertions
