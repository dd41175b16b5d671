#include "Passwords.h"

using namespace Qt::StringLiterals;

bool passwords::isPassword(QStringView column)
{
    return column.compare("USER_PASSWORD"_L1, Qt::CaseInsensitive) == 0 ||
           column.compare("DATABASE_PASSWORD"_L1, Qt::CaseInsensitive) == 0;
}

const QString& passwords::mask()
{
    static const QString asterisks(10, '*'_L1);
    return asterisks;
}

QString passwords::shown(const QString& password)
{
    return password.isEmpty() ? QString() : mask();
}
