#include "ColumnReorderFixture.h"
#include "DBEngine.h"
#include "Settings.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

using namespace columnreorder;

namespace
{

/// The three statements that give a column another number.
QStringList renumber(const QString& column, int number, const QString& rest)
{
    const QString row = u"WHERE %1 AND COLUMN_NAME = '%2'"_s.arg(ofItems, column);
    return {u"SELECT * FROM TW_COLUMN "_s + row, u"DELETE FROM TW_COLUMN "_s + row,
            u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, "
            "SQL_TYPE_NAME, LENGTH, PRECISION, SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, "
            "AUTO_INCREMENT, CASE_SENSITIVE, SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, "
            "COLUMN_TYPE, DISPLAY_NAME) VALUES ('SALES', 'ITEMS', 0%1, '%2', %3)"_s.arg(number)
                .arg(column, rest)};
}

const QString articleRest =
    u"'ITEM', 'VARCHAR', 10, 12, 1, 1, 0, 1, 1, 0, 0, 1, 3, 0, 'no''ne', 'sold', 2, 0, 'Article'"_s;
const QString priceRest = u"'PRICE', '', 0, 0, -2, 0, 0, 0, 0, 0, 0, 0, 0, 0, '', '', 0, 0, ''"_s;
const QString leftRest = u"'LEFT', '', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, '', '', 0, 0, ''"_s;

/// Sees the status line at each statement.
class StatusWatcher final : public dao::StatementObserver
{
public:
    explicit StatusWatcher(const mdiMain& window)
        : m_status(*window.findChild<QLabel*>(u"Status"_s)), m_former(dao::DBEngine::setObserver(this))
    {
    }
    ~StatusWatcher() override { dao::DBEngine::setObserver(m_former); }
    StatusWatcher(const StatusWatcher&) = delete;
    StatusWatcher& operator=(const StatusWatcher&) = delete;

    std::vector<dao::Error> beforeStatement(const QString& datasource, const QString& statement) override
    {
        if (statement.startsWith(u"INSERT"_s))
            seen.append(m_status.text());
        return m_former->beforeStatement(datasource, statement);
    }

    QStringList seen;

private:
    const QLabel& m_status;
    dao::StatementObserver* m_former;
};

} // namespace

TEST_F(ColumnReorder, NumbersTheColumnsInTheOrderThatTheUserArranged)
{
    expectComplete();
    reorder(columns, [&](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"LEFT"_s}));
        select(dialog, u"LEFT"_s);
        DialogScript::click(dialog, up);
        EXPECT_EQ(names(dialog), (QStringList{u"ARTICLE"_s, u"LEFT"_s, u"PRICE"_s}));
        EXPECT_EQ(selected(dialog), u"LEFT"_s);
        DialogScript::click(dialog, up);
        select(dialog, u"ARTICLE"_s);
        DialogScript::click(dialog, down);
        EXPECT_EQ(selected(dialog), u"ARTICLE"_s);
        EXPECT_EQ(names(dialog), (QStringList{u"LEFT"_s, u"PRICE"_s, u"ARTICLE"_s}));
        DialogScript::click(dialog, ok);
    });
    QStringList expected{byNumber, readAll};
    expected += renumber(u"ARTICLE"_s, -3, articleRest) + renumber(u"PRICE"_s, -7, priceRest) +
                renumber(u"LEFT"_s, -20, leftRest);
    expected += QStringList{readAll} + renumber(u"LEFT"_s, 1, leftRest) + renumber(u"PRICE"_s, 2, priceRest) +
                renumber(u"ARTICLE"_s, 3, articleRest);
    EXPECT_EQ(statements.statements().first(expected.size()), expected);
    EXPECT_EQ(numbers(), (QStringList{u"LEFT 1"_s, u"PRICE 2"_s, u"ARTICLE 3"_s}));
    // Nothing else of the rows has changed.
    EXPECT_EQ(stored(u"SELECT * FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s),
              QStringList{u"SALES|ITEMS|3|ARTICLE|ITEM|VARCHAR|10|12|1|1|0|1|1|0|0|1|3|0|no'ne|sold|2|0|Article"_s});
    EXPECT_EQ(world.value(datasource, u"SELECT NUMBER_COLUMNS FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s), u"9"_s);
}

TEST_F(ColumnReorder, TheGridShowsTheNewNumbers)
{
    for (const QStringList& node : {columns, columns + QStringList{u"co=PRICE"_s}}) {
        SCOPED_TRACE(node.last().toStdString());
        expectComplete();
        reorder(node, [&](DialogForm& dialog) {
            EXPECT_EQ(dialog.windowTitle(), u"Reorder Columns - ITEMS"_s);
            DialogScript::click(dialog, ok);
        });
        EXPECT_EQ(currentPane(), u"frmColumns"_s);
        EXPECT_EQ(paneTitle(), u"SALES.ITEMS - Columns"_s);
        EXPECT_EQ(gridNames(), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
        EXPECT_EQ(statusText(), u"Ready"_s);
    }
}

TEST_F(ColumnReorder, NumbersTheColumnsAlphabeticallyWithTheBoxTicked)
{
    expectComplete();
    reorder(columns, [&](DialogForm& dialog) {
        DialogScript::click(dialog, sort);
        EXPECT_EQ(names(dialog), (QStringList{u"ARTICLE"_s, u"LEFT"_s, u"PRICE"_s}));
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(statements.statements().first(3), (QStringList{byNumber, byName, readAll}));
    EXPECT_EQ(numbers(), (QStringList{u"ARTICLE 1"_s, u"LEFT 2"_s, u"PRICE 3"_s}));
}

TEST_F(ColumnReorder, TickingTheBoxReadsAnewAndDropsMoves)
{
    reorder(columns, [&](DialogForm& dialog) {
        select(dialog, u"LEFT"_s);
        DialogScript::click(dialog, up);
        DialogScript::click(dialog, sort);
        DialogScript::click(dialog, sort);
        EXPECT_EQ(names(dialog), (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"LEFT"_s}));
        DialogScript::click(dialog, cancel);
    });
    EXPECT_EQ(statements.statements(), (QStringList{byNumber, byName, byNumber}));
}

TEST_F(ColumnReorder, ClosesTheGapsBetweenNumbers)
{
    ASSERT_EQ(numbers(), asItWas);
    expectComplete();
    reorder(columns, [](DialogForm& dialog) { DialogScript::click(dialog, ok); });
    EXPECT_EQ(numbers(), (QStringList{u"ARTICLE 1"_s, u"PRICE 2"_s, u"LEFT 3"_s}));
}

TEST_F(ColumnReorder, SpecialColumnsEndWithANumberThatNobodyLooksFor)
{
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, COLUMN_TYPE) "
           "VALUES ('SALES', 'ITEMS', 1, 'RFA', 'RFA', 1), ('SALES', 'ITEMS', 1, 'ROWID', 'ROWID', 6)"_s);
    expectComplete();
    reorder(columns, [](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"LEFT"_s}));
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(numbers(), (QStringList{u"RFA -1"_s, u"ROWID -1"_s, u"ARTICLE 1"_s, u"PRICE 2"_s, u"LEFT 3"_s}));
    EXPECT_EQ(stored(u"SELECT COLUMN_NAME, COLUMN_TYPE FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS' "
                     "AND COLUMN_TYPE > 0 ORDER BY 1"_s),
              (QStringList{u"RFA|1"_s, u"ROWID|6"_s}));
}

TEST_F(ColumnReorder, NegativeNumbersOfAnAttemptThatStoppedAreNumberedFromTheList)
{
    change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = -COLUMN_NUMBER WHERE COLUMN_NAME IN ('ARTICLE', 'PRICE')"_s);
    expectComplete();
    reorder(columns, [](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), (QStringList{u"PRICE"_s, u"ARTICLE"_s, u"LEFT"_s}));
        select(dialog, u"ARTICLE"_s);
        DialogScript::click(dialog, up);
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(numbers(), (QStringList{u"ARTICLE 1"_s, u"PRICE 2"_s, u"LEFT 3"_s}));
}

TEST_F(ColumnReorder, AColumnThatIsAddedMeanwhileIsOnlyTurnedAround)
{
    expectComplete();
    reorder(columns, [&](DialogForm& dialog) {
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
               "VALUES ('SALES', 'ITEMS', 4, 'NEW', 'NEW')"_s);
        change(u"DELETE FROM TW_COLUMN WHERE COLUMN_NAME = 'PRICE'"_s);
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(numbers(), (QStringList{u"NEW -4"_s, u"ARTICLE 1"_s, u"LEFT 3"_s}));
}

TEST_F(ColumnReorder, EachColumnIsNumberedUnderItsStatusText)
{
    begin(columns);
    StatusWatcher watcher(*window);
    expectComplete();
    reorder(columns, [&](DialogForm& dialog) { DialogScript::click(dialog, ok); });
    EXPECT_EQ(watcher.seen, (QStringList{u"Preparing column ARTICLE"_s, u"Preparing column PRICE"_s,
                                         u"Preparing column LEFT"_s, u"Re-ordering column LEFT"_s,
                                         u"Re-ordering column PRICE"_s, u"Re-ordering column ARTICLE"_s}));
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(ColumnReorder, TheBoxComesWhileTheDialogStillShows)
{
    boxes.expect(complete, boxes::Icon::Information, [] {
        ASSERT_TRUE(forms::loaded(dialogName));
        EXPECT_TRUE(forms::loaded(dialogName)->isVisible());
    });
    reorder(columns, [](DialogForm& dialog) { DialogScript::click(dialog, ok); });
}

TEST_F(ColumnReorder, TheEndsOfTheListStayWhereTheyAre)
{
    const QStringList order{u"ARTICLE"_s, u"PRICE"_s, u"LEFT"_s};
    reorder(columns, [&](DialogForm& dialog) {
        // Nothing is selected yet.
        EXPECT_EQ(selected(dialog), QString());
        DialogScript::click(dialog, up);
        DialogScript::click(dialog, down);
        EXPECT_EQ(names(dialog), order);
        select(dialog, u"ARTICLE"_s);
        DialogScript::click(dialog, up);
        EXPECT_EQ(names(dialog), order);
        EXPECT_EQ(selected(dialog), u"ARTICLE"_s);
        select(dialog, u"LEFT"_s);
        DialogScript::click(dialog, down);
        EXPECT_EQ(names(dialog), order);
        EXPECT_EQ(selected(dialog), u"LEFT"_s);
        DialogScript::click(dialog, cancel);
    });
}

TEST_F(ColumnReorder, CancelEscapeAndTheTitleBarChangeNothing)
{
    const QStringList catalog = wholeCatalog();
    const std::vector<DialogScript::Action> ends{
        [](DialogForm& dialog) { DialogScript::click(dialog, cancel); },
        [](DialogForm& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape); },
        [](DialogForm& dialog) { dialog.close(); },
    };
    for (const DialogScript::Action& end : ends) {
        QString pane;
        reorder(columns, [&](DialogForm& dialog) {
            pane = currentPane();
            select(dialog, u"LEFT"_s);
            DialogScript::click(dialog, up);
            end(dialog);
        });
        EXPECT_EQ(statements.statements(), QStringList{byNumber});
        EXPECT_NE(currentPane(), u"frmColumns"_s);
        EXPECT_EQ(currentPane(), pane);
    }
    EXPECT_EQ(wholeCatalog(), catalog);
}

TEST_F(ColumnReorder, ATableWithoutOrdinaryColumnsIsCompleteAtOnce)
{
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, COLUMN_TYPE) "
           "VALUES ('SALES', 'NONE', 1, 'RFA', 'RFA', 1)"_s);
    expectComplete();
    reorder(nodeOf(u"NONE"_s), [](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), QStringList());
        DialogScript::click(dialog, up);
        DialogScript::click(dialog, down);
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(numbers(u"NONE"_s), QStringList{u"RFA 1"_s});
    EXPECT_EQ(paneTitle(), u"SALES.NONE - Columns"_s);
}

TEST_F(ColumnReorder, ApostrophesAreDoubledAndOtherScriptsKept)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('O''B')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('O''B', 'O''T🚀')"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
           "VALUES ('O''B', 'O''T🚀', 5, 'IT''S', 'F''1'), ('O''B', 'O''T🚀', 9, '🚀\"Ü', 'F2')"_s);
    expectComplete();
    reorder({u"DB"_s, u"db=O'B"_s, u"TA"_s, u"ta=O'T🚀"_s, u"CO"_s}, [&](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), (QStringList{u"IT'S"_s, u"🚀\"Ü"_s}));
        select(dialog, u"IT'S"_s);
        DialogScript::click(dialog, down);
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(statements.statements().first(),
              u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'O''B' AND TABLE_NAME = 'O''T🚀' AND "
              "COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s);
    EXPECT_EQ(stored(u"SELECT COLUMN_NAME, COLUMN_NUMBER, FIELD_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'O''B' "
                     "ORDER BY COLUMN_NUMBER"_s),
              (QStringList{u"🚀\"Ü|1|F2"_s, u"IT'S|2|F'1"_s}));
}

TEST_F(ColumnReorder, AnythingButColumnsDoesNothing)
{
    begin(columns);
    statements.clear();
    window->setCurrentItem(window->NodeToDragItem(&node(key(columns.first(4)))));
    window->mnu_ColumnReorder_Click();
    window->setCurrentItem({});
    window->mnu_ColumnReorder_Click();
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_FALSE(forms::loaded(dialogName));
}

TEST_F(ColumnReorder, StoresItsPlaceWhicheverWayItGoes)
{
    const std::vector<std::pair<QPoint, DialogScript::Action>> ends{
        {{210, 93}, [](DialogForm& dialog) { DialogScript::click(dialog, ok); }},
        {{37, 64}, [](DialogForm& dialog) { DialogScript::click(dialog, cancel); }},
        {{151, 22}, [](DialogForm& dialog) { dialog.close(); }},
    };
    expectComplete();
    for (const auto& [place, end] : ends) {
        reorder(columns, [&, place = place, end = end](DialogForm& dialog) {
            EXPECT_NE(dialog.pos(), place);
            dialog.move(place);
            end(dialog);
        });
        EXPECT_EQ(settings::getNumber(dialogName, u"Left"_s, 0), place.x() * 15);
        EXPECT_EQ(settings::getNumber(dialogName, u"Top"_s, 0), place.y() * 15);
        reorder(columns, [&, place = place](DialogForm& dialog) {
            EXPECT_EQ(dialog.pos(), place);
            DialogScript::click(dialog, cancel);
        });
    }
}

TEST_F(ColumnReorder, TheControlsSayWhatTheyAreForAndServeTheKeyboard)
{
    expectComplete();
    // A button that a key has pressed shows itself pressed for a moment first.
    const auto comesTo = [](DialogForm& dialog, const QStringList& order) {
        return QTest::qWaitFor([&] { return names(dialog) == order; });
    };
    reorder(columns, [&](DialogForm& dialog) {
        EXPECT_EQ(list(dialog).toolTip(), u"List of Columns in this Table"_s);
        EXPECT_EQ(dialog.findChild<QPushButton*>(up)->toolTip(), u"Move selected column up"_s);
        EXPECT_EQ(dialog.findChild<QPushButton*>(down)->toolTip(), u"Move selected column Down"_s);
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.isActiveWindow(); }));
        auto* box = dialog.findChild<QCheckBox*>(sort);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_C, Qt::AltModifier);
        EXPECT_TRUE(list(dialog).hasFocus());
        EXPECT_EQ(list(dialog).accessibleName(), u"Columns"_s);
        QTest::keyClick(&list(dialog), Qt::Key_End);
        EXPECT_EQ(selected(dialog), u"LEFT"_s);
        QTest::keyClick(&list(dialog), Qt::Key_U, Qt::AltModifier);
        EXPECT_TRUE(comesTo(dialog, (QStringList{u"ARTICLE"_s, u"LEFT"_s, u"PRICE"_s})));
        QTest::keyClick(&list(dialog), Qt::Key_D, Qt::AltModifier);
        EXPECT_TRUE(comesTo(dialog, (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"LEFT"_s})));
        QTest::keyClick(&list(dialog), Qt::Key_S, Qt::AltModifier);
        EXPECT_TRUE(comesTo(dialog, (QStringList{u"ARTICLE"_s, u"LEFT"_s, u"PRICE"_s})));
        list(dialog).setFocus();
        QTest::keyClick(&list(dialog), Qt::Key_Return);
    });
    EXPECT_EQ(numbers(), (QStringList{u"ARTICLE 1"_s, u"LEFT 2"_s, u"PRICE 3"_s}));
}
