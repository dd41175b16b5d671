#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>
#include <vector>

/// A world of datasources for as long as it lives: the driver manager sees these and no others. Datasources of the
/// family are served by the bundled driver, each from a catalog file of its own that the driver makes on first use.
/// Give datasources of several fixtures in one process different names: driver managers remember what they have read.
/// One fixture lives at a time.
class CatalogFixture
{
public:
    CatalogFixture();
    ~CatalogFixture();
    CatalogFixture(const CatalogFixture&) = delete;
    CatalogFixture& operator=(const CatalogFixture&) = delete;

    /// A datasource of the family. Further entries are lines for its section, as "DefaultDatabase=SALES".
    void addDatasource(const QString& name, const QStringList& entries = {});
    /// A datasource of the family among the system's, with a catalog file that no other one has.
    void addSystemDatasource(const QString& name);
    /// A datasource whose driver is listed under this description; it can't be opened.
    void addForeignDatasource(const QString& name, const QString& driver);
    /// A datasource of the family whose catalog file lies in a folder that does not exist.
    void addUnreachableDatasource(const QString& name);
    void removeDatasource(const QString& name);
    /// A file datasource of the family; the path ends in ".dsn".
    QString addFileDatasource(const QString& name);

    QString folder() const { return m_folder.path(); }
    QString catalogFile(const QString& datasource) const;
    QString systemCatalogFile(const QString& datasource) const;
    /// The folder of odbcinst.ini and of the system's odbc.ini, one for the whole process: driver managers keep the
    /// first one that they are told of.
    static QString systemFolder();

    using Row = QStringList;
    /// The rows of a SELECT, read past the driver; a null shows as "<null>".
    std::vector<Row> rows(const QString& datasource, const QString& statement) const;
    /// The first value of the first row; fails the test without one.
    QString value(const QString& datasource, const QString& statement) const;
    /// Changes a catalog past the driver. The file must be there: connect once before.
    void run(const QString& datasource, const QString& statement) const;
    /// The statements that the driver has received for a datasource, in order.
    QStringList driverLog(const QString& datasource) const;

private:
    struct Variable {
        QByteArray name;
        std::optional<QByteArray> former;
    };

    void set(const QByteArray& variable, const QString& value);
    void addSection(const QString& name, const QStringList& entries);
    static void writeIni(const QString& fileName, const QStringList& lines);
    QString logFile(const QString& datasource) const;

    QTemporaryDir m_folder;
    std::vector<Variable> m_variables;
    QStringList m_datasources;
    QStringList m_systemDatasources;
};
