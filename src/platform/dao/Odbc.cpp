#include "Odbc.h"

#include "RuntimeError.h"

#include <QStringDecoder>

#include <algorithm>
#include <clocale>
#include <cstring>
#include <langinfo.h>
#include <limits>

namespace dao::odbc
{

QString fromWide(const SQLWCHAR* text, qsizetype length)
{
    const auto* characters = reinterpret_cast<const char16_t*>(text);
    const char16_t* end = std::find(characters, characters + std::max<qsizetype>(length, 0), u'\0');
    return QString(reinterpret_cast<const QChar*>(characters), end - characters);
}

QString fromNarrow(const SQLCHAR* text, qsizetype length)
{
    const auto* bytes = reinterpret_cast<const char*>(text);
    const char* end = std::find(bytes, bytes + std::max<qsizetype>(length, 0), '\0');
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(QByteArrayView(bytes, end - bytes));
    // Bytes of an older encoding show at least as their own code points.
    return decoder.hasError() ? QString::fromLatin1(bytes, end - bytes) : decoded;
}

QByteArray toNarrow(const QString& text)
{
    if (text.isValidUtf16())
        return text.toUtf8();
    QByteArray bytes;
    qsizetype done = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const bool pair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        if (pair) {
            ++at;
        } else if (text[at].isSurrogate()) {
            const char16_t unit = text[at].unicode();
            bytes += QStringView(text).sliced(done, at - done).toUtf8();
            bytes += static_cast<char>(0xE0 | (unit >> 12));
            bytes += static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
            bytes += static_cast<char>(0x80 | (unit & 0x3F));
            done = at + 1;
        }
    }
    return bytes + QStringView(text).sliced(done).toUtf8();
}

Environment makeEnvironment()
{
    Environment environment(nullptr);
    if (environment)
        SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    return environment;
}

namespace
{

template <class Character, class Read>
bool readRecord(Read read, Error& record, bool& isWarning, QString (*decode)(const Character*, qsizetype))
{
    std::vector<Character> text(1024);
    for (;;) {
        Character state[6] = {};
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        if (!SQL_SUCCEEDED(read(state, &native, text.data(), static_cast<SQLSMALLINT>(text.size()), &length)))
            return false;
        constexpr std::size_t longest = std::numeric_limits<SQLSMALLINT>::max();
        if (static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0)) >= text.size() && text.size() < longest) {
            text.resize(std::min<std::size_t>(static_cast<std::size_t>(length) + 1, longest));
            continue;
        }
        isWarning = state[0] == '0' && state[1] == '1';
        record.Number = native;
        record.Description = decode(text.data(), std::min<qsizetype>(length, static_cast<qsizetype>(text.size()) - 1));
        return true;
    }
}

} // namespace

std::vector<Error> diagnostics(SQLSMALLINT type, SQLHANDLE handle, Encoding encoding, Warnings warnings)
{
    std::vector<Error> records;
    for (SQLSMALLINT number = 1; number < std::numeric_limits<SQLSMALLINT>::max(); ++number) {
        Error record;
        bool isWarning = false;
        const bool found =
            encoding == Encoding::Wide
                ? readRecord<SQLWCHAR>(
                      [&](auto... arguments) { return SQLGetDiagRecW(type, handle, number, arguments...); }, record,
                      isWarning, fromWide)
                : readRecord<SQLCHAR>(
                      [&](auto... arguments) { return SQLGetDiagRec(type, handle, number, arguments...); }, record,
                      isWarning, fromNarrow);
        if (!found)
            break;
        if (!isWarning || warnings == Warnings::Kept)
            records.push_back(std::move(record));
    }
    return records;
}

void fail(std::vector<Error> records)
{
    dao::Errors& chain = DBEngine::Errors();
    chain.Clear();
    for (Error& record : records)
        chain.Append(std::move(record));
    const RuntimeError error(ErrorNumber::OdbcFailed, QStringLiteral("ODBC--call failed."));
    chain.Append({static_cast<long>(error.number()), error.description()});
    throw error;
}

Utf8Scope::Utf8Scope()
{
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0)
        return;
    locale_t current = duplocale(uselocale(nullptr));
    locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", current);
    if (!utf8) {
        freelocale(current);
        return;
    }
    m_utf8 = utf8;
    m_former = uselocale(utf8);
}

Utf8Scope::~Utf8Scope()
{
    if (!m_utf8)
        return;
    uselocale(static_cast<locale_t>(m_former));
    freelocale(static_cast<locale_t>(m_utf8));
}

} // namespace dao::odbc
