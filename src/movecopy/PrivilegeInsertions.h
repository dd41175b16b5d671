#pragma once

#include <QString>

namespace dao
{
class Recordset;
}

/// What the status line says while the privilege on a table in the current row is copied.
QString tablePrivilegeStatus(const dao::Recordset& row);
/// The statement that brings that privilege in again, for another table.
QString tablePrivilege(const dao::Recordset& row, const QString& database, const QString& table);
