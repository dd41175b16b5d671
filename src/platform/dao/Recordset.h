#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <vector>

namespace dao
{

/// The column types as this layer numbers them.
enum DataType {
    dbBoolean = 1,
    dbByte = 2,
    dbInteger = 3,
    dbLong = 4,
    dbCurrency = 5,
    dbSingle = 6,
    dbDouble = 7,
    dbDate = 8,
    dbBinary = 9,
    dbText = 10,
    dbLongBinary = 11,
    dbMemo = 12,
    dbGUID = 15,
    dbBigInt = 16,
    dbVarBinary = 17,
    dbChar = 18,
    dbNumeric = 19,
    dbDecimal = 20,
    dbFloat = 21,
    dbTime = 22,
    dbTimeStamp = 23,
};

/// The value of a column: null or its text as the driver converts it to wide characters.
class Value
{
public:
    Value() = default;
    explicit Value(QString text) : m_text(std::move(text)), m_null(false) {}

    bool IsNull() const { return m_null; }
    /// The text; a null reads as the empty text.
    const QString& Text() const { return m_text; }
    /// The number as a 32-bit integer. Raises 94 for a null, 13 for no number, 6 out of range.
    std::int32_t Long() const;

private:
    QString m_text;
    bool m_null = true;
};

/// The description of a column, and its value while the recordset stands on a row.
class Field
{
public:
    QString Name;
    DataType Type = dbText;
    /// The declared size: characters of a text column, bytes or digits of others as the driver reports it.
    long Size = 0;

    /// The value in the current row. Raises 3021 without a current row.
    dao::Value Value() const;

private:
    friend class Fields;
    friend class Recordset;
    class Recordset* m_recordset = nullptr;
    int m_column = 0;
    /// False behind another column of the same name.
    bool m_findable = true;
};

/// The columns of a recordset in the order of the statement.
class Fields
{
public:
    int Count() const { return static_cast<int>(m_fields.size()); }
    /// By name, whatever its case. Raises 3265 for an unknown one.
    const Field& Item(const QString& name) const;
    const Field& Item(int index) const;
    auto begin() const { return m_fields.begin(); }
    auto end() const { return m_fields.end(); }

private:
    friend class Recordset;
    std::vector<Field> m_fields;
    mutable std::size_t m_likely = 0;
};

/// The rows of one SELECT, read forward. The rows are those of the moment at which it was opened, whatever is written
/// meanwhile.
class Recordset
{
public:
    Recordset() = default;
    virtual ~Recordset() = default;
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// True behind the last row, and at once for a result without rows.
    virtual bool Eof() const = 0;
    /// To the next row. Raises 3021 at the end, 3146 when the driver fails. A step (see Step.h).
    virtual void MoveNext() = 0;
    /// To the first row again. Raises 3021 for a result without rows, as MoveLast does.
    virtual void MoveFirst() = 0;
    /// To the last row; from then on RecordCount is the number of all rows. Raises 3146 when the driver fails.
    virtual void MoveLast() = 0;
    /// The number of rows visited so far: one behind the farthest position.
    virtual long RecordCount() const = 0;
    /// The current row from 0, or -1 without one.
    virtual long AbsolutePosition() const = 0;

    const dao::Fields& Fields() const { return m_fields; }

    /// The value of a column of the current row without a copy: valid until the next move. A null reads as an empty
    /// view with `isNull` set. Raises 3021 without a current row, 3265 for a column out of range.
    virtual QStringView View(int column, bool* isNull = nullptr) const = 0;

protected:
    void addField(Field field);

private:
    dao::Fields m_fields;
};

} // namespace dao
