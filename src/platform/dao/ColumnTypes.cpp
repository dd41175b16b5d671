#include "ColumnTypes.h"

#include "Odbc.h"

namespace dao
{

DataType dataTypeOf(short odbcType)
{
    switch (odbcType) {
    case SQL_CHAR:
    case SQL_WCHAR:
        return dbChar;
    case SQL_LONGVARCHAR:
    case SQL_WLONGVARCHAR:
        return dbMemo;
    case SQL_BIT:
        return dbBoolean;
    case SQL_TINYINT:
        return dbByte;
    case SQL_SMALLINT:
        return dbInteger;
    case SQL_INTEGER:
        return dbLong;
    case SQL_BIGINT:
        return dbBigInt;
    case SQL_REAL:
        return dbSingle;
    case SQL_DOUBLE:
        return dbDouble;
    case SQL_FLOAT:
        return dbFloat;
    case SQL_NUMERIC:
        return dbNumeric;
    case SQL_DECIMAL:
        return dbDecimal;
    case SQL_DATE:
    case SQL_TYPE_DATE:
        return dbDate;
    case SQL_TIME:
    case SQL_TYPE_TIME:
        return dbTime;
    case SQL_TIMESTAMP:
    case SQL_TYPE_TIMESTAMP:
        return dbTimeStamp;
    case SQL_BINARY:
        return dbBinary;
    case SQL_VARBINARY:
        return dbVarBinary;
    case SQL_LONGVARBINARY:
        return dbLongBinary;
    case SQL_GUID:
        return dbGUID;
    default:
        return dbText;
    }
}

} // namespace dao
