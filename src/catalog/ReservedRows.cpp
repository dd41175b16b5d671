#include "ReservedRows.h"

using namespace Qt::StringLiterals;

bool reservedrows::isAdministrator(const QString& user)
{
    return user == "ADMIN"_L1;
}
