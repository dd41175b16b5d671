#include "frmFields.h"

#include "CellGrid.h"
#include "DialogForm.h"
#include "DialogScript.h"
#include "GridTest.h"
#include "ToolBar.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace
{

const QStringList level{u"FI"_s, u"fi=STOCK"_s, u"FD"_s};
const QString articleStored = u"ARTICLE|1|0|STRING|10|10|0|0|||"_s;
const QString priceStored = u"PRICE|2|10|PACKED|4|8|2|1||0|net"_s;

/// The rows of a file's fields, and what happens to them.
class FieldRows : public GridTest
{
protected:
    void SetUp() override
    {
        GridTest::SetUp();
        change(u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('STOCK', 14)"_s);
        change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, "
               "PRECISION, SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
               "VALUES ('STOCK', 1, 'ARTICLE', 'STRING', 0, 10, 10, 0, 0, '', '', '')"_s);
        change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, "
               "PRECISION, SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
               "VALUES ('STOCK', 2, 'PRICE', 'PACKED', 10, 4, 8, 2, 1, '', '0', 'net')"_s);
    }

    void openFields() { open(level); }
    void leave() { clickBeside(); }

    QStringList storedFields() const
    {
        return stored(u"SELECT FIELD_NAME, FIELD_NUMBER, OFFSET, LOCAL_TYPE_NAME, LENGTH, PRECISION, SCALE, ENCRYPTED, "
                      "FORMAT, DEFAULT_VALUE, REMARKS FROM TW_FIELD WHERE FILE_NAME = 'STOCK' ORDER BY FIELD_NAME"_s);
    }

    /// Chooses "Reorder Fields" at a node, moves PRICE to the top and ends the dialog with a button.
    void reorder(const QStringList& node, const QString& endsWith)
    {
        dialogs.expect(u"frmFieldReorder"_s, [&](DialogForm& dialog) {
            auto& list = *dialog.findChild<QListWidget*>(u"lstField"_s);
            const auto found = list.findItems(u"PRICE"_s, Qt::MatchExactly);
            ASSERT_EQ(found.size(), 1);
            QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(found.first()).center());
            DialogScript::click(dialog, u"cmdUp"_s);
            DialogScript::click(dialog, endsWith);
        });
        choose(key(node), u"mnu_FieldReorder"_s);
        dialogs.verify();
        boxes.verify();
    }

    void expectReordered() { boxes.expectInform(u"Field re-ordering complete"_s); }

    /// An entry of the pane of one field.
    template <typename Entry>
    Entry& entry(const QString& column) const
    {
        auto* found = window->currentPane()->findChild<Entry*>("txtProperty_"_L1 + column);
        if (!found)
            throw std::runtime_error("There is no entry for " + column.toStdString());
        return *found;
    }

    void press(const QString& toolBar, const QString& button)
    {
        QToolButton* found = window->toolBar(toolBar).Button(button).widget();
        ASSERT_TRUE(found->isVisible() && found->isEnabled()) << button.toStdString();
        QTest::mouseClick(found, Qt::LeftButton);
    }

    DialogScript dialogs;
};

} // namespace

// Reordered under the pane -------------------------------------------------------------------------------------------

TEST_F(FieldRows, ReorderedFieldsShowTheirNewNumbersAndKeepThem)
{
    for (const QStringList& node : {level, level + QStringList{u"fd=ARTICLE"_s}}) {
        SCOPED_TRACE(node.last().toStdString());
        change(u"UPDATE TW_FIELD SET FIELD_NUMBER = 1, REMARKS = '' WHERE FIELD_NAME = 'ARTICLE'"_s);
        change(u"UPDATE TW_FIELD SET FIELD_NUMBER = 2 WHERE FIELD_NAME = 'PRICE'"_s);
        openFields();
        expandTo(key(level));
        expectReordered();
        reorder(node, u"cmdOK"_s);
        EXPECT_EQ(currentPane(), u"frmFields"_s);
        EXPECT_EQ(cell(u"ARTICLE"_s, u"Field Number"_s), u"2"_s);
        EXPECT_EQ(cell(u"PRICE"_s, u"Field Number"_s), u"1"_s);

        statements.clear();
        change(u"ARTICLE"_s, u"Remarks"_s, u"sold"_s);
        leave();
        EXPECT_EQ(statements.writes(),
                  QStringList{u"UPDATE TW_FIELD SET FIELD_NUMBER = 2, LOCAL_TYPE_NAME = 'STRING', OFFSET = 0, "
                              "LENGTH = 10, PRECISION = 10, SCALE = 0, ENCRYPTED = 0, FORMAT = '', DEFAULT_VALUE = '', "
                              "REMARKS = 'sold' WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = 'ARTICLE'"_s});
        EXPECT_EQ(storedFields(),
                  (QStringList{u"ARTICLE|2|0|STRING|10|10|0|0|||sold"_s, u"PRICE|1|10|PACKED|4|8|2|1||0|net"_s}));
    }
}

TEST_F(FieldRows, AnEditGoesOnBehindAReorderingThatIsCancelled)
{
    openFields();
    change(u"ARTICLE"_s, u"Remarks"_s, u"sold"_s);
    reorder(level, u"cmdCancel"_s);
    leave();
    EXPECT_EQ(storedFields(), (QStringList{u"ARTICLE|1|0|STRING|10|10|0|0|||sold"_s, priceStored}));
}

TEST_F(FieldRows, TheFieldsOfAnotherFileStayAsTheyShow)
{
    openFields();
    open({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s});
    change(u"BONUS"_s, u"Remarks"_s, u"yearly"_s);
    hit(Qt::Key_Return);
    expectReordered();
    reorder(level, u"cmdOK"_s);
    EXPECT_EQ(paneTitle(), u"PAYROLL - Fields"_s);
    EXPECT_EQ(cell(u"BONUS"_s, u"Remarks"_s), u"yearly"_s);
}

TEST_F(FieldRows, AFieldThatShowsGetsItsNewNumberAndKeepsIt)
{
    const QStringList field = level + QStringList{u"fd=ARTICLE"_s};
    openFields();
    expandTo(key(level));
    click(key(field));
    ASSERT_EQ(currentPane(), u"frmField"_s);
    ASSERT_EQ(entry<QLineEdit>(u"FIELD_NUMBER"_s).text(), u"1"_s);
    expectReordered();
    reorder(level, u"cmdOK"_s);
    EXPECT_EQ(currentPane(), u"frmField"_s);
    EXPECT_EQ(paneTitle(), u"STOCK.ARTICLE - Edit Field Properties"_s);
    EXPECT_EQ(entry<QLineEdit>(u"FIELD_NUMBER"_s).text(), u"2"_s);

    statements.clear();
    QTest::keyClicks(&entry<QPlainTextEdit>(u"REMARKS"_s), u"sold"_s);
    press(u"tbrField"_s, u"OK"_s);
    EXPECT_EQ(statements.writes(),
              QStringList{u"UPDATE TW_FIELD SET FIELD_NUMBER = 02, LOCAL_TYPE_NAME = 'STRING', LENGTH = 010, "
                          "PRECISION = 010, SCALE = 00, ENCRYPTED = 00, FORMAT = '', DEFAULT_VALUE = '', "
                          "REMARKS = 'sold' WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = 'ARTICLE'"_s});
    EXPECT_EQ(storedFields(),
              (QStringList{u"ARTICLE|2|0|STRING|10|10|0|0|||sold"_s, u"PRICE|1|10|PACKED|4|8|2|1||0|net"_s}));
}

TEST_F(FieldRows, AnEditOfAFieldGoesOnBehindAReorderingThatIsCancelled)
{
    openFields();
    expandTo(key(level));
    click(key(level + QStringList{u"fd=ARTICLE"_s}));
    QTest::keyClicks(&entry<QPlainTextEdit>(u"REMARKS"_s), u"sold"_s);
    reorder(level, u"cmdCancel"_s);
    EXPECT_EQ(entry<QPlainTextEdit>(u"REMARKS"_s).toPlainText(), u"sold"_s);
}

TEST_F(FieldRows, AFieldThatIsBeingAddedIsLeftAlone)
{
    openFields();
    choose(key(level), u"mnu_FieldAddNew"_s);
    ASSERT_EQ(currentPane(), u"frmField"_s);
    QTest::keyClicks(&entry<QLineEdit>(u"FIELD_NAME"_s), u"more"_s);
    expectReordered();
    reorder(level, u"cmdOK"_s);
    EXPECT_EQ(entry<QLineEdit>(u"FIELD_NAME"_s).text(), u"MORE"_s);
    EXPECT_EQ(entry<QLineEdit>(u"FIELD_NUMBER"_s).text(), u"3"_s);
}

// Without a connection -----------------------------------------------------------------------------------------------

TEST_F(FieldRows, UpLeadsNowhereFromADatasourceThatCouldNotBeConnected)
{
    const QString lost = datasource + u"Lost"_s;
    world.addUnreachableDatasource(lost);
    start();
    expectUnreachable();
    window->PaneDisplay(u"frmFields"_s, {lost, u"STOCK"_s});
    boxes.verify();
    ASSERT_EQ(currentPane(), u"frmFields"_s);
    const QString selected = selectedKey();
    press(u"tbrFields"_s, u"Up1"_s);
    EXPECT_EQ(currentPane(), u"frmFields"_s);
    EXPECT_EQ(selectedKey(), selected);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_TRUE(errors.shown().empty());
}

// What cells hold ----------------------------------------------------------------------------------------------------

TEST_F(FieldRows, AKindOfEncryptionWithoutANameIsKept)
{
    change(u"UPDATE TW_FIELD SET ENCRYPTED = 3 WHERE FIELD_NAME = 'PRICE'"_s);
    openFields();
    EXPECT_EQ(cell(u"PRICE"_s, u"Encrypted"_s), u"3"_s);
    // Entering its cell is no change either.
    click(u"PRICE"_s, u"Encrypted"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(editorText(), u"3"_s);
    hit(Qt::Key_Return);
    change(u"PRICE"_s, u"Remarks"_s, u"gross"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{u"UPDATE TW_FIELD SET FIELD_NUMBER = 2, LOCAL_TYPE_NAME = 'PACKED', OFFSET = 10, "
                                  "LENGTH = 4, PRECISION = 8, SCALE = 2, ENCRYPTED = 3, FORMAT = '', "
                                  "DEFAULT_VALUE = '0', REMARKS = 'gross' "
                                  "WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = 'PRICE'"_s});
    EXPECT_EQ(storedFields().last(), u"PRICE|2|10|PACKED|4|8|2|3||0|gross"_s);

    // A choice from the list replaces it.
    change(u"PRICE"_s, u"Encrypted"_s, u"no"_s);
    leave();
    EXPECT_EQ(storedFields().last(), u"PRICE|2|10|PACKED|4|8|2|0||0|gross"_s);
}

TEST_F(FieldRows, ANumberThatNothingCanHoldIsOutOfRangeAndCanBeMended)
{
    const struct {
        const char* heading;
        const char* message;
    } cases[] = {
        {"Field Number", "Field Number is out of range.\nPlease enter a value between 1 and 65535."},
        {"Offset", "Offset is out of range.\nPlease enter a value between 0 and 65535."},
        {"Length", "Length is out of range.\nPlease enter a value between 1 and 16."},
        {"Precision", "Precision is out of range.\nPlease enter a value between 8 and 9."},
        {"Scale", "Scale is out of range.\nPlease enter a value between -32 and 31."},
    };
    openFields();
    for (const auto& [heading, message] : cases) {
        SCOPED_TRACE(heading);
        reopen(level);
        const QString before = cell(u"PRICE"_s, QLatin1String(heading));
        click(u"PRICE"_s, QLatin1String(heading));
        hit(Qt::Key_Delete);
        paste(u"1e400"_s);
        boxes.expectInform(QLatin1String(message));
        leave();
        boxes.verify();
        EXPECT_EQ(current(), u"1 "_s + QLatin1String(heading));
        EXPECT_EQ(editorText(), u"1e400"_s);
        EXPECT_EQ(sent(), QStringList());
        for (int i = 0; i < 5; ++i)
            hit(Qt::Key_Backspace);
        write(before);
        leave();
        EXPECT_EQ(editor(), nullptr);
        EXPECT_EQ(statements.writes().size(), 1);
    }
    EXPECT_EQ(storedFields(), (QStringList{articleStored, priceStored}));
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(FieldRows, ARowWithEveryFaultIsRefusedForOneAfterTheOther)
{
    openFields();
    const auto expectRefused = [&](const QString& message, const QString& heading) {
        SCOPED_TRACE(message.toStdString());
        boxes.expectInform(message);
        leave();
        boxes.verify();
        EXPECT_EQ(current(), u"1 "_s + heading);
        EXPECT_NE(editor(), nullptr);
    };
    const auto retype = [&](const QString& text) {
        while (!editorText().isEmpty())
            hit(Qt::Key_Backspace);
        write(text);
    };
    for (const auto& [heading, fault] :
         {std::pair("Scale", "32"), std::pair("Precision", "10"), std::pair("Length", "17"),
          std::pair("Offset", "65536"), std::pair("Field Number", "65536"), std::pair("Field Name", "")})
        change(1, QLatin1String(heading), QLatin1String(fault));
    expectRefused(u"The Field Name cannot be blank"_s, u"Field Name"_s);
    write(u"article"_s);
    expectRefused(u"The Field Name 'ARTICLE' already has already been used in this File."_s, u"Field Name"_s);
    write(u"2"_s);
    expectRefused(u"Field Number is out of range.\nPlease enter a value between 1 and 65535."_s, u"Field Number"_s);
    retype(u"1"_s);
    expectRefused(u"That Field Number has already been used in this File."_s, u"Field Number"_s);
    retype(u"65535"_s);
    expectRefused(u"Offset is out of range.\nPlease enter a value between 0 and 65535."_s, u"Offset"_s);
    retype(u"65535"_s);
    expectRefused(u"Length is out of range.\nPlease enter a value between 1 and 16."_s, u"Length"_s);
    retype(u"16"_s);
    expectRefused(u"Precision is out of range.\nPlease enter a value between 8 and 9."_s, u"Precision"_s);
    retype(u"9"_s);
    expectRefused(u"Scale is out of range.\nPlease enter a value between -32 and 31."_s, u"Scale"_s);
    EXPECT_EQ(storedFields(), (QStringList{articleStored, priceStored}));
    retype(u"31"_s);
    leave();
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(storedFields(), (QStringList{articleStored, u"ARTICLE2|65535|65535|PACKED|16|9|31|1||0|net"_s}));
}

// Formats ------------------------------------------------------------------------------------------------------------

TEST_F(FieldRows, OnlyDatesAndTimesHaveABuilderForTheirFormat)
{
    change(u"UPDATE TW_FIELD SET FORMAT = 'as it was' WHERE FIELD_NAME = 'PRICE'"_s);
    openFields();
    for (const bool withType : {true, false}) {
        SCOPED_TRACE(withType);
        if (!withType)
            change(u"UPDATE TW_FIELD SET LOCAL_TYPE_NAME = '' WHERE FIELD_NAME = 'PRICE'"_s);
        reopen(level);
        click(u"PRICE"_s, u"Format"_s);
        hit(Qt::Key_Return);
        ASSERT_NE(editor(), nullptr);
        pressLookUp();
        hit(Qt::Key_F4);
        // A dialog that comes up fails the test.
        EXPECT_EQ(editorText(), u"as it was"_s);
        EXPECT_NE(editor(), nullptr);
        hit(Qt::Key_Return);
        leave();
        EXPECT_EQ(sent(), QStringList());
    }
}
