#pragma once

#include "Recordset.h"

#include <QString>

#include <vector>

namespace dao
{
class Database;
}

namespace modDatabase
{

/// Whether values of a type go into a statement between apostrophes: text, memo and char.
bool isTextKind(dao::DataType type);

/// A column of a catalog table as the driver describes it.
struct FieldInfo {
    QString Name;
    dao::DataType Type = dao::dbText;
    /// Characters of a text column.
    long Size = 0;

    bool isText() const { return isTextKind(Type); }
    /// The most characters that an entry for the column takes.
    long inputWidth() const;
};

/// The columns of one catalog table.
class FieldInfos
{
public:
    FieldInfos() = default;
    explicit FieldInfos(std::vector<FieldInfo> fields) : m_fields(std::move(fields)) {}

    bool isEmpty() const { return m_fields.empty(); }
    /// Raises 3265 for a name that the table does not have.
    const FieldInfo& Item(const QString& name) const;

private:
    std::vector<FieldInfo> m_fields;
};

/// Asks the driver for the columns of a table; none after a failure that was ignored.
FieldInfos FetchFieldInfo(dao::Database& db, const QString& table);

/// What an INSERT stores: a column and the text of the control that is bound to it.
struct TaggedValue {
    QString Tag;
    QString Value;
};

/// The INSERT of one row. Values without a tag are not stored; a number gets a zero in front, so that a blank entry
/// means 0. Raises 3265 for a tag that the table does not have.
QString MakeInsert(const std::vector<TaggedValue>& values, const FieldInfos& fields, const QString& table);
QString BuildDelete(const QString& table, const QString& criterion);

/// A name that no row has yet: the base without the digits at its end, else with the first counter from 1 on that is
/// free, each asked for by one statement. The statement is an SQL text with "?" where the name goes; a "?" in front of
/// that one belongs to the text. A name longer than the first column is cut to its size; once that only leads back to a
/// name that is taken, the base is cut instead, so that the counter stays. Empty after a failure that was ignored,
/// which no free name of that size is too. Raises 5 for a statement without a place for the name.
QString FindUniqueName(dao::Database& db, const QString& statement, const QString& base);

/// A value for a statement: every apostrophe doubled, a null as the empty text. Callers write the apostrophes around
/// it.
QString SQLQuote(const QString& text);
QString SQLQuote(const dao::Value& value);

/// Whether a text that stands in a statement outside of apostrophes could end it, so that what follows does not count.
bool endsStatement(QStringView text);

/// A statement laid out for reading: blanks folded, control characters blanked, a line for each clause. Linear in the
/// length of the text.
QString FormatSQL(const QString& text);
QString FormatSQL(const dao::Value& value);

} // namespace modDatabase
