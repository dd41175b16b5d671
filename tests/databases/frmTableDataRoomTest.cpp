#include "TableDataPane.h"

#include "Settings.h"

#include <QScrollArea>
#include <QScrollBar>

#include <ostream>

using namespace tabledata;

namespace
{

/// How the statement and the records share the pane.
class TableDataRoom : public TableData
{
protected:
    /// Defines the table WIDE and looks at all that it holds.
    void viewWide(int columnCount, int recordCount, QSize size = {800, 580})
    {
        QStringList columnNames;
        QStringList definitions;
        for (int column = 1; column <= columnCount; ++column) {
            columnNames.append(u"FIELD_%1"_s.arg(column, 3, 10, QChar(u'0')));
            definitions.append(u"('SALES', 'WIDE', %1, '%2', 'INTEGER')"_s.arg(column).arg(columnNames.last()));
        }
        change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE) VALUES ('SALES', 'WIDE', 'TABLE')"_s);
        change(
            u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, SQL_TYPE_NAME) VALUES "_s +
            definitions.join(u", "_s));
        change(u"CREATE TABLE SALES_WIDE (%1 INTEGER)"_s.arg(columnNames.join(u" INTEGER, "_s)));
        const QString record = '(' + QStringList(columnCount, u"7"_s).join(u", "_s) + ')';
        change(u"INSERT INTO SALES_WIDE VALUES "_s + QStringList(recordCount, record).join(u", "_s));
        view(all, u"WIDE"_s);
        resize(size);
        ASSERT_EQ(grid().Cols(), columnCount);
        ASSERT_EQ(grid().Rows(), recordCount);
    }

    void resize(QSize size) const
    {
        window->resize(size);
        QApplication::processEvents();
    }

    QLabel& statement() const { return dynamic_cast<QLabel&>(control(u"lblDescription"_s)); }
    QScrollArea& placeOfStatement() const
    {
        return dynamic_cast<QScrollArea&>(*statement().parentWidget()->parentWidget());
    }
    /// Whether all of the statement shows, if need be after scrolling.
    bool statementCanBeReached() const
    {
        const QScrollBar& bar = *placeOfStatement().verticalScrollBar();
        const int rest = statement().height() - placeOfStatement().viewport()->height();
        return statement().height() >= statement().heightForWidth(statement().width()) &&
               bar.isVisible() == (rest > 0) && bar.maximum() == std::max(0, rest);
    }
    bool statementScrolls() const { return placeOfStatement().verticalScrollBar()->maximum() > 0; }

    /// The pane has no scroll bar for nothing, and none at all.
    void expectAllInView() const
    {
        QList<QScrollArea*> areas = window->currentPane()->findChildren<QScrollArea*>(Qt::FindDirectChildrenOnly);
        areas.removeOne(&placeOfStatement());
        EXPECT_EQ(areas.size(), 1);
        for (const QScrollArea* area : areas) {
            EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
            EXPECT_FALSE(area->verticalScrollBar()->isVisible());
            EXPECT_EQ(area->widget()->size(), area->viewport()->size());
        }
    }

    /// Rows of the grid that show from top to bottom in the window.
    int rowsInView() const
    {
        int count = 0;
        for (int row = 0; row < grid().Rows(); ++row) {
            const QRect cell = grid().visualRect(grid().model()->index(row, 0));
            const QRegion shown = grid().viewport()->visibleRegion();
            if (shown.boundingRect().top() <= cell.top() && cell.bottom() <= shown.boundingRect().bottom())
                ++count;
        }
        return count;
    }
};

} // namespace

TEST_F(TableDataRoom, AWideTableLeavesRoomForItsRecords)
{
    viewWide(60, 10);
    EXPECT_EQ(description().count(u"[FIELD_"_s), 60);
    EXPECT_TRUE(statementScrolls());
    EXPECT_TRUE(statementCanBeReached());
    EXPECT_GE(rowsInView(), 6);
    EXPECT_LE(placeOfStatement().height(), window->currentPane()->height() / 3);
    expectAllInView();
    EXPECT_TRUE(control(u"datPrimary"_s).visibleRegion().boundingRect().contains(control(u"datPrimary"_s).rect()));
}

TEST_F(TableDataRoom, AStatementShowsWholeWhereTheRecordsLeaveItTheRoom)
{
    viewWide(5, 4, {860, 620});
    EXPECT_FALSE(statementScrolls());
    EXPECT_TRUE(statementCanBeReached());
    EXPECT_EQ(rowsInView(), 4);

    resize({860, 440});
    EXPECT_TRUE(statementScrolls());
    EXPECT_TRUE(statementCanBeReached());
    resize({860, 620});
    EXPECT_FALSE(statementScrolls());
    EXPECT_TRUE(statementCanBeReached());
    expectAllInView();
}

TEST_F(TableDataRoom, AStatementHasWhatTenRecordsLeave)
{
    viewWide(60, 500, {800, 1000});
    EXPECT_TRUE(statementScrolls());
    EXPECT_GT(placeOfStatement().height(), window->currentPane()->height() / 2);
    EXPECT_GE(rowsInView(), 10);
    EXPECT_LE(rowsInView(), 12);
}

TEST_F(TableDataRoom, AStatementThatScrollsIsReadWithTheKeys)
{
    viewWide(60, 10);
    QScrollArea& place = placeOfStatement();
    const int line = statement().fontMetrics().lineSpacing();
    EXPECT_EQ(place.viewport()->height() % line, 0);
    ASSERT_EQ(place.focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(place.accessibleName(), u"Description"_s);
    place.setFocus();
    QTest::keyClick(&place, Qt::Key_Down);
    EXPECT_EQ(place.verticalScrollBar()->value(), line);
    QTest::keyClick(&place, Qt::Key_Tab);
    EXPECT_FALSE(place.hasFocus());

    place.setFocus();
    resize({800, 2400});
    EXPECT_FALSE(statementScrolls());
    EXPECT_FALSE(place.hasFocus());
    EXPECT_EQ(place.focusPolicy(), Qt::NoFocus);
}

TEST_F(TableDataRoom, AWordThatIsWiderThanThePaneIsReachedToo)
{
    view([&](DialogForm& form) {
        choose(form, {u"ARTICLE"_s});
        fillIn(form, 0, u"WHERE"_s, u"ARTICLE"_s, u"<>"_s, QString(300, u'W'));
        DialogScript::click(form, ok);
    });
    resize({800, 580});
    const QScrollArea& place = placeOfStatement();
    EXPECT_GE(statement().width(), statement().fontMetrics().horizontalAdvance(QString(300, u'W')));
    EXPECT_EQ(place.horizontalScrollBar()->maximum(), statement().width() - place.viewport()->width());
    EXPECT_TRUE(place.horizontalScrollBar()->isVisible());
    EXPECT_FALSE(statementScrolls());
    EXPECT_TRUE(statementCanBeReached());
    EXPECT_LE(grid().width(), window->currentPane()->width());
}

TEST_F(TableDataRoom, InTheClassicStyleTheRecordsHaveThePane)
{
    settings::save(u"Options"_s, u"Win98"_s, 0);
    viewWide(60, 10);
    EXPECT_FALSE(placeOfStatement().isVisible());
    EXPECT_EQ(rowsInView(), 10);
}
