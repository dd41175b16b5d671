#include "CatalogFixture.h"
#include "CellGrid.h"
#include "DatabasesRoom.h"
#include "DialogForm.h"
#include "OdbcFloor.h"
#include "ShellPanes.h"
#include "StatementRecorder.h"
#include "TemporarySettings.h"
#include "mdiMain.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QTimer>

#include <optional>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{

constexpr int recordCount = 100'000;

const QString datasource = u"Ledger"_s;
const QString pane = u"frmTableData"_s;
const QString criteria = u"frmTableCriteria"_s;

/// The program's window over a table of real records: a sequential file of fixed length with texts, zoned numbers and a
/// packed amount.
class Program
{
public:
    Program() : window({})
    {
        world.addDatasource(datasource);
        window.MDIForm_Load();
        window.resize(1200, 800);
        window.show();
        window.tvwExplorer_Expand(&window.tvwExplorer().Nodes().Item(u"DSN=Ledger:"_s));
        writeRecords();
        define();
        QApplication::processEvents();
    }

    /// Asks for all columns of the table. Returns the seconds from OK to the grid on the screen.
    double view()
    {
        QElapsedTimer clock;
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] { answer(user, clock); });
        user.start(0);
        window.PaneDisplay(pane, {datasource, u"DEPOT"_s, u"STOCK"_s});
        auto* grid = window.currentPane()->findChild<CellGrid*>(u"dbgEdit"_s);
        grid->viewport()->repaint();
        const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        if (grid->Rows() != recordCount || grid->Cols() != 8 || !grid->isVisible() ||
            grid->TextMatrix(recordCount - 1, 1) != u"Article 699993"_s)
            throw std::runtime_error("not all records show");
        return seconds;
    }

    /// The next view begins anew.
    void leave()
    {
        window.PaneDisplay(u"frmWelcome"_s);
        forms::unload(pane);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

private:
    static void answer(QTimer& user, QElapsedTimer& clock)
    {
        const Form* dialog = forms::loaded(criteria);
        if (!dialog || !dialog->isVisible())
            return;
        user.stop();
        dialog->findChild<QPushButton*>(u"cmdSelectAll"_s)->click();
        clock.start();
        dialog->findChild<QPushButton*>(u"cmdOK"_s)->click();
    }

    void writeRecords() const
    {
        QFile file(world.folder() + u"/stock.dat"_s);
        if (!file.open(QIODevice::WriteOnly))
            throw std::runtime_error("the records can't be written");
        for (int i = 0; i < recordCount; ++i) {
            const QString texts =
                QString::asprintf("%08dArticle %-12dSupplier %-11dShelf %-6d%-2s%05d%-30s", i, i * 7, i % 997, i % 5000,
                                  i % 3 ? "pc" : "kg", i % 90'000, i % 4 ? "in stock" : "to be ordered");
            const QByteArray amount = QByteArray::number(i * 13).rightJustified(9, '0') + 'C';
            file.write(texts.toLatin1() + QByteArray::fromHex(amount));
        }
    }

    void define() const
    {
        for (const QString& statement :
             {u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE) "
              "VALUES ('STOCK', 102, 'SEQUENTIAL', 'FIXED')"_s,
              u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, SCALE) "
              "VALUES ('STOCK', 1, 'NUMBER', 'ZONED-U', 0, 8, 0), ('STOCK', 2, 'ARTICLE', 'STRING', 8, 20, 0), "
              "('STOCK', 3, 'SUPPLIER', 'STRING', 28, 20, 0), ('STOCK', 4, 'PLACE', 'STRING', 48, 12, 0), "
              "('STOCK', 5, 'UNIT', 'STRING', 60, 2, 0), ('STOCK', 6, 'QUANTITY', 'ZONED-U', 62, 5, 0), "
              "('STOCK', 7, 'REMARK', 'STRING', 67, 30, 0), ('STOCK', 8, 'AMOUNT', 'PACKED', 97, 5, 2)"_s,
              u"INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY) VALUES ('DEPOT', '%1')"_s.arg(world.folder()),
              u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION) "
              "VALUES ('DEPOT', 'STOCK', 'TABLE', 'STOCK', 'stock.dat')"_s,
              u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, "
              "SQL_TYPE_NAME, LENGTH, PRECISION, SCALE, VISIBLE) "
              "SELECT 'DEPOT', 'STOCK', FIELD_NUMBER, FIELD_NAME, FIELD_NAME, "
              "CASE LOCAL_TYPE_NAME WHEN 'STRING' THEN 'VARCHAR' WHEN 'PACKED' THEN 'DECIMAL' ELSE 'INTEGER' END, "
              "LENGTH, CASE LOCAL_TYPE_NAME WHEN 'PACKED' THEN 9 ELSE LENGTH END, SCALE, 1 "
              "FROM TW_FIELD WHERE FILE_NAME = 'STOCK'"_s})
            world.run(datasource, statement);
    }

    CatalogFixture world;
    mdiMain window;
};

std::optional<Program> program;

void DataView(benchmark::State& state)
{
    for (auto _ : state) {
        state.SetIterationTime(program->view());
        program->leave();
    }
}
BENCHMARK(DataView)->Unit(benchmark::kMillisecond)->UseManualTime();

/// Reads the same records through the functions of ODBC.
void DataViewFloor(benchmark::State& state)
{
    QString statement;
    {
        const StatementRecorder recorder;
        program->view();
        statement = recorder.statements().last();
        program->leave();
    }
    OdbcFloor floor(datasource);
    for (auto _ : state) {
        const OdbcFloor::Rows rows = floor.read(statement);
        if (rows.size() != recordCount)
            state.SkipWithError("rows are missing");
    }
}
BENCHMARK(DataViewFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const TemporarySettings settings;
    registerShellPanes();
    registerDatabasesRoom();
    program.emplace();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    program.reset();
    return 0;
}
