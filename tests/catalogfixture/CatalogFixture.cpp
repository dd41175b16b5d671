#include "CatalogFixture.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>

#include <functional>
#include <memory>

namespace
{

constexpr const char* Family = "Tarnwick ODBC";

struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using Sqlite = std::unique_ptr<sqlite3, CloseDatabase>;

Sqlite openCatalog(const QString& file)
{
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(QFile::encodeName(file).constData(), &database, SQLITE_OPEN_READWRITE, nullptr);
    Sqlite owned(database);
    if (result != SQLITE_OK) {
        ADD_FAILURE() << "no catalog " << file.toStdString() << ": " << sqlite3_errstr(result);
        return nullptr;
    }
    sqlite3_busy_timeout(database, 5000);
    return owned;
}

void forEachRow(const QString& file, const QString& statement, const std::function<void(sqlite3_stmt*)>& row)
{
    const Sqlite database = openCatalog(file);
    if (!database)
        return;
    sqlite3_stmt* prepared = nullptr;
    int result = sqlite3_prepare_v2(database.get(), statement.toUtf8().constData(), -1, &prepared, nullptr);
    while (result == SQLITE_OK || result == SQLITE_ROW) {
        result = sqlite3_step(prepared);
        if (result == SQLITE_ROW)
            row(prepared);
    }
    sqlite3_finalize(prepared);
    if (result != SQLITE_DONE)
        ADD_FAILURE() << statement.toStdString() << ": " << sqlite3_errmsg(database.get());
}

QString cell(sqlite3_stmt* statement, int column)
{
    if (sqlite3_column_type(statement, column) == SQLITE_NULL)
        return QStringLiteral("<null>");
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                             sqlite3_column_bytes(statement, column));
}

} // namespace

CatalogFixture::CatalogFixture()
{
    writeIni(systemFolder() + "/odbcinst.ini", {QStringLiteral("[%1]").arg(Family), "Driver=" TARNWICKODBC_LIBRARY});
    writeIni(systemFolder() + "/odbc.ini", {});
    writeIni(folder() + "/user.ini", {});
    // The system's folder holds the drivers and the system's datasources; the user's are in the file.
    set("ODBCSYSINI", systemFolder());
    set("ODBCINI", folder() + "/user.ini");
}

CatalogFixture::~CatalogFixture()
{
    writeIni(systemFolder() + "/odbc.ini", {});
    for (const Variable& variable : m_variables) {
        if (variable.former)
            qputenv(variable.name.constData(), *variable.former);
        else
            qunsetenv(variable.name.constData());
    }
}

void CatalogFixture::addDatasource(const QString& name, const QStringList& entries)
{
    addSection(name, QStringList{QStringLiteral("Driver=%1").arg(Family), "Catalog=" + catalogFile(name),
                                 "StatementLog=" + logFile(name)} +
                         entries);
}

void CatalogFixture::addForeignDatasource(const QString& name, const QString& driver)
{
    addSection(name, {"Driver=" + driver});
}

void CatalogFixture::addUnreachableDatasource(const QString& name)
{
    addSection(name, {QStringLiteral("Driver=%1").arg(Family), "Catalog=" + folder() + "/nowhere/catalog.db"});
}

void CatalogFixture::removeDatasource(const QString& name)
{
    const qsizetype begin = m_datasources.indexOf('[' + name + ']');
    ASSERT_GE(begin, 0) << name.toStdString();
    // A section ends in an empty line.
    m_datasources.remove(begin, m_datasources.indexOf(QString(), begin) + 1 - begin);
    writeIni(folder() + "/user.ini", m_datasources);
}

void CatalogFixture::addSystemDatasource(const QString& name)
{
    m_systemDatasources.append(
        {'[' + name + ']', QStringLiteral("Driver=%1").arg(Family), "Catalog=" + systemCatalogFile(name), QString()});
    writeIni(systemFolder() + "/odbc.ini", m_systemDatasources);
}

QString CatalogFixture::addFileDatasource(const QString& name)
{
    const QString fileName = folder() + '/' + name + ".dsn";
    writeIni(fileName, {"[ODBC]", QStringLiteral("DRIVER=%1").arg(Family), "Catalog=" + catalogFile(name)});
    return fileName;
}

QString CatalogFixture::systemFolder()
{
    static const QTemporaryDir folder;
    return folder.path();
}

QString CatalogFixture::catalogFile(const QString& datasource) const
{
    return folder() + '/' + datasource + ".catalog";
}

QString CatalogFixture::systemCatalogFile(const QString& datasource) const
{
    return folder() + '/' + datasource + ".system catalog";
}

QString CatalogFixture::logFile(const QString& datasource) const
{
    return folder() + '/' + datasource + ".log";
}

std::vector<CatalogFixture::Row> CatalogFixture::rows(const QString& datasource, const QString& statement) const
{
    std::vector<Row> rows;
    forEachRow(catalogFile(datasource), statement, [&](sqlite3_stmt* prepared) {
        Row row;
        for (int column = 0; column < sqlite3_column_count(prepared); ++column)
            row.append(cell(prepared, column));
        rows.push_back(row);
    });
    return rows;
}

QString CatalogFixture::value(const QString& datasource, const QString& statement) const
{
    const std::vector<Row> found = rows(datasource, statement);
    if (found.empty() || found.front().isEmpty()) {
        ADD_FAILURE() << "no row: " << statement.toStdString();
        return {};
    }
    return found.front().front();
}

void CatalogFixture::run(const QString& datasource, const QString& statement) const
{
    forEachRow(catalogFile(datasource), statement, [](sqlite3_stmt*) {});
}

QStringList CatalogFixture::driverLog(const QString& datasource) const
{
    QFile file(logFile(datasource));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
}

void CatalogFixture::set(const QByteArray& variable, const QString& value)
{
    std::optional<QByteArray> former;
    if (qEnvironmentVariableIsSet(variable.constData()))
        former = qgetenv(variable.constData());
    m_variables.push_back({variable, former});
    qputenv(variable.constData(), QFile::encodeName(value));
}

void CatalogFixture::addSection(const QString& name, const QStringList& entries)
{
    m_datasources.append(QStringList{'[' + name + ']'} + entries + QStringList{QString()});
    writeIni(folder() + "/user.ini", m_datasources);
}

void CatalogFixture::writeIni(const QString& fileName, const QStringList& lines)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(lines.join('\n').toUtf8() + '\n') < 0)
        ADD_FAILURE() << file.errorString().toStdString();
}
