#include "DBEngine.h"

#include "Odbc.h"
#include "OdbcDatabase.h"
#include "RuntimeError.h"
#include "Step.h"

#include <odbcinst.h>

namespace dao
{

namespace
{

StatementObserver* theObserver = nullptr;

class OdbcWorkspace final : public Workspace
{
public:
    std::unique_ptr<Database> OpenDatabase(const QString&, const QString& connect) override
    {
        return step([&]() -> std::unique_ptr<Database> {
            DBEngine::Errors().Clear();
            odbc::forgetIniFiles();
            if (!*m_environment)
                *m_environment = odbc::makeEnvironment();
            return std::make_unique<OdbcDatabase>(m_environment, connect);
        });
    }

private:
    /// Databases may outlive the workspace.
    std::shared_ptr<odbc::Environment> m_environment = std::make_shared<odbc::Environment>(odbc::makeEnvironment());
};

/// The text without the blanks at its ends. Other white space may belong to a name.
QString withoutBlanks(QString text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    while (text.startsWith(u' '))
        text.remove(0, 1);
    return text;
}

} // namespace

const Error& Errors::Item(int index) const
{
    if (index < 0 || index >= Count())
        throw RuntimeError(ErrorNumber::ItemNotFound);
    return m_errors[static_cast<std::size_t>(index)];
}

StatementObserver* odbc::observer()
{
    return theObserver;
}

void odbc::forgetIniFiles()
{
    SQLWritePrivateProfileString("forget", "all", "", "/dev/null");
}

namespace DBEngine
{

dao::Errors& Errors()
{
    static dao::Errors chain;
    return chain;
}

std::unique_ptr<Workspace> CreateWorkspace(const QString&, const QString&, const QString&, int)
{
    return std::make_unique<OdbcWorkspace>();
}

StatementObserver* setObserver(StatementObserver* observer)
{
    return std::exchange(theObserver, observer);
}

std::vector<DataSource> DataSources()
{
    std::vector<DataSource> sources;
    odbc::forgetIniFiles();
    const odbc::Environment environment = odbc::makeEnvironment();
    if (!environment)
        return sources;
    // The narrow listing: the wide one gives each byte of a name as a character of its own.
    constexpr SQLSMALLINT size = 1024;
    SQLCHAR name[size] = {};
    SQLCHAR description[size] = {};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT descriptionLength = 0;
    while (SQLDataSources(environment.get(), SQL_FETCH_NEXT, name, size, &nameLength, description, size,
                          &descriptionLength) == SQL_SUCCESS) {
        sources.push_back(
            {withoutBlanks(odbc::fromNarrow(name, std::min<SQLSMALLINT>(nameLength, size))),
             withoutBlanks(odbc::fromNarrow(description, std::min<SQLSMALLINT>(descriptionLength, size)))});
    }
    return sources;
}

QString GetPrivateProfileString(const QString& section, const QString& key, const QString& defaultValue)
{
    // An empty section or key would ask for a list of them.
    if (section.isEmpty() || key.isEmpty())
        return defaultValue;
    odbc::forgetIniFiles();
    constexpr int characters = 255;
    char value[4 * characters + 1] = {};
    SQLGetPrivateProfileString(section.toUtf8().constData(), key.toUtf8().constData(),
                               defaultValue.toUtf8().constData(), value, static_cast<int>(sizeof value), "ODBC.INI");
    return odbc::fromNarrow(reinterpret_cast<const SQLCHAR*>(value), sizeof value).left(characters);
}

} // namespace DBEngine

} // namespace dao
