#include "TextFile.h"

#include "RuntimeError.h"

#include <QSaveFile>

#include <cerrno>

void writeTextFile(const QString& path, const QString& text)
{
    QSaveFile file(path);
    const auto fail = [&] {
        if (errno != 0)
            throw RuntimeError::fromErrno(errno);
        throw RuntimeError(ErrorNumber::PathFileAccess, file.errorString());
    };
    errno = 0;
    if (!file.open(QIODevice::WriteOnly))
        fail();
    file.write(text.toUtf8());
    errno = 0;
    if (!file.commit())
        fail();
}
