#include "modDatabase.h"

#include <benchmark/benchmark.h>

#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// 64 KiB of statements, with runs of blanks of every length.
QString statements()
{
    const QString statement = u"SELECT FILE_NAME, OPEN_STRING FROM TW_FILE WHERE FILE_NAME <> '' AND RECORD_SIZE > 1 "
                              "ORDER BY FILE_NAME ASC "
                              "INSERT INTO TW_DB (DATABASE_NAME, REMARKS) VALUES ('SALES', 'The shop') "
                              "UPDATE TW_DB SET REMARKS = '' WHERE DATABASE_NAME = 'SALES' OR REMARKS = ''"_s;
    QString text;
    for (qsizetype run = 1; text.size() < 64 * 1024; ++run)
        text += QString(run % 50, u' ') + statement;
    text.truncate(64 * 1024);
    return text;
}

void FormatSql(benchmark::State& state)
{
    const QString text = statements();
    for (auto _ : state)
        benchmark::DoNotOptimize(modDatabase::FormatSQL(text));
    state.SetBytesProcessed(state.iterations() * text.size());
}
BENCHMARK(FormatSql)->Unit(benchmark::kMicrosecond);

/// One pass that folds the blanks, and each of the replacements looked for by the standard library's own search and
/// copied into a fresh text: the same result without a QString.
void FormatSqlFloor(benchmark::State& state)
{
    static const std::pair<std::u16string, std::u16string> replacements[] = {
        {u")", u")\n\t"},
        {u"( ", u"("},
        {u"(", u"(\n\t"},
        {u", ", u","},
        {u",", u",\n\t"},
        {u" SELECT ", u"\nSELECT\n\t"},
        {u" FROM ", u"\nFROM\n\t"},
        {u" WHERE ", u"\nWHERE\n\t"},
        {u" ORDER BY ", u"\nORDER BY \n\t"},
        {u" INSERT INTO ", u"INSERT INTO \n\t"},
        {u"\t VALUES ", u"\nVALUES "},
        {u" UPDATE ", u"UPDATE \n\t"},
        {u" SET ", u"\nSET\n\t"},
        {u" AND ", u"\n\tAND "},
        {u" OR ", u"\n\tOR "},
    };
    const std::u16string text = statements().toStdU16String();
    std::u16string result;
    for (auto _ : state) {
        result.clear();
        result.reserve(2 * text.size());
        result.push_back(u' ');
        for (const char16_t character : text) {
            if (character != u' ' || result.back() != u' ')
                result.push_back(character);
        }
        if (result.back() != u' ')
            result.push_back(u' ');
        for (const auto& [found, by] : replacements) {
            std::u16string replaced;
            replaced.reserve(2 * text.size());
            std::size_t done = 0;
            for (std::size_t at = result.find(found); at != std::u16string::npos; at = result.find(found, done)) {
                replaced.append(result, done, at - done).append(by);
                done = at + found.size();
            }
            result = replaced.append(result, done);
        }
        const std::size_t begin = result.find_first_not_of(u' ');
        result = result.substr(begin, result.find_last_not_of(u' ') + 1 - begin);
        benchmark::DoNotOptimize(result.data());
    }
    if (QString::fromStdU16String(result) != modDatabase::FormatSQL(statements()))
        state.SkipWithError("the floor lays out something else");
    state.SetBytesProcessed(state.iterations() * static_cast<long>(text.size()));
}
BENCHMARK(FormatSqlFloor)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
