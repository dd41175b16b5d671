#include "Privileges.h"

using namespace Qt::StringLiterals;

namespace privileges
{

bool isAdministrator(const QString& user)
{
    return user == "ADMIN"_L1;
}

QString users()
{
    return u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s;
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
