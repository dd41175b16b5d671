#include "MoveCopyFixture.h"

#include "CConnections.h"
#include "DragHandlers.h"
#include "MousePointer.h"
#include "MoveCopyRoom.h"
#include "frmTWErr.h"

#include <QFile>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace
{

const char* const tables[] = {"TW_FILE",   "TW_FIELD", "TW_DB",    "TW_TABLE",
                              "TW_COLUMN", "TW_USER",  "TW_DBPRV", "TW_TBLPRV"};

} // namespace

void MoveCopyTest::SetUp()
{
    MainWindowTest::SetUp();
    registerMoveCopyRoom();
    other = datasource + u"Other"_s;
    world.addDatasource(other);
    start();
    clickExpander(key());
    clickExpander(keyBelow(other));
    ASSERT_EQ(CConnections::instance().Count(), 2);
    statements.clear();
}

void MoveCopyTest::TearDown()
{
    MainWindowTest::TearDown();
    drags::setHandlers({});
    dialogs.verify();
}

DragItem MoveCopyTest::item(const QString& type, const QStringList& names)
{
    DragItem made;
    made.NodeType = type;
    made.Keys = names;
    return made;
}

QStringList MoveCopyTest::said() const
{
    QStringList all;
    for (qsizetype i = 0; i < statements.statements().size(); ++i)
        all.append((statements.datasources().at(i) == other ? "T: "_L1 : "S: "_L1) + statements.statements().at(i));
    return all;
}

QStringList MoveCopyTest::rowsOf(const QString& side, const QString& table, const QString& where) const
{
    QStringList all;
    for (const QStringList& row :
         world.rows(side, u"SELECT * FROM "_s + table + (where.isEmpty() ? QString() : u" WHERE "_s + where)))
        all.append(row.join('|'_L1));
    all.sort();
    return all;
}

QStringList MoveCopyTest::bothCatalogs() const
{
    QStringList all;
    for (const QString& side : {datasource, other}) {
        for (const char* table : tables) {
            for (const QString& row : rowsOf(side, QLatin1String(table)))
                all.append((side == other ? "T "_L1 : "S "_L1) + QLatin1String(table) + ' '_L1 + row);
        }
    }
    return all;
}

void MoveCopyTest::expectQuestion(const QString& prompt, const QString& button)
{
    dialogs.expect(u"frmMoveCopy"_s, [prompt, button](DialogForm& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Move or Copy?"_s);
        EXPECT_EQ(dialog.findChild<QLabel*>(u"lblPrompt"_s)->text(), prompt);
        DialogScript::click(dialog, button);
    });
}

void MoveCopyTest::expectGoOn(const QString& prompt, const QString& button)
{
    dialogs.expect(u"frmYesToAll"_s, [prompt, button](DialogForm& dialog) {
        EXPECT_TRUE(frmTWErr::CallStack().contains(u"frmYesToAll.GetAnswer"_s));
        EXPECT_EQ(dialog.findChild<QLabel*>(u"lblPrompt"_s)->text(), prompt);
        DialogScript::click(dialog, button);
    });
}

void MoveCopyTest::verify()
{
    dialogs.verify();
    boxes.verify();
    errors.verify();
}

void MoveCopyTest::keepBoth()
{
    while (CConnections::instance().Count() > 0)
        CConnections::instance().Remove(1);
    for (const QString& side : {datasource, other})
        ASSERT_TRUE(QFile::copy(world.catalogFile(side), world.folder() + "/kept"_L1 + side));
    beginAnewBoth();
}

void MoveCopyTest::beginAnewBoth()
{
    window->FetchTreeviewRoot();
    for (const QString& side : {datasource, other}) {
        const QString file = world.catalogFile(side);
        for (const char* suffix : {"", "-wal", "-shm"})
            QFile::remove(file + QLatin1String(suffix));
        ASSERT_TRUE(QFile::copy(world.folder() + "/kept"_L1 + side, file));
        clickExpander(keyBelow(side));
    }
    statements.clear();
}

void MoveCopyTest::sweep(const std::function<void()>& scenario)
{
    keepBoth();
    scenario();
    verify();
    const QStringList sent = said();
    const QStringList outcome = bothCatalogs();
    ASSERT_FALSE(sent.isEmpty());
    for (int k = 1; k <= sent.size(); ++k) {
        SCOPED_TRACE("Retry of " + sent.at(k - 1).toStdString());
        beginAnewBoth();
        statements.failAt(k);
        errors.expect(Press::Retry);
        scenario();
        verify();
        EXPECT_TRUE(statements.failuresDone());
        // The statement that failed was sent once more, and no other one.
        EXPECT_EQ(said(), sent.first(k) + sent.sliced(k - 1));
        EXPECT_EQ(bothCatalogs(), outcome);
        EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    }
}
