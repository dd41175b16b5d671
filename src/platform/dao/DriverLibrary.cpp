#include "DriverLibrary.h"

#include <QFile>

#include <dlfcn.h>

namespace dao
{

namespace
{

/// The path between the apostrophes of "Can't open lib '...' : reason", or an empty text.
QString unopenedLibrary(const QString& description)
{
    static const QString opening = QStringLiteral("Can't open lib '");
    const qsizetype start = description.indexOf(opening);
    if (start < 0)
        return {};
    const qsizetype from = start + opening.size();
    qsizetype end = description.lastIndexOf(QStringLiteral("' : "));
    if (end < from)
        end = description.lastIndexOf(u'\'');
    return end > from ? description.sliced(from, end - from) : QString();
}

QString loadersReason(const QString& path)
{
    dlerror();
    void* library = dlopen(QFile::encodeName(path).constData(), RTLD_LAZY | RTLD_LOCAL);
    if (library) {
        dlclose(library);
        return {};
    }
    const char* reason = dlerror();
    return reason ? QString::fromLocal8Bit(reason) : QString();
}

} // namespace

void explainUnloadableLibrary(std::vector<Error>& records)
{
    for (std::size_t index = 0; index < records.size(); ++index) {
        const QString path = unopenedLibrary(records[index].Description);
        if (path.isEmpty())
            continue;
        const QString reason = loadersReason(path);
        if (!reason.isEmpty())
            records.push_back({0, reason});
        return;
    }
}

} // namespace dao
