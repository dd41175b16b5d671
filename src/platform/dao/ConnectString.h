#pragma once

#include <QString>
#include <QStringView>

/// Reads connect strings: "ODBC;" and then `keyword=value` parts with semicolons between them. A value in braces may
/// hold semicolons; two closing braces in it stand for one.
namespace dao::connectString
{

/// The text behind the leading "ODBC;", whatever its case; the whole text where that does not lead it.
QString withoutPrefix(const QString& connect);

/// The value of the first part with this keyword, whatever its case, without braces; empty where there is none.
QString value(const QString& connect, QStringView keyword);

/// The name of the datasource it leads to: `DSN`, or the path in `FILEDSN`.
QString datasource(const QString& connect);

} // namespace dao::connectString
