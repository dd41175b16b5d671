#include "CatalogNames.h"

#include "Database.h"
#include "Recordset.h"

using namespace Qt::StringLiterals;

namespace
{

/// Runs a statement and hands each row over.
template <class Take>
void read(dao::Database& db, const QString& statement, Take take)
{
    const auto rows = db.OpenRecordset(statement);
    for (; !rows->Eof(); rows->MoveNext())
        take(*rows);
}

} // namespace

QStringView CatalogKey::joined(std::initializer_list<QStringView> parts)
{
    m_text.resize(0);
    for (const QStringView part : parts)
        m_text.append(part);
    return m_text;
}

QStringView CatalogKey::apart(std::initializer_list<QStringView> parts)
{
    m_text.resize(0);
    for (const QStringView part : parts) {
        m_text.append(part);
        // No line of a file holds one.
        m_text.append(u'\n');
    }
    return m_text;
}

void CatalogNames::ReadCurrentCatalog(dao::Database& db, const Progress& progress)
{
    CatalogKey key;
    read(db, u"SELECT FILE_NAME FROM TW_FILE"_s, [&](const dao::Recordset& row) {
        progress("File", row.View(0));
        files.insert(row.View(0).toString(), Origin::Catalog);
    });
    read(db, u"SELECT FILE_NAME, FIELD_NAME, OFFSET FROM TW_FIELD"_s, [&](const dao::Recordset& row) {
        progress("Field", row.View(1));
        fields.insert(key.joined({row.View(0), row.View(1)}).toString(), Origin::Catalog);
    });
    read(db, u"SELECT DATABASE_NAME FROM TW_DB"_s, [&](const dao::Recordset& row) {
        progress("Database", row.View(0));
        databases.insert(row.View(0).toString(), Origin::Catalog);
    });
    read(db, u"SELECT DATABASE_NAME, TABLE_NAME, FILE_NAME FROM TW_TABLE"_s, [&](const dao::Recordset& row) {
        progress("Table", row.View(1));
        tables.insert(key.joined({row.View(0), row.View(1)}).toString(), Origin::Catalog);
    });
    read(db, u"SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NAME, COLUMN_NUMBER, FIELD_NAME, COLUMN_TYPE FROM TW_COLUMN"_s,
         [&](const dao::Recordset& row) {
             progress("Column", row.View(2));
             columnTypes.insert(key.apart({row.View(0), row.View(1), row.View(5), row.View(3)}).toString(),
                                Origin::Catalog);
             columnNames.insert(key.apart({row.View(0), row.View(1), row.View(2)}).toString(), Origin::Catalog);
             mappedFields.insert(key.apart({row.View(0), row.View(1), row.View(4)}).toString(), Origin::Catalog);
         });
    read(db, u"SELECT USER_NAME FROM TW_USER"_s, [&](const dao::Recordset& row) {
        progress("User", row.View(0));
        users.insert(row.View(0).toString(), Origin::Catalog);
    });
    read(db, u"SELECT DATABASE_NAME, USER_NAME FROM TW_DBPRV"_s, [&](const dao::Recordset& row) {
        progress("DBPRV", row.View(1));
        tables.insert(key.joined({row.View(0), u".", row.View(1)}).toString(), Origin::Catalog);
    });
    read(db, u"SELECT DATABASE_NAME, TABLE_NAME, USER_NAME FROM TW_TBLPRV"_s, [&](const dao::Recordset& row) {
        progress("TBLPRV", row.View(2));
        tables.insert(key.joined({row.View(0), row.View(1), u".", row.View(2)}).toString(), Origin::Catalog);
    });
}
