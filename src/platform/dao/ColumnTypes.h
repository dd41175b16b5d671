#pragma once

#include "Recordset.h"

namespace dao
{

/// The number under which this layer knows a column of an ODBC type, concise and wide types included. A type that it
/// has no number for is text.
DataType dataTypeOf(short odbcType);

} // namespace dao
