#include "frmCriteriaBuilder.h"

#include "CConnections.h"
#include "DialogHands.h"
#include "FaultSweep.h"
#include "TablePaneFixture.h"

#include <QClipboard>

#include <array>
#include <ostream>
#include <utility>

using namespace Qt::StringLiterals;
using namespace tablepane;

namespace
{

const QString builder = u"frmCriteriaBuilder"_s;
const QString columns = u"lstColumns"_s;
const QString value = u"txtColVal"_s;
const QString criteria = u"txtCriteria"_s;
const QString ok = u"cmdOK"_s;
const QString cancel = u"cmdCancel"_s;
const QString noColumns = u"This Table contains no columns.\nAdd some columns before entering a table criteria."_s;

/// The statement that lists the columns.
QString readColumns(const QString& table, const QString& database = u"SALES"_s)
{
    return u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(database, table);
}

QString built(DialogForm& form)
{
    return dialog::get<QPlainTextEdit>(form, criteria).toPlainText();
}

class CriteriaBuilder : public TablePane
{
protected:
    void SetUp() override
    {
        TablePane::SetUp();
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME) "
               "VALUES ('SALES', 'ITEMS', 2, 'PRICE')"_s);
    }

    /// Builds on the criteria of a table that is open in its pane.
    void build(DialogScript::Action action)
    {
        dialogs.expect(builder, std::move(action));
        clickButton(u"cmdCriteria"_s);
        dialogs.verify();
        EXPECT_FALSE(forms::loaded(builder));
    }

    QString storedCriteria() const
    {
        return world.value(datasource, u"SELECT CRITERIA FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s);
    }
};

} // namespace

// What shows ---------------------------------------------------------------------------------------------------------

TEST_F(CriteriaBuilder, ShowsTheColumnsAndTheCriteriaOfTheTable)
{
    open(table(u"ITEMS"_s));
    statements.clear();
    build([&](DialogForm& form) {
        EXPECT_EQ(form.windowTitle(), u"Table Criteria Builder"_s);
        EXPECT_EQ(dialog::rows(form, columns), (QStringList{u"ARTICLE"_s, u"PRICE"_s}));
        EXPECT_EQ(built(form), u"CODE <> 'x'"_s);
        EXPECT_EQ(DialogScript::text(form, value), QString());
        EXPECT_EQ(dialog::focus(form), columns);
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(statements.statements(), QStringList{readColumns(u"ITEMS"_s)});
}

TEST_F(CriteriaBuilder, SpecialColumnsAreAmongThose)
{
    open(table(u"ORDERS"_s));
    build([&](DialogForm& form) {
        QStringList all = dialog::rows(form, columns);
        all.sort();
        EXPECT_EQ(all, (QStringList{u"AMOUNT"_s, u"BUYER"_s, u"RFA"_s}));
        EXPECT_EQ(built(form), QString());
        DialogScript::click(form, cancel);
    });
}

TEST_F(CriteriaBuilder, TellsWhatEachControlIs)
{
    open(table(u"ITEMS"_s));
    build([&](DialogForm& form) {
        EXPECT_EQ(dialog::prompt(form, columns), u"Available Columns:"_s);
        EXPECT_EQ(dialog::prompt(form, value), u"Column Value:"_s);
        EXPECT_EQ(dialog::prompt(form, criteria), u"Criteria String:"_s);
        const auto toolTip = [&](const QString& name) { return dialog::get<QWidget>(form, name).toolTip(); };
        EXPECT_EQ(toolTip(columns), u"A list of the columns for which criteria can be specified.  Double clicking the "
                                    "column appends it to the criteria string."_s);
        EXPECT_EQ(toolTip(value), QString());
        EXPECT_EQ(toolTip(u"cmdInsert"_s), u"Append to Criteria String"_s);
        EXPECT_EQ(toolTip(criteria), u"Criteria string - Any valid SQL is allowed"_s);
        EXPECT_EQ(toolTip(u"cmdClear"_s), u"Clear the criteria string"_s);
        EXPECT_EQ(toolTip(ok), QString());
        EXPECT_EQ(toolTip(cancel), QString());
        EXPECT_EQ(dialog::caption(form, u"cmdClear"_s), u"&Clear"_s);
        EXPECT_EQ(dialog::caption(form, ok), u"&OK"_s);
        EXPECT_EQ(dialog::caption(form, cancel), u"Cancel"_s);
        DialogScript::click(form, cancel);
    });
}

// Building -----------------------------------------------------------------------------------------------------------

TEST_F(CriteriaBuilder, EachOperatorAppendsItsCaptionAndABlank)
{
    constexpr std::array<std::pair<const char*, const char*>, 14> operators{{
        {"<", "Less than"},
        {">", "Greater than"},
        {"<=", "Less than or Equal to"},
        {">=", "Greater than or Equal to"},
        {"<>", "Not Equal to"},
        {"=", "Equal to"},
        {"AND", ""},
        {"OR", ""},
        {"NOT", ""},
        {"LIKE", ""},
        {"(", ""},
        {")", ""},
        {"IS NULL", ""},
        {"IS NOT NULL", ""},
    }};
    open(table(u"ITEMS"_s));
    build([&](DialogForm& form) {
        DialogScript::click(form, u"cmdClear"_s);
        for (std::size_t i = 0; i < operators.size(); ++i) {
            const QString name = u"cmdComp_%1"_s.arg(i);
            SCOPED_TRACE(name.toStdString());
            EXPECT_EQ(dialog::caption(form, name), QLatin1String(operators.at(i).first));
            EXPECT_EQ(dialog::get<QWidget>(form, name).toolTip(), QLatin1String(operators.at(i).second));
            DialogScript::click(form, name);
        }
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(text(u"CRITERIA"_s), u"< > <= >= <> = AND OR NOT LIKE ( ) IS NULL IS NOT NULL "_s);
}

TEST_F(CriteriaBuilder, ADoubleClickAppendsAColumnBehindDatabaseAndTable)
{
    open(table(u"ITEMS"_s));
    build([&](DialogForm& form) {
        dialog::clickRow(form, columns, u"ARTICLE"_s);
        EXPECT_EQ(built(form), u"CODE <> 'x'"_s);
        dialog::doubleClickRow(form, columns, u"PRICE"_s);
        EXPECT_EQ(built(form), u"CODE <> 'x'SALES_ITEMS.PRICE "_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(text(u"CRITERIA"_s), u"CODE <> 'x'SALES_ITEMS.PRICE "_s);
}

TEST_F(CriteriaBuilder, AValueIsAppendedAsItIsAndNothingForAnEmptyOne)
{
    open(table(u"ITEMS"_s));
    build([&](DialogForm& form) {
        DialogScript::click(form, u"cmdClear"_s);
        DialogScript::click(form, u"cmdInsert"_s);
        EXPECT_EQ(built(form), QString());
        dialog::write(form, value, u"it's %1 <b>"_s);
        DialogScript::click(form, u"cmdInsert"_s);
        EXPECT_EQ(built(form), u"it's %1 <b> "_s);
        EXPECT_EQ(DialogScript::text(form, value), u"it's %1 <b>"_s);
        DialogScript::click(form, u"cmdInsert"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(text(u"CRITERIA"_s), u"it's %1 <b> it's %1 <b> "_s);
}

TEST_F(CriteriaBuilder, WhatIsBuiltGoesToTheEndWhereverTheUserTypes)
{
    open(table(u"ITEMS"_s));
    build([&](DialogForm& form) {
        dialog::write(form, criteria, u"PRICE"_s);
        dialog::hit(form, Qt::Key_Home);
        DialogScript::click(form, u"cmdComp_4"_s);
        EXPECT_EQ(built(form), u"PRICE<> "_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(text(u"CRITERIA"_s), u"PRICE<> "_s);
}

TEST_F(CriteriaBuilder, ClearBlanksBothTexts)
{
    open(table(u"ITEMS"_s));
    build([&](DialogForm& form) {
        dialog::write(form, value, u"7"_s);
        DialogScript::click(form, u"cmdClear"_s);
        EXPECT_EQ(built(form), QString());
        EXPECT_EQ(DialogScript::text(form, value), QString());
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(text(u"CRITERIA"_s), QString());
    EXPECT_EQ(storedCriteria(), u"CODE <> 'x'"_s);
}

// Ending -------------------------------------------------------------------------------------------------------------

TEST_F(CriteriaBuilder, WhatIsBuiltIsStoredWithThePane)
{
    open(table(u"ITEMS"_s));
    build([&](DialogForm& form) {
        DialogScript::click(form, u"cmdClear"_s);
        dialog::doubleClickRow(form, columns, u"ARTICLE"_s);
        DialogScript::click(form, u"cmdComp_5"_s);
        dialog::write(form, value, u"'x'"_s);
        DialogScript::click(form, u"cmdInsert"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(storedCriteria(), u"CODE <> 'x'"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(),
              QStringList{updateTable(u"ITEMS"_s, u"Items"_s, u"TABLE"_s, u"EMPTY"_s, u"items.dat"_s, u"2"_s,
                                      u"SALES_ITEMS.ARTICLE = ''x'' "_s, u"old one"_s)});
    EXPECT_EQ(storedCriteria(), u"SALES_ITEMS.ARTICLE = 'x' "_s);
}

TEST_F(CriteriaBuilder, CancelLeavesTheCriteriaAndThePaneAsTheyWere)
{
    open(table(u"ITEMS"_s));
    const std::array<DialogScript::Action, 3> ways{
        [](DialogForm& form) { DialogScript::click(form, cancel); },
        [](DialogForm& form) { dialog::hit(form, Qt::Key_Escape); },
        [](DialogForm& form) { form.close(); },
    };
    for (const auto& end : ways) {
        build([&](DialogForm& form) {
            EXPECT_EQ(built(form), u"CODE <> 'x'"_s);
            DialogScript::click(form, u"cmdClear"_s);
            DialogScript::click(form, u"cmdComp_6"_s);
            end(form);
        });
        EXPECT_EQ(text(u"CRITERIA"_s), u"CODE <> 'x'"_s);
        EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
    }
}

TEST_F(CriteriaBuilder, UndoReadsTheStoredCriteriaBack)
{
    open(table(u"ITEMS"_s));
    build([&](DialogForm& form) {
        DialogScript::click(form, u"cmdComp_6"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(text(u"CRITERIA"_s), u"CODE <> 'x'AND "_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(), QStringList{readTable(u"ITEMS"_s)});
    EXPECT_EQ(text(u"CRITERIA"_s), u"CODE <> 'x'"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
}

TEST_F(CriteriaBuilder, EnterEndsItWithOkAlsoInTheListOfColumns)
{
    open(table(u"ITEMS"_s));
    build([&](DialogForm& form) {
        DialogScript::click(form, u"cmdComp_6"_s);
        dialog::clickRow(form, columns, u"ARTICLE"_s);
        dialog::hit(form, Qt::Key_Return);
    });
    EXPECT_EQ(text(u"CRITERIA"_s), u"CODE <> 'x'AND "_s);
}

TEST_F(CriteriaBuilder, ACriteriaOfSeveralLinesKeepsThemAndItsBlanks)
{
    const QString several = u"A = 'x y'\r\n\tAND\u00a0B"_s;
    change(u"UPDATE TW_TABLE SET CRITERIA = 'A = ''x y'''||char(13,10,9)||'AND\u00a0B' WHERE TABLE_NAME = 'ITEMS'"_s);
    open(table(u"ITEMS"_s));
    build([&](DialogForm& form) { DialogScript::click(form, ok); });
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(storedCriteria(), several);
    click(key(table(u"ITEMS"_s)));
    build([&](DialogForm& form) {
        DialogScript::click(form, u"cmdComp_13"_s);
        DialogScript::click(form, ok);
    });
    press(u"OK"_s);
    EXPECT_EQ(storedCriteria(), u"A = 'x y'\n\tAND\u00a0BIS NOT NULL "_s);
}

TEST_F(CriteriaBuilder, WhatIsLongerThanTheColumnIsCutInThePaneAndTold)
{
    open(table(u"ITEMS"_s));
    const auto buildOf = [&](int size) {
        build([&](DialogForm& form) {
            dialog::write(form, criteria, {});
            QApplication::clipboard()->setText(QString(size, u'x'));
            dialog::hit(form, Qt::Key_V, Qt::ControlModifier);
            EXPECT_EQ(built(form).size(), size);
            DialogScript::click(form, ok);
        });
    };
    buildOf(1024);
    EXPECT_EQ(text(u"CRITERIA"_s), QString(1024, u'x'));
    boxes.expectInform(u"The criteria is longer than the catalog can hold: only the first 1024 of its 1100 characters "
                       "have been kept."_s);
    buildOf(1100);
    boxes.verify();
    EXPECT_EQ(text(u"CRITERIA"_s), QString(1024, u'x'));
    press(u"OK"_s);
    EXPECT_EQ(storedCriteria(), QString(1024, u'x'));
}

TEST_F(CriteriaBuilder, AStoredCriteriaLongerThanItsColumnStaysWholeUnlessItIsEdited)
{
    const QString longer(1100, u'x');
    change(u"UPDATE TW_TABLE SET CRITERIA = '%1' WHERE TABLE_NAME = 'ITEMS'"_s.arg(longer));
    open(table(u"ITEMS"_s));
    for (const QString& end : {cancel, ok}) {
        build([&](DialogForm& form) {
            EXPECT_EQ(built(form).size(), 1100);
            DialogScript::click(form, end);
        });
        EXPECT_EQ(text(u"CRITERIA"_s), longer.left(1024)) << "The entry shows what fits";
        EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
    }
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(storedCriteria(), longer);

    click(key(table(u"ITEMS"_s)));
    boxes.expectInform(u"The criteria is longer than the catalog can hold: only the first 1024 of its 1112 characters "
                       "have been kept."_s);
    build([](DialogForm& form) {
        DialogScript::click(form, u"cmdComp_13"_s);
        DialogScript::click(form, ok);
    });
    boxes.verify();
    EXPECT_EQ(text(u"CRITERIA"_s), longer.left(1024));
}

// Tables -------------------------------------------------------------------------------------------------------------

TEST_F(CriteriaBuilder, ATableWithoutColumnsKeepsItsCriteria)
{
    change(u"DELETE FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS'"_s);
    open(table(u"ITEMS"_s));
    statements.clear();
    boxes.expectInform(noColumns);
    clickButton(u"cmdCriteria"_s);
    boxes.verify();
    EXPECT_EQ(statements.statements(), QStringList{readColumns(u"ITEMS"_s)});
    EXPECT_EQ(text(u"CRITERIA"_s), u"CODE <> 'x'"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
    EXPECT_FALSE(forms::loaded(builder));
}

TEST_F(CriteriaBuilder, TheTableIsTheOneThatTheNameSpeaksOfNow)
{
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('SALES', 'WARES', 'LEFT')"_s);
    open(table(u"ITEMS"_s));
    write(u"TABLE_NAME"_s, u"wares"_s);
    statements.clear();
    build([&](DialogForm& form) {
        EXPECT_EQ(dialog::rows(form, columns), QStringList{u"LEFT"_s});
        dialog::doubleClickRow(form, columns, u"LEFT"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(statements.statements(), QStringList{readColumns(u"WARES"_s)});
    EXPECT_EQ(text(u"CRITERIA"_s), u"CODE <> 'x'SALES_WARES.LEFT "_s);

    beginToAdd();
    statements.clear();
    boxes.expectInform(noColumns);
    clickButton(u"cmdCriteria"_s);
    boxes.verify();
    EXPECT_EQ(statements.statements(), QStringList{readColumns({})});
}

TEST_F(CriteriaBuilder, NamesWithApostrophesAreDoubledInTheStatementAndNotInTheText)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('it''s')"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('it''s', 'm''y', 'o''wn')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME) "
           "VALUES ('it''s', 'm''y', 'TABLE', 'EMPTY')"_s);
    open({u"DB"_s, u"db=it's"_s, u"TA"_s, u"ta=m'y"_s});
    statements.clear();
    build([&](DialogForm& form) {
        dialog::doubleClickRow(form, columns, u"o'wn"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(statements.statements(), QStringList{readColumns(u"m''y"_s, u"it''s"_s)});
    EXPECT_EQ(text(u"CRITERIA"_s), u"it's_m'y.o'wn "_s);
}

TEST_F(CriteriaBuilder, WithoutAConnectionTheCriteriaComesBack)
{
    world.addUnreachableDatasource(u"Nowhere"_s);
    start();
    boxes.expect(u"Failed to connect for the following reason:\n\nError: &H0\n[Tarnwick][ODBC]Cannot create the "
                 "catalog '%1/nowhere/catalog.db': No such file or directory\n"_s.arg(world.folder()),
                 boxes::Icon::Exclamation);
    EXPECT_EQ(frmCriteriaBuilder::GetCriteria(u"Nowhere"_s, u"SALES"_s, u"ITEMS"_s, u"A = 1"_s), u"A = 1"_s);
    boxes.verify();
}

TEST_F(CriteriaBuilder, AFaultLeavesTheCriteria)
{
    FaultSweep sweep(statements, errors);
    keepCatalog();
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(table(u"ITEMS"_s));
                   },
               .act =
                   [&](const auto& fault) {
                       if (!fault || fault->answer == Press::Retry)
                           build([](DialogForm& form) {
                               DialogScript::click(form, u"cmdComp_8"_s);
                               DialogScript::click(form, ok);
                           });
                       else
                           clickButton(u"cmdCriteria"_s);
                   },
               .outcome =
                   [&] {
                       return QStringList{text(u"CRITERIA"_s), state()};
                   },
               .goOn =
                   [&] {
                       EXPECT_FALSE(forms::loaded(builder));
                       EXPECT_EQ(errors.shown().back().trappedIn, u"frmCriteriaBuilder.GetCriteria"_s);
                       EXPECT_EQ(text(u"CRITERIA"_s), u"CODE <> 'x'"_s);
                       build([](DialogForm& form) {
                           DialogScript::click(form, u"cmdComp_8"_s);
                           DialogScript::click(form, ok);
                       });
                   }});
}
