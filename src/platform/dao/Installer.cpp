#include "Installer.h"

#include "Connection.h"
#include "IniText.h"
#include "RuntimeError.h"
#include "WholeFile.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <odbcinst.h>

#include <array>
#include <cstdio>

/// Exported by unixODBC's installer library, which declares them only to itself: where it looks for its files. They
/// fill whole buffers of the system's longest path.
extern "C" {
char* odbcinst_system_file_path(char* buffer);
char* odbcinst_system_file_name(char* buffer);
char* odbcinst_user_file_path(char* buffer);
}

namespace dao::Installer
{

namespace
{

const QString driverKey = QStringLiteral("Driver");
/// An index of names and drivers that some tools keep in the same file; it is kept right where there is one.
const QByteArray indexSection = "ODBC Data Sources";
/// The installer library writes beyond its buffers from about a thousand bytes a line on.
constexpr qsizetype longestLine = 980;

[[noreturn]] void refuse(const QString& reason)
{
    throw RuntimeError(ErrorNumber::FailedCall, reason);
}

/// Raises the installer library's own messages.
[[noreturn]] void refuseWithInstallersWords(const QString& what)
{
    QStringList messages;
    for (WORD number = 1; number <= 8; ++number) {
        DWORD code = 0;
        WORD length = 0;
        std::array<SQLCHAR, 1024> text{};
        const RETCODE result = SQLInstallerError(number, &code, reinterpret_cast<char*>(text.data()),
                                                 static_cast<WORD>(text.size()), &length);
        if (result != SQL_SUCCESS && result != SQL_SUCCESS_WITH_INFO)
            break;
        messages << odbc::fromNarrow(text.data(), static_cast<qsizetype>(text.size()));
    }
    refuse(messages.isEmpty() ? what : what + QStringLiteral(" ") + messages.join(QStringLiteral(" ")));
}

/// The values of an entry, or the names of the sections or keys, as the installer library reads them.
QByteArray readProfile(const char* section, const char* key, const QByteArray& file)
{
    QByteArray buffer(256 * 1024, '\0');
    const int length =
        SQLGetPrivateProfileString(section, key, "", buffer.data(), static_cast<int>(buffer.size()), file.constData());
    return length > 0 ? buffer.left(length) : QByteArray();
}

QByteArray readEntry(const QByteArray& section, const QByteArray& key, const QByteArray& file)
{
    return readProfile(section.constData(), key.constData(), file);
}

/// Names once each, in their order.
std::vector<QByteArray> readNames(const char* section, const QByteArray& file)
{
    std::vector<QByteArray> names;
    for (const QByteArray& name : readProfile(section, nullptr, file).split('\0')) {
        const auto isSame = [&](const QByteArray& other) { return other.compare(name, Qt::CaseInsensitive) == 0; };
        if (!name.isEmpty() && std::none_of(names.begin(), names.end(), isSame))
            names.push_back(name);
    }
    return names;
}

QString decoded(const QByteArray& bytes)
{
    return odbc::fromNarrow(reinterpret_cast<const SQLCHAR*>(bytes.constData()), bytes.size());
}

void requireName(const QString& name)
{
    if (name.trimmed() != name || name.contains(u'\n') || name.contains(u'\r') || name.toUtf8().size() > longestLine ||
        !SQLValidDSN(name.toUtf8().constData()))
        refuse(QStringLiteral(
                   "'%1' can't be the name of a datasource: it has one to %2 bytes, no blanks at its ends and none "
                   "of the characters []{}(),;?*=!@\\.")
                   .arg(name)
                   .arg(SQL_MAX_DSN_LENGTH));
    const QByteArray bytes = name.toUtf8();
    for (const QByteArray& reserved : {QByteArray("ODBC"), indexSection})
        if (bytes.compare(reserved, Qt::CaseInsensitive) == 0)
            refuse(QStringLiteral("'%1' can't be the name of a datasource: the driver manager uses it.").arg(name));
}

IniText::Entries entriesOf(const QString& driver, const std::vector<Key>& keys)
{
    IniText::Entries entries{{driverKey.toUtf8(), driver.trimmed().toUtf8()}};
    for (const Key& key : keys) {
        const QByteArray name = key.Name.trimmed().toUtf8();
        const QByteArray value = key.Value.trimmed().toUtf8();
        if (key.Name.trimmed().compare(driverKey, Qt::CaseInsensitive) == 0 || value.isEmpty())
            continue;
        if (std::any_of(entries.begin(), entries.end(),
                        [&](const auto& entry) { return entry.first.compare(name, Qt::CaseInsensitive) == 0; }))
            refuse(QStringLiteral("The key '%1' is given twice.").arg(key.Name));
        entries.emplace_back(name, value);
    }
    for (const auto& [name, value] : entries) {
        if (name.isEmpty() || name.contains('=') || name.startsWith('[') || name.startsWith('#') ||
            name.startsWith(';'))
            refuse(QStringLiteral("'%1' can't be the name of a key.").arg(decoded(name)));
        for (const QByteArray& text : {name, value})
            if (text.contains('\n') || text.contains('\r') || text.contains('\0'))
                refuse(QStringLiteral("The key '%1' can't hold more than one line.").arg(decoded(name)));
        if (name.size() + value.size() > longestLine)
            refuse(QStringLiteral("The value of '%1' is too long: name and value have %2 bytes at the most.")
                       .arg(decoded(name))
                       .arg(longestLine));
    }
    if (entries.front().second.isEmpty())
        refuse(QStringLiteral("A datasource needs a driver."));
    return entries;
}

/// True when the installer library reads these entries in that order and no others.
bool standsIn(const QByteArray& file, const QByteArray& section, const IniText::Entries& entries)
{
    odbc::forgetIniFiles();
    if (readNames(section.constData(), file).size() != entries.size())
        return false;
    return std::all_of(entries.begin(), entries.end(),
                       [&](const auto& entry) { return readEntry(section, entry.first, file) == entry.second; });
}

/// Lets the installer library write the section into a file of its own and looks whether it reads the same back.
void rehearse(const QByteArray& section, const IniText::Entries& entries)
{
    const QTemporaryDir folder;
    if (!folder.isValid())
        throw RuntimeError(ErrorNumber::PathFileAccess, folder.errorString());
    const QByteArray file = QFile::encodeName(folder.filePath(QStringLiteral("odbc.ini")));
    for (const auto& [key, value] : entries)
        if (!SQLWritePrivateProfileString(section.constData(), key.constData(), value.constData(), file.constData()))
            refuseWithInstallersWords(QStringLiteral("The key '%1' can't be written.").arg(decoded(key)));
    if (!standsIn(file, section, entries))
        refuse(
            QStringLiteral("The datasource '%1' can't be kept: the driver manager would not read it as it was given.")
                .arg(decoded(section)));
}

/// Writes the new text, looks at it through the installer library, and brings the former file back if that is not what
/// it should be.
template <class Check>
void store(const QString& path, const std::optional<QByteArray>& former, const IniText& text, Check isRight)
{
    wholeFile::write(path, text.text());
    odbc::forgetIniFiles();
    if (wholeFile::read(path) == text.text() && isRight(QFile::encodeName(path)))
        return;
    wholeFile::restore(path, former);
    odbc::forgetIniFiles();
    throw RuntimeError(ErrorNumber::PathFileAccess,
                       QStringLiteral("The file '%1' did not take the change and is as it was.").arg(path));
}

void requireThere(const IniText& text, const QByteArray& section, const QString& path)
{
    if (!text.hasSection(section))
        throw RuntimeError(ErrorNumber::ItemNotFound,
                           QStringLiteral("The datasource '%1' is not in the file '%2'.").arg(decoded(section), path));
}

void requireAbsent(const IniText& text, const QByteArray& section, const QString& path)
{
    if (text.hasSection(section))
        throw RuntimeError(
            ErrorNumber::KeyAlreadyThere,
            QStringLiteral("The datasource '%1' is in the file '%2' already.").arg(decoded(section), path));
}

} // namespace

IniFiles iniFiles()
{
    std::array<char, 2 * FILENAME_MAX> path{};
    std::array<char, 2 * FILENAME_MAX> name{};
    IniFiles files;
    const QString system = QFile::decodeName(odbcinst_system_file_path(path.data()));
    files.Drivers = system + u'/' + QFile::decodeName(odbcinst_system_file_name(name.data()));
    files.SystemDatasources = system + QStringLiteral("/odbc.ini");
    files.UserDatasources = qEnvironmentVariable("ODBCINI");
    if (files.UserDatasources.isEmpty())
        files.UserDatasources = QFile::decodeName(odbcinst_user_file_path(path.data())) + QStringLiteral("/.odbc.ini");
    return files;
}

QString iniFile(Scope scope)
{
    const IniFiles files = iniFiles();
    return scope == Scope::User ? files.UserDatasources : files.SystemDatasources;
}

std::vector<Driver> drivers()
{
    odbc::forgetIniFiles();
    std::vector<Driver> found;
    for (const QByteArray& name : readNames(nullptr, "ODBCINST.INI")) {
        if (name.compare("ODBC", Qt::CaseInsensitive) != 0)
            found.push_back({decoded(name), decoded(readEntry(name, "Description", "ODBCINST.INI")),
                             decoded(readEntry(name, "Driver", "ODBCINST.INI"))});
    }
    return found;
}

std::vector<Datasource> datasources(const QString& driver, QStringList* complaints)
{
    odbc::forgetIniFiles();
    std::vector<Datasource> found;
    for (const Scope scope : {Scope::User, Scope::System}) {
        const QString path = iniFile(scope);
        try {
            if (!wholeFile::read(path))
                continue;
        } catch (const RuntimeError& error) {
            if (complaints)
                complaints->append(error.description());
            continue;
        }
        const QByteArray file = QFile::encodeName(QFileInfo(path).absoluteFilePath());
        for (const QByteArray& section : readNames(nullptr, file)) {
            if (decoded(readEntry(section, driverKey.toUtf8(), file)) != driver)
                continue;
            Datasource source{decoded(section), scope, path, {}};
            for (const QByteArray& key : readNames(section.constData(), file))
                if (decoded(key).compare(driverKey, Qt::CaseInsensitive) != 0)
                    source.Keys.push_back({decoded(key), decoded(readEntry(section, key, file))});
            found.push_back(std::move(source));
        }
    }
    return found;
}

void addDatasource(Scope scope, const QString& name, const QString& driver, const std::vector<Key>& keys)
{
    requireName(name);
    const QByteArray section = name.toUtf8();
    const IniText::Entries entries = entriesOf(driver, keys);
    const QString path = iniFile(scope);
    const std::optional<QByteArray> former = wholeFile::read(path);
    IniText text(former.value_or(QByteArray()));
    requireAbsent(text, section, path);
    rehearse(section, entries);

    if (text.hasSection(indexSection))
        text.setEntry(indexSection, section, entries.front().second);
    text.setEntries(section, entries);
    store(path, former, text, [&](const QByteArray& file) { return standsIn(file, section, entries); });
}

void changeDatasource(Scope scope, const QString& name, const std::vector<Key>& keys, const QString& newName)
{
    const QByteArray section = name.toUtf8();
    const QByteArray newSection = newName.isEmpty() ? section : newName.toUtf8();
    const QString path = iniFile(scope);
    const std::optional<QByteArray> former = wholeFile::read(path);
    IniText text(former.value_or(QByteArray()));
    requireThere(text, section, path);
    if (newSection != section) {
        requireName(newName);
        if (newSection.compare(section, Qt::CaseInsensitive) != 0)
            requireAbsent(text, newSection, path);
    }
    odbc::forgetIniFiles();
    const QByteArray driver = readEntry(section, driverKey.toUtf8(), QFile::encodeName(path));
    const IniText::Entries entries = entriesOf(decoded(driver), keys);
    rehearse(newSection, entries);

    if (newSection != section) {
        text.renameSection(section, newSection);
        if (text.hasSection(indexSection)) {
            text.removeEntry(indexSection, section);
            text.setEntry(indexSection, newSection, driver);
        }
    }
    text.setEntries(newSection, entries);
    store(path, former, text, [&](const QByteArray& file) { return standsIn(file, newSection, entries); });
}

void removeDatasource(Scope scope, const QString& name)
{
    const QByteArray section = name.toUtf8();
    const QString path = iniFile(scope);
    const std::optional<QByteArray> former = wholeFile::read(path);
    IniText text(former.value_or(QByteArray()));
    requireThere(text, section, path);
    text.removeSection(section);
    text.removeEntry(indexSection, section);
    store(path, former, text, [&](const QByteArray& file) { return readNames(section.constData(), file).empty(); });
}

Trial tryDatasource(const QString& name)
{
    Trial trial;
    dao::Errors& chain = DBEngine::Errors();
    chain.Clear();
    odbc::forgetIniFiles();
    try {
        const auto environment = std::make_shared<odbc::Environment>(odbc::makeEnvironment());
        Connection::open(environment, QStringLiteral("DSN=%1;DATABASE=PUBS").arg(name))->close();
        trial = {true, QStringLiteral("The connection to '%1' was made and closed again.").arg(name)};
    } catch (const RuntimeError& error) {
        QStringList messages;
        // The last entry only says that there are others.
        for (int index = 0; index + 1 < chain.Count(); ++index)
            messages << chain.Item(index).Description;
        trial.Text = messages.isEmpty() ? error.description() : messages.join(u'\n');
    }
    chain.Clear();
    return trial;
}

} // namespace dao::Installer
