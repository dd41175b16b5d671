#pragma once

#include "CatalogNames.h"
#include "CsvColumns.h"
#include "CsvKind.h"

#include <QString>
#include <QStringView>

#include <initializer_list>

class CConnection;
class Findings;

/// Checks the lines of a catalog's CSV file one after the other, against the catalog and the lines before them, and
/// tells what it finds. It writes nothing. Within a line the rules run in their order, and the first error ends it.
class LineValidator
{
public:
    /// The names hold the catalog's by now; lines that pass add theirs.
    LineValidator(CConnection& connection, CatalogNames& names, Findings& findings)
        : m_connection(connection), m_names(names), m_findings(findings)
    {
    }

    /// Raises 3146 where the catalog can't be asked, 9 for a FILE line of 4 columns whose names are right, and 6 for a
    /// FIELD line of 6 columns whose type has a default out of range.
    void validate(int line, QStringView text);

private:
    using Kind = CsvKind<void (LineValidator::*)()>;

    void validateFile();
    void validateField();
    void validateDatabase();
    void validateTable();
    void validateColumn();
    bool validateColumnType();
    void validateUser();
    void validateDatabasePrivilege();
    void validateTablePrivilege();

    QStringView col(int number) const { return m_columns[number]; }
    void raise(std::initializer_list<int> columns);
    /// Each tells of the error that it finds.
    bool fewerThan(int columns, const char* description);
    bool notExactly(int columns, const char* description);
    bool notOneOf(int column, std::initializer_list<const char*> names) const;
    /// Whether a column is no number from 0 to `high`; the message has the column between its two parts, if it has two.
    bool outside(int column, int high, const char* before, const char* behind = nullptr);
    bool IsValidLOCDT(QStringView name) const;
    bool IsValidSQLDT(QStringView name) const;
    bool IsValidDriverName(const QString& name) const;

    void error(const QString& description, const QString& type = {});
    void warn(const QString& description, const QString& type = {});
    void passed();

    CConnection& m_connection;
    CatalogNames& m_names;
    Findings& m_findings;
    CsvColumns m_columns;
    int m_line = 0;
    QStringView m_id;
    CatalogKey m_key;
};

/// Whether a text is a number from low to high, both included.
bool IsValidNumeric(QStringView value, double low, double high);
