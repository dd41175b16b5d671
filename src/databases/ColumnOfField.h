#pragma once

#include <QString>

namespace dao
{
class Recordset;
}

/// The column that a field of a file becomes in a table made from that file.
namespace columnoffield
{

/// The INSERT of the column. The field and its SQL type stand on their rows of TW_FIELD and TW_SQLDT; the name of the
/// type is the one that the field's local type maps to. Raises 3021 for a type without a row.
QString insertion(const QString& database, const QString& table, const dao::Recordset& field, const QString& sqlType,
                  const dao::Recordset& type);

} // namespace columnoffield
