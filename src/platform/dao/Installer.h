#pragma once

#include "DatasourceFamily.h"

#include <QString>

#include <vector>

/// The driver manager's own data: which files it reads, which drivers it knows, and the datasources of one driver,
/// which can be added, changed, removed and tried.
///
/// What the installer library refuses, or would not read back as it was given, is refused before a file is touched. A
/// file is written whole or stays as it was; comments and other sections in it stay as they are, byte for byte. What
/// was written is seen at once, here and by the driver; only which driver a datasource has, once looked up, is
/// remembered by the driver manager for 20 seconds.
namespace dao::Installer
{

/// Whose file a datasource stands in.
enum class Scope { User, System };

/// The files in use, as ODBCSYSINI, ODBCINSTINI and ODBCINI or the driver manager's defaults have it. They need not
/// exist.
struct IniFiles {
    QString Drivers;
    QString SystemDatasources;
    QString UserDatasources;
};

struct Driver {
    QString Name;
    QString Description;
    /// The path or name of its library.
    QString Library;
};

struct Key {
    QString Name;
    QString Value;
    bool operator==(const Key&) const = default;
};

struct Datasource {
    QString Name;
    Scope Where = Scope::User;
    /// The file that it stands in.
    QString File;
    /// All keys in the file's order but `Driver`.
    std::vector<Key> Keys;
};

/// How a trial connection went.
struct Trial {
    bool Connected = false;
    /// The messages of the driver manager, the driver and the loader, one a line; after success, that it worked.
    QString Text;
};

IniFiles iniFiles();
/// The file of that scope.
QString iniFile(Scope scope);

std::vector<Driver> drivers();

/// The datasources of a driver, the user's first, in the order of their files. A missing file has none, nor has one
/// that can't be read; why it can't is added to the complaints.
std::vector<Datasource> datasources(const QString& driver = familyDriver, QStringList* complaints = nullptr);

/// Each of these raises 5 with the reason for a name, a driver or a key that can't stand in the file, and 61, 75 or 76
/// for a file that can't be written; then the file is as it was. Keys without a value are left out. A key `Driver` is
/// ignored. Raises 457 for a name that stands in the file already.
void addDatasource(Scope scope, const QString& name, const QString& driver, const std::vector<Key>& keys);
/// Gives a datasource these keys and no others, and another name if `newName` is one. Raises 3265 for a datasource that
/// is not in the file, 457 for a new name that is.
void changeDatasource(Scope scope, const QString& name, const std::vector<Key>& keys, const QString& newName = {});
/// Raises 3265 for a datasource that is not in the file.
void removeDatasource(Scope scope, const QString& name);

/// Connects to a datasource and disconnects. No step; the error chain is empty afterwards.
Trial tryDatasource(const QString& name);

} // namespace dao::Installer
