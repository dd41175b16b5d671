#pragma once

#include <QString>

namespace dao
{
class Database;
}

namespace recordsize
{

/// The sum of the lengths of a file's fields; empty for a file without any.
QString sumOfFields(dao::Database& db, const QString& file);

/// The size of the file's records: the sum and the control bytes that some files have, which then must fit in 16 bits
/// or raises 6.
QString withControlBytes(const QString& sum, const QString& file);

} // namespace recordsize
