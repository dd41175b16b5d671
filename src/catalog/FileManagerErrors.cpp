#include "FileManagerErrors.h"

#include "RuntimeError.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace
{

constexpr int FirstCode = 100;

constexpr std::array<const char*, 17> meanings{
    "An attempt was made to (re)write a duplicate where duplicates are prohibited, or an attempt was made to "
    "REWRITE(F) "
    "where the primary key permiteed duplicates.",
    "The fd parameter does not reference an opened file.",
    "One of the arguments has a value with no defined meaning.",
    "The values of the keys are not valid.",
    "All isam file descriptors are used, you cannot open any more files.  Note that this is different gtom the values "
    "ENFIL and EMFILE that are returned by the operating system when it runs out of handles and can easily be "
    "corrected "
    "by increasing the value of MAXFDS in isport.h",
    "The isam file is corrupt, it must be repaired with DCHECK(I).",
    "Exclusive access to the file was not possible.",
    "Another process has a read-only lock on the requested record.",
    "The value of the key has already been established as a key.",
    "The requested function may not be performed on the primary key, as you have requested.",
    "The beginning or end of the file has already been reached.",
    "No record was found to match your request.",
    "There is no current record set at this time.",
    "The file has been exclusively locked by another, or if trying to establish an exclusive lock, another process is "
    "using the file.",
    "The name given for the file is too long.",
    "the lock file cannot be created. Presently not used by D-ISAM.",
    "malloc() cannot allocate the request.  Usually means out of memory, but possibly the allocation list is "
    "corrupted.",
};

} // namespace

bool filemanager::isMessage(const dao::Error& error)
{
    return error.Description.contains(QStringLiteral("isam"));
}

int filemanager::code(const dao::Error& error)
{
    const QString whole = '(' + QString::number(error.Number) + ") " + error.Description;
    const QString digits = whole.right(4).left(3);
    if (!std::all_of(digits.begin(), digits.end(), [](QChar digit) { return digit >= u'0' && digit <= u'9'; }))
        throw RuntimeError(ErrorNumber::TypeMismatch);
    return digits.toInt();
}

QString filemanager::meaning(int code)
{
    const int index = code - FirstCode;
    if (index < 0 || index >= static_cast<int>(meanings.size()))
        return QString::number(code);
    return QString::fromUtf8(meanings[static_cast<std::size_t>(index)]);
}

QString readableText(const dao::Errors& errors)
{
    QString text;
    for (int i = 0; i < errors.Count(); ++i) {
        const dao::Error& error = errors.Item(i);
        if (error.Number == static_cast<long>(ErrorNumber::OdbcFailed))
            continue;
        if (filemanager::isMessage(error)) {
            const int code = filemanager::code(error);
            text += "\nD-ISAM Error: " + QString::number(code) + " - " + filemanager::meaning(code) + '\n';
        } else {
            const QString hexadecimal = QString::number(static_cast<std::uint32_t>(error.Number), 16).toUpper();
            text += "\nError: &H" + hexadecimal + '\n' + QString(error.Description).replace(u'\r', u' ') + '\n';
        }
    }
    return text;
}
