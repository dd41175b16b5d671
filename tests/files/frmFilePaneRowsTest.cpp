#include "FilePaneFixture.h"

#include "mdiMain.h"

#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace filepane;

namespace
{

/// The pane of a file in front of the grid of all files.
class FilePaneWithGrid : public FilePane
{
protected:
    FilePaneWithGrid() { takeRealCollections(); }
};

const QString outOfRange = u"Record Size out of range.\nPlease enter a value between 0 and 65535."_s;

} // namespace

TEST_F(FilePane, ARecordSizeThatWouldOpenACommentIsOutOfRange)
{
    open(file(u"PAYROLL"_s));
    const QStringList before = wholeCatalog();
    for (const char* size : {"--", "5/*", "12--", "--2", "1 -- 2"}) {
        SCOPED_TRACE(size);
        click(key(file(u"PAYROLL"_s)));
        paste(u"RECORD_SIZE"_s, QLatin1String(size));
        ASSERT_EQ(text(u"RECORD_SIZE"_s), QLatin1String(size));
        expectRefused(outOfRange, u"RECORD_SIZE"_s);
        EXPECT_EQ(wholeCatalog(), before);
    }
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel Undo"_s);
}

TEST_F(FilePane, TwoMinusSignsCanBeTypedButAreOutOfRange)
{
    open(file(u"PAYROLL"_s));
    const QStringList before = wholeCatalog();
    write(u"RECORD_SIZE"_s, u"-"_s);
    hit(Qt::Key_Home);
    QTest::keyClicks(&entry(u"RECORD_SIZE"_s), u"-"_s);
    ASSERT_EQ(text(u"RECORD_SIZE"_s), u"--"_s);
    expectRefused(outOfRange, u"RECORD_SIZE"_s);
    EXPECT_EQ(wholeCatalog(), before);
}

// A second click -----------------------------------------------------------------------------------------------------

TEST_F(FilePane, ASecondClickWhileTheTreeFollowsAnAddAddsNothing)
{
    beginToAdd();
    fillIn(u"twice"_s);
    statements.clear();
    EXPECT_TRUE(pressOkTwice().contains(u"frmFile.tbr_ButtonClick"_s));
    EXPECT_EQ(statements.writes(), QStringList{insertFile(u"TWICE"_s, u"'', 0, 'SEQUENTIAL', 'VARIABLE', ''"_s)});
    EXPECT_EQ(children(key({u"FI"_s})).count(u"TWICE"_s), 1);
    EXPECT_EQ(state(), u"File Add: Up1 OK Cancel"_s);
}

TEST_F(FilePane, ASecondClickWhileTheTreeFollowsARenameRenamesNothing)
{
    open(file(u"EMPTY"_s));
    write(u"FILE_NAME"_s, u"once"_s);
    statements.clear();
    EXPECT_TRUE(pressOkTwice().contains(u"frmFile.tbr_ButtonClick"_s));
    EXPECT_EQ(statements.writes().filter(u"INSERT INTO TW_FILE "_s).size(), 1);
    EXPECT_EQ(statements.writes().filter(u"UPDATE TW_FILE "_s).size(), 1);
    EXPECT_EQ(children(key({u"FI"_s})).count(u"ONCE"_s), 1);
    EXPECT_EQ(state(), displayState);
}

// Nodes of rows that are gone ----------------------------------------------------------------------------------------

TEST_F(FilePane, AddingAFileWhoseNodeStillStandsKeepsOneNode)
{
    beginToAdd();
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s);
    fillIn(u"payroll"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    EXPECT_EQ(children(key({u"FI"_s})), (QStringList{u"EMPTY"_s, u"KEY"_s, u"PAYROLL"_s, u"STOCK"_s}));
    EXPECT_EQ(selectedKey(), key(file(u"PAYROLL"_s)));
    EXPECT_EQ(stored1(u"PAYROLL"_s, u"RECORD_TYPE"_s), u"VARIABLE"_s);
    EXPECT_EQ(state(), u"File Add: Up1 OK Cancel"_s);
}

TEST_F(FilePane, RenamingToANameWhoseNodeStillStandsReadsTheLevelAnew)
{
    open(file(u"EMPTY"_s));
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s);
    write(u"FILE_NAME"_s, u"payroll"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    EXPECT_EQ(children(key({u"FI"_s})), (QStringList{u"KEY"_s, u"PAYROLL"_s, u"STOCK"_s}));
    EXPECT_EQ(selectedKey(), key(file(u"PAYROLL"_s)));
    EXPECT_EQ(paneTitle(), u"PAYROLL - File Properties"_s);
    EXPECT_EQ(text(u"FILE_ORGANISATION"_s), u"RELATIVE"_s);
    EXPECT_EQ(state(), displayState);
}

// Reserved files -----------------------------------------------------------------------------------------------------

TEST_F(FilePane, KeyIsAskedForAndDeletedAsAnyFile)
{
    begin(file(u"KEY"_s));
    const QString fields = world.value(datasource, u"SELECT COUNT(*) FROM TW_FIELD WHERE FILE_NAME = 'KEY'"_s);
    ASSERT_NE(fields, u"1"_s);
    boxes.expectAsk(mayDelete(), boxes::Answer::Yes, [&] {
        EXPECT_EQ(paneTitle(), u"KEY - Delete File Definition"_s);
        EXPECT_EQ(state(), u"File Delete: Up1 OK Cancel"_s);
        EXPECT_EQ(open(), QStringList());
    });
    boxes.expectAsk(takesAlong(u"KEY"_s, fields + " Fields"_L1), boxes::Answer::No);
    window->PaneDelete(u"frmFile"_s, {datasource, u"KEY"_s});
    boxes.verify();
    EXPECT_EQ(statements.statements(), (QStringList{describe, readFile(u"KEY"_s), countFields(u"KEY"_s)}));
    EXPECT_EQ(state(), u"File Delete: Up1 OK Cancel"_s);

    // The catalog maps the file to a table of its own.
    statements.clear();
    boxes.expectAsk(takesAlong(u"KEY"_s, fields + " Fields"_L1), boxes::Answer::Yes);
    boxes.expectAsk(isReferenced(u"KEY"_s), boxes::Answer::Yes);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{countFields(u"KEY"_s), readTables(u"KEY"_s), deleteFrom(u"TW_FILE"_s, u"KEY"_s),
                           deleteFrom(u"TW_FIELD"_s, u"KEY"_s)}));
    EXPECT_EQ(takeShown(), QStringList{"frmFiles "_L1 + datasource});
    EXPECT_EQ(children(key({u"FI"_s})), (QStringList{u"EMPTY"_s, u"PAYROLL"_s, u"STOCK"_s}));
}

// The grid behind the pane -------------------------------------------------------------------------------------------

TEST_F(FilePaneWithGrid, CancelUpAndDeleteEndInTheGridWithItsRows)
{
    beginToAdd();
    fillIn(u"third"_s);
    press(u"OK"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"PAYROLL"_s, u"EMPTY"_s, u"STOCK"_s, u"THIRD"_s}));

    click(key(file(u"STOCK"_s)));
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s);
    press(u"Up1"_s);
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"EMPTY"_s, u"STOCK"_s, u"THIRD"_s}));
    EXPECT_EQ(selectedKey(), key({u"FI"_s}));
    EXPECT_EQ(window->focusWidget(), &window->tvwExplorer());

    boxes.expectAsk(mayDelete(), boxes::Answer::Yes);
    boxes.expectAsk(takesAlong(u"THIRD"_s, u"0 Fields"_s), boxes::Answer::Yes);
    choose(key(file(u"THIRD"_s)), u"mnu_FileDelete"_s);
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"EMPTY"_s, u"STOCK"_s}));
    EXPECT_EQ(find(key(file(u"THIRD"_s))), nullptr);
}
