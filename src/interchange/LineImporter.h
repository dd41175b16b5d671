#pragma once

#include "CsvColumns.h"
#include "CsvKind.h"
#include "clsCount.h"

#include <QHash>
#include <QString>
#include <QStringView>

class CConnection;
class Findings;

/// Writes the lines of a catalog's CSV file to a catalog, each as one INSERT. Fields and columns are numbered in the
/// order of the file, from 1 for each file and each table, whatever the catalog holds.
class LineImporter
{
public:
    LineImporter(CConnection& connection, Findings& findings) : m_connection(connection), m_findings(findings) {}

    /// Ignoring a failure loses the line alone.
    void ImportLine(int line, QStringView text);

private:
    /// The INSERT of a line, and what finds and removes its row again; all empty for a line of no known kind.
    struct Statements {
        QString insert;
        QString select;
        QString remove;
    };

    using Kind = CsvKind<Statements (LineImporter::*)()>;

    Statements build(int line, const QString& id);
    Statements buildFile();
    Statements buildField();
    Statements buildDatabase();
    Statements buildTable();
    Statements buildColumn();
    Statements buildUser();
    Statements buildDatabasePrivilege();
    Statements buildTablePrivilege();

    QString columnNumber();
    QString typeAttributes() const;

    /// A column as a value of a statement: its text as written or in upper case, or a number as it stands.
    QString text(int column) const;
    QString upper(int column) const;
    QString bare(int column) const;

    CConnection& m_connection;
    Findings& m_findings;
    CsvColumns m_columns;
    QHash<QString, clsCount> m_fieldNumbers;
    QHash<QString, clsCount> m_columnNumbers;
};
