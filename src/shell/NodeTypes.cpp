#include "NodeTypes.h"

namespace nodetypes
{

namespace
{

struct Row {
    const char* type;
    const char* pane;
    const char* dragIcon;
};

constexpr Row rows[] = {
    {"DSN", "frmDSN", ""},
    {"FI", "frmFiles", "Drag File"},
    {"fi", "frmFile", "Drag File"},
    {"FD", "frmFields", "Drag Field"},
    {"fd", "frmField", "Drag Field"},
    {"DB", "frmDatabases", "Drag Database"},
    {"db", "frmDatabase", "Drag Database"},
    {"TA", "frmTables", "Drag Table"},
    {"ta", "frmTable", "Drag Table"},
    {"CO", "frmColumns", "Drag Column"},
    {"co", "frmColumn", "Drag Column"},
    {"SCO", "frmSpecialCols", ""},
    {"US", "frmUsers", "Drag User"},
    {"us", "frmUser", "Drag User"},
    {"DBPRV", "frmDBPRVs", "Drag User"},
    {"dbprv", "frmDBPRV", "Drag User"},
    {"TBLPRV", "frmTBLPRVs", "Drag User"},
    {"tblprv", "frmTBLPRV", "Drag User"},
};

const Row* find(const QString& type)
{
    for (const Row& row : rows) {
        if (type == QLatin1String(row.type))
            return &row;
    }
    return nullptr;
}

} // namespace

QString pane(const QString& type)
{
    const Row* row = find(type);
    return row ? QString::fromLatin1(row->pane) : QString();
}

QString dragIcon(const QString& type)
{
    const Row* row = find(type);
    return row ? QString::fromLatin1(row->dragIcon) : QString();
}

} // namespace nodetypes
