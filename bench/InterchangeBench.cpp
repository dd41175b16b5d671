#include "Boxes.h"
#include "CatalogFixture.h"
#include "CsvBlocks.h"
#include "FileDialogs.h"
#include "InterchangeRoom.h"
#include "OdbcFloor.h"
#include "PaneRegistry.h"
#include "ShellPanes.h"
#include "StatementRecorder.h"
#include "TemporarySettings.h"
#include "frmCSVValidate.h"
#include "mdiMain.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QSet>
#include <QTextStream>
#include <QTimer>
#include <QTreeView>

#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// The catalog that is exported, one of a fifth of its rows, and the one that is imported into.
const QString large = u"Large"_s;
const QString small = u"Small"_s;
const QString target = u"Target"_s;

/// Answers every box and file dialog: yes, and the one file.
struct AgreeableUser final : boxes::Presenter, filedialogs::Presenter {
    AgreeableUser()
    {
        boxes::setPresenter(this);
        filedialogs::setPresenter(this);
    }
    ~AgreeableUser() override
    {
        boxes::setPresenter(nullptr);
        filedialogs::setPresenter(nullptr);
    }
    boxes::Answer show(const boxes::Box&) override { return boxes::Answer::Ok; }
    QString choose(const filedialogs::Request&) override { return file; }

    QString file;
};

/// The program's window over three catalogs.
class Program
{
public:
    Program() : window({})
    {
        for (const QString& datasource : {large, small, target})
            world.addDatasource(datasource);
        window.MDIForm_Load();
        window.resize(1200, 800);
        window.show();
        for (const QString& datasource : {large, small, target})
            window.tvwExplorer_Expand(&window.tvwExplorer().Nodes().Item("DSN="_L1 + datasource + ':'));
        fill(large, 5);
        fill(small, 1);
    }

    QString path(const QString& name) const { return world.folder() + '/' + name; }

    void exportTo(const QString& datasource, const QString& file)
    {
        user.file = path(file);
        window.PaneDisplay(u"frmCSVExport"_s, {datasource});
        window.currentPane()->findChild<QPushButton*>(u"cmdAction"_s)->click();
    }

    struct Run {
        double seconds = 0;
        /// What the dialog lists of the file, if it is still there.
        int findings = 0;
    };
    /// From the click on Start to its end.
    static Run import(const QString& file)
    {
        Run run;
        QTimer::singleShot(0, [&run] {
            QWidget* dialog = QApplication::activeModalWidget();
            auto* start = dialog->findChild<QPushButton*>(u"cmdAction"_s);
            const auto begin = std::chrono::steady_clock::now();
            start->click();
            run.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
            if (QWidget* left = QApplication::activeModalWidget()) {
                run.findings = left->findChild<QTreeView*>(u"lvwErr"_s)->model()->rowCount();
                left->close();
            }
        });
        frmCSVValidate::Validate(target, file);
        return run;
    }

    /// Leaves nothing in the target but the rows that every catalog has.
    void clearTarget() const
    {
        for (const char* table : {"FILE", "FIELD"})
            world.run(target, "DELETE FROM TW_%1 WHERE FILE_NAME LIKE 'FILE_%'"_L1.arg(QLatin1StringView(table)));
        for (const char* table : {"DB", "TABLE", "COLUMN", "DBPRV", "TBLPRV"})
            world.run(target, "DELETE FROM TW_%1 WHERE DATABASE_NAME LIKE 'BASE_%'"_L1.arg(QLatin1StringView(table)));
        world.run(target, u"DELETE FROM TW_USER WHERE USER_NAME LIKE 'USER_%'"_s);
    }

private:
    /// `scale` times 20,000 rows: 200 files of 42 fields, 20 databases of 10 tables of 42 columns, 80 users with rights
    /// on databases and tables.
    void fill(const QString& datasource, int scale) const
    {
        const auto run = [&](int count, const char* insert) {
            world.run(
                datasource,
                u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "_s.arg(count * scale) +
                    QLatin1StringView(insert));
        };
        run(200, "INSERT INTO TW_FILE (FILE_NAME, FILE_ORGANISATION, RECORD_TYPE, RECORD_SIZE) "
                 "SELECT printf('FILE_%04d', i), 'SEQUENTIAL', 'FIXED', 420 FROM n");
        run(8400, "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, "
                  "PRECISION, SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE) "
                  "SELECT printf('FILE_%04d', (i - 1) / 42 + 1), (i - 1) % 42 + 1, "
                  "printf('FIELD_%02d', (i - 1) % 42 + 1), 'STRING', (i - 1) % 42 * 10, 10, 10, 0, 0, '', '' FROM n");
        run(20, "INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, CONNECT_STRING, DISPLAY_NAME) "
                "SELECT printf('BASE_%03d', i), '/data', 'DISAM', '', printf('Base_%03d', i) FROM n");
        run(200, "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
                 "CRITERIA, DISPLAY_NAME) "
                 "SELECT printf('BASE_%03d', (i - 1) / 10 + 1), printf('TABLE_%02d', (i - 1) % 10), 'TABLE', "
                 "printf('FILE_%04d', i), 'a.dat', '', 'Table' FROM n");
        run(8400, "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, "
                  "SQL_TYPE_NAME, LENGTH, UPDATABLE, VISIBLE, DEFAULT_VALUE, DISPLAY_NAME, COLUMN_TYPE) "
                  "SELECT printf('BASE_%03d', (i - 1) / 420 + 1), printf('TABLE_%02d', (i - 1) / 42 % 10), "
                  "(i - 1) % 42 + 1, printf('COLUMN_%02d', (i - 1) % 42 + 1), printf('FIELD_%02d', (i - 1) % 42 + 1), "
                  "'CHAR', 10, 1, 1, '', 'Column', 0 FROM n");
        run(80, "INSERT INTO TW_USER (USER_NAME, USER_PASSWORD) SELECT printf('USER_%03d', i), 'SECRET' FROM n");
        run(700, "INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
                 "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL) "
                 "SELECT printf('USER_%03d', (i - 1) / 10 + 1), printf('BASE_%03d', (i - 1) % 10 + 1), 'CLERK', "
                 "'SECRET', 1, 1, 1, 0, 'TABLE' FROM n");
        run(2000, "INSERT INTO TW_TBLPRV (USER_NAME, DATABASE_NAME, TABLE_NAME, ALLOW_SELECT, ALLOW_INSERT, "
                  "ALLOW_UPDATE, ALLOW_DELETE) "
                  "SELECT printf('USER_%03d', (i - 1) / 40 + 1), printf('BASE_%03d', (i - 1) % 40 / 4 + 1), "
                  "printf('TABLE_%02d', (i - 1) % 4), 1, 1, 1, 0 FROM n");
    }

    CatalogFixture world;
    mdiMain window;
    AgreeableUser user;
};

std::optional<Program> program;

/// The most memory that the process has held since the last call of forgetPeak, in bytes.
double peakMemory()
{
    QFile status(u"/proc/self/status"_s);
    if (status.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : status.readAll().split('\n'))
            if (line.startsWith("VmHWM:"))
                return line.simplified().split(' ').at(1).toDouble() * 1024;
    }
    return 0;
}

/// What earlier runs have left to the allocator goes back to the system first, or the next one would seem to need none.
void forgetPeak()
{
    malloc_trim(0);
    QFile references(u"/proc/self/clear_refs"_s);
    if (references.open(QIODevice::WriteOnly))
        references.write("5");
}

QString exported(const QString& datasource)
{
    program->exportTo(datasource, datasource + ".csv"_L1);
    return program->path(datasource + ".csv"_L1);
}

void Export(benchmark::State& state)
{
    for (auto _ : state)
        exported(large);
}
BENCHMARK(Export)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Reads the same rows through the functions of ODBC and writes the same bytes.
void ExportFloor(benchmark::State& state)
{
    const QString original = exported(large);
    const QString copy = program->path(u"Floor.csv"_s);
    OdbcFloor floor(large);
    for (auto _ : state) {
        std::FILE* file = std::fopen(qPrintable(copy), "wb");
        for (const CsvBlock& block : csvBlocks()) {
            QByteArray line;
            floor.read(QLatin1StringView(block.statement), [&](const OdbcFloor::Row& row) {
                line = '"' + QByteArray(block.id) + '"';
                for (const OdbcFloor::Value& value : row) {
                    line += value.isText ? ",\"" : ",";
                    line += value.text.toUtf8();
                    if (value.isText)
                        line += '"';
                }
                line += "\r\n";
                std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), file);
            });
        }
        std::fclose(file);
    }
    const auto bytes = [](const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    if (bytes(copy) != bytes(original))
        state.SkipWithError("the floor has written other bytes");
}
BENCHMARK(ExportFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

/// A file of 100,000 good lines and a bad one, after which the validation offers no import.
QString linesToValidate()
{
    const QString path = exported(large);
    QFile file(path);
    if (file.open(QIODevice::Append))
        file.write("NONSENSE\r\n");
    return path;
}

void Validate(benchmark::State& state)
{
    const QString path = linesToValidate();
    forgetPeak();
    const double before = peakMemory();
    for (auto _ : state) {
        const Program::Run run = Program::import(path);
        state.SetIterationTime(run.seconds);
        if (run.findings != 1)
            state.SkipWithError("not all but the last line are good");
    }
    state.counters["megabytes"] = (peakMemory() - before) / 1e6;
}
BENCHMARK(Validate)->Unit(benchmark::kMillisecond)->UseManualTime();

/// Reads and splits the lines, with a key of each into a hash.
void ValidateFloor(benchmark::State& state)
{
    const QString path = linesToValidate();
    for (auto _ : state) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            state.SkipWithError("no file");
        QTextStream lines(&file);
        QSet<QString> keys;
        QString line;
        while (lines.readLineInto(&line)) {
            const QList<QStringView> columns = QStringView(line).split(u',');
            QString key;
            for (const QStringView column : columns.first(std::min<qsizetype>(columns.size(), 4)))
                key += column;
            keys.insert(key);
        }
        benchmark::DoNotOptimize(keys.size());
    }
}
BENCHMARK(ValidateFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

void Import(benchmark::State& state)
{
    const QString path = exported(small);
    for (auto _ : state) {
        const Program::Run run = Program::import(path);
        state.SetIterationTime(run.seconds);
        if (run.findings != 0)
            state.SkipWithError("the file was not imported");
        program->clearTarget();
    }
}
BENCHMARK(Import)->Unit(benchmark::kMillisecond)->UseManualTime();

/// Sends the statements of both stages bare.
void ImportFloor(benchmark::State& state)
{
    QStringList statements;
    {
        const StatementRecorder recorder;
        Program::import(exported(small));
        const QStringList& datasources = recorder.datasources();
        for (qsizetype i = 0; i < datasources.size(); ++i)
            if (datasources[i] == target)
                statements.append(recorder.statements()[i]);
    }
    program->clearTarget();
    OdbcFloor floor(target);
    for (auto _ : state) {
        for (const QString& statement : std::as_const(statements))
            benchmark::DoNotOptimize(floor.read(statement));

        state.PauseTiming();
        program->clearTarget();
        state.ResumeTiming();
    }
    state.counters["statements"] = static_cast<double>(statements.size());
}
BENCHMARK(ImportFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const TemporarySettings settings;
    registerShellPanes();
    registerInterchangeRoom();
    program.emplace();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    program.reset();
    return 0;
}
