#include "modDatabase.h"

#include "Database.h"
#include "Routine.h"
#include "RuntimeError.h"
#include "modString.h"

#include <QStringView>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// Control characters and those beyond the seven-bit set become blanks, and each run of blanks becomes one.
QString foldBlanks(const QString& text)
{
    QString folded;
    folded.reserve(text.size());
    bool afterBlank = false;
    for (const QChar character : text) {
        const bool lineEnd = character == u'\r' || character == u'\n';
        const bool blank = !lineEnd && (character <= u' ' || character >= QChar(129));
        if (!blank)
            folded.append(character);
        else if (!afterBlank)
            folded.append(u' ');
        afterBlank = blank;
    }
    return folded;
}

struct Replacement {
    QStringView found;
    QStringView by;
};

/// The layout of a statement, in the order in which the replacements are made. Clauses are found between blanks, so one
/// that an earlier replacement has pushed behind a tab is left alone, but for VALUES.
constexpr std::array<Replacement, 15> layout{{
    {u")", u")\n\t"},
    {u"( ", u"("},
    {u"(", u"(\n\t"},
    {u", ", u","},
    {u",", u",\n\t"},
    {u" SELECT ", u"\nSELECT\n\t"},
    {u" FROM ", u"\nFROM\n\t"},
    {u" WHERE ", u"\nWHERE\n\t"},
    {u" ORDER BY ", u"\nORDER BY \n\t"},
    {u" INSERT INTO ", u"INSERT INTO \n\t"},
    {u"\t VALUES ", u"\nVALUES "},
    {u" UPDATE ", u"UPDATE \n\t"},
    {u" SET ", u"\nSET\n\t"},
    {u" AND ", u"\n\tAND "},
    {u" OR ", u"\n\tOR "},
}};

bool endsInDigit(const QString& text)
{
    return !text.isEmpty() && text.back() >= u'0' && text.back() <= u'9';
}

QString replaceAll(const QString& text, const Replacement& replacement)
{
    const QStringView view(text);
    qsizetype found = view.indexOf(replacement.found);
    if (found < 0)
        return text;
    QString result;
    result.reserve(text.size() + text.size() / 4);
    qsizetype done = 0;
    while (found >= 0) {
        result.append(view.mid(done, found - done)).append(replacement.by);
        done = found + replacement.found.size();
        found = view.indexOf(replacement.found, done);
    }
    return result.append(view.mid(done));
}

} // namespace

bool modDatabase::isTextKind(dao::DataType type)
{
    return type == dao::dbText || type == dao::dbMemo || type == dao::dbChar;
}

long modDatabase::FieldInfo::inputWidth() const
{
    switch (Type) {
    case dao::dbBoolean:
        return 1;
    case dao::dbByte:
        return 3;
    case dao::dbInteger:
        return 6;
    case dao::dbCurrency:
        return 20;
    case dao::dbText:
    case dao::dbChar:
        return Size;
    default:
        return 9;
    }
}

const modDatabase::FieldInfo& modDatabase::FieldInfos::Item(const QString& name) const
{
    const auto found =
        std::find_if(m_fields.begin(), m_fields.end(), [&](const FieldInfo& field) { return field.Name == name; });
    if (found == m_fields.end())
        throw RuntimeError(ErrorNumber::ItemNotFound);
    return *found;
}

modDatabase::FieldInfos modDatabase::FetchFieldInfo(dao::Database& db, const QString& table)
{
    const QString statement = u"SELECT * FROM "_s + table + ' '_L1;
    std::vector<FieldInfo> fields;
    Routine routine("modDatabase.FetchFieldInfo");
    routine.additional([&] { return statement; });
    routine.run([&] {
        const auto rows = db.OpenRecordset(statement);
        for (const dao::Field& field : rows->Fields())
            fields.push_back({field.Name, field.Type, field.Size});
    });
    return FieldInfos(std::move(fields));
}

QString modDatabase::MakeInsert(const std::vector<TaggedValue>& values, const FieldInfos& fields, const QString& table)
{
    QString columns;
    QString texts;
    for (const TaggedValue& value : values) {
        if (value.Tag.isEmpty())
            continue;
        columns += value.Tag + ", "_L1;
        texts += fields.Item(value.Tag).isText() ? '\''_L1 + SQLQuote(value.Value) + "', "_L1
                                                 : '0'_L1 + value.Value + ", "_L1;
    }
    columns.chop(2);
    texts.chop(2);
    return u"INSERT INTO "_s + table + " ("_L1 + columns + ") VALUES ("_L1 + texts + ')'_L1;
}

QString modDatabase::BuildDelete(const QString& table, const QString& criterion)
{
    return u"DELETE FROM "_s + table + " WHERE "_L1 + criterion;
}

QString modDatabase::FindUniqueName(dao::Database& db, const QString& statement, const QString& base)
{
    const qsizetype place = statement.lastIndexOf(u'?');
    if (place < 0)
        throw RuntimeError(ErrorNumber::FailedCall);
    QString unique;
    QString asked;
    Routine routine("modDatabase.FindUniqueName");
    routine.additional([&] { return asked; });
    routine.run([&] {
        QString stem = base;
        while (endsInDigit(stem))
            stem.chop(1);

        QString candidate = stem;
        for (long counter = 1;; ++counter) {
            asked = QString(statement).replace(place, 1, SQLQuote(candidate));
            const auto found = db.OpenRecordset(asked);
            if (found->Eof())
                break;
            const QString digits = QString::number(counter);
            const long size = found->Fields().Item(0).Size;
            const QString taken = std::exchange(candidate, stem + digits);
            // A driver that does not know the size of a column gives 0.
            if (size > 0 && candidate.size() > size)
                candidate.truncate(size);
            if (candidate == taken) {
                if (digits.size() > size)
                    throw RuntimeError(ErrorNumber::FailedCall);
                stem.truncate(size - digits.size());
                candidate = stem + digits;
            }
        }
        unique = candidate;
    });
    return unique;
}

QString modDatabase::SQLQuote(const QString& text)
{
    return QString(text).replace(u'\'', QStringLiteral("''"));
}

QString modDatabase::SQLQuote(const dao::Value& value)
{
    return SQLQuote(value.Text());
}

bool modDatabase::endsStatement(QStringView text)
{
    return text.contains("--"_L1) || text.contains("/*"_L1) || text.contains(u';');
}

QString modDatabase::FormatSQL(const QString& text)
{
    QString formatted = foldBlanks(u' ' + modString::Trim(text) + u' ');
    for (const Replacement& replacement : layout)
        formatted = replaceAll(formatted, replacement);
    return modString::Trim(formatted);
}

QString modDatabase::FormatSQL(const dao::Value& value)
{
    return FormatSQL(value.Text());
}
