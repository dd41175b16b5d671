#include "Privileges.h"

#include "modDatabase.h"

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace privileges
{

QString users()
{
    return u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s;
}

QString ofUser(const QString& user)
{
    return "USER_NAME = '"_L1 + SQLQuote(user) + '\''_L1;
}

QString ofUser(const QString& database, const QString& user)
{
    return "DATABASE_NAME = '"_L1 + SQLQuote(database) + "' AND "_L1 + ofUser(user);
}

QString ofUser(const QString& database, const QString& table, const QString& user)
{
    return ofTable(database, table) + " AND "_L1 + ofUser(user);
}

QString ofTable(const QString& database, const QString& table)
{
    return "DATABASE_NAME = '"_L1 + SQLQuote(database) + "' AND TABLE_NAME = '"_L1 + SQLQuote(table) + '\''_L1;
}

QString passwordAssignment(const QString& column, const QString& quoted)
{
    return column + " = '"_L1 + quoted + "', "_L1;
}

const QStringList& rights()
{
    static const QStringList columns{u"ALLOW_SELECT"_s, u"ALLOW_INSERT"_s, u"ALLOW_UPDATE"_s, u"ALLOW_DELETE"_s};
    return columns;
}

QString assignments(const std::function<QString(const QString& column)>& value)
{
    QStringList all;
    for (const QString& column : rights())
        all.append(column + " = "_L1 + value(column));
    return all.join(", "_L1);
}

} // namespace privileges
