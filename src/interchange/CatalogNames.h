#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <functional>
#include <initializer_list>

namespace dao
{
class Database;
}

/// The names that the lines of a CSV file are checked against: those of the catalog, and those of the lines before.
/// Keys compare exactly.
class CatalogNames
{
public:
    enum class Origin : char { Catalog = '*', Csv = ' ' };
    using Set = QHash<QString, Origin>;

    /// By FILE_NAME.
    Set files;
    /// By FILE_NAME and FIELD_NAME.
    Set fields;
    /// By DATABASE_NAME.
    Set databases;
    /// By DATABASE_NAME and TABLE_NAME. The keys of the catalog's privileges stand here too.
    Set tables;
    /// The file of a table, by TABLE_NAME alone; from lines of the file only.
    QHash<QString, QString> tableFiles;
    /// By database, table, column type and number; from the catalog only, as are the next two.
    Set columnTypes;
    /// By database, table and column.
    Set columnNames;
    /// By database, table and field.
    Set mappedFields;
    /// By USER_NAME.
    Set users;
    /// By user and database. It stays empty: what is in the catalog is left to the catalog to refuse.
    Set databasePrivileges;
    /// By user, database and table; from lines of the file only.
    Set tablePrivileges;

    /// Told of each row before it is taken in: what it is and its name.
    using Progress = std::function<void(const char* kind, QStringView name)>;

    /// Adds all names of the catalog. Raises 3146.
    void ReadCurrentCatalog(dao::Database& db, const Progress& progress);
};

/// Makes keys of several parts, each in the memory of the one before: a key is valid until the next one.
class CatalogKey
{
public:
    /// With nothing between the parts, as fields, tables and privileges are known by.
    QStringView joined(std::initializer_list<QStringView> parts);
    /// With the parts kept apart, as in the three sets of columns.
    QStringView apart(std::initializer_list<QStringView> parts);

private:
    QString m_text;
};
