#include "frmTableCriteria.h"

#include "CConnections.h"
#include "TableDataFixture.h"

#include <QClipboard>

#include <array>
#include <ostream>
#include <tuple>
#include <utility>
#include <vector>

using namespace tabledata;

namespace
{

class TableCriteria : public WithRecords
{
protected:
    /// Lets the user build a statement.
    QString build(DialogScript::Action action, const QString& table = u"ITEMS"_s, const QString& database = u"SALES"_s)
    {
        if (!window) {
            start();
            CConnections::instance().Item(datasource);
            statements.clear();
        }
        dialogs.expect(criteria, std::move(action));
        const QString built = frmTableCriteria::GetCriteria(datasource, database, table);
        dialogs.verify();
        EXPECT_FALSE(forms::loaded(criteria));
        return built;
    }

    /// What of each condition is open to entry, as "1: AndOr Column Criteria txt".
    static QStringList openConditions(DialogForm& form)
    {
        QStringList all;
        for (int line = 0; line < 5; ++line) {
            QStringList open{QString::number(line) + ':'_L1};
            for (const char* name : {"cboAndOr", "cboColumn", "cboCriteria", "txtCriteria"}) {
                const QString control = u"%1_%2"_s.arg(QLatin1String(name)).arg(line);
                const auto* text = form.findChild<QLineEdit*>(control);
                if (dialog::isEnabled(form, control) && !(text && text->isReadOnly()))
                    open.append(QString(QLatin1String(name)));
            }
            all.append(open.join(' '_L1));
        }
        return all;
    }

    /// What each condition holds.
    static QStringList conditions(DialogForm& form)
    {
        QStringList all;
        for (int line = 0; line < 5; ++line) {
            QStringList texts;
            for (const char* name : {"cboAndOr", "cboColumn", "cboCriteria"})
                texts.append(dialog::get<DropDown>(form, u"%1_%2"_s.arg(QLatin1String(name)).arg(line)).currentText());
            texts.append(DialogScript::text(form, u"txtCriteria_%1"_s.arg(line)));
            all.append(texts.join('|'_L1));
        }
        return all;
    }
};

const QStringList none{u"0: cboAndOr"_s, u"1:"_s, u"2:"_s, u"3:"_s, u"4:"_s};

} // namespace

// What shows ---------------------------------------------------------------------------------------------------------

TEST_F(TableCriteria, ShowsTheColumnsByNameWithTheirTypes)
{
    build([&](DialogForm& form) {
        EXPECT_EQ(dialog::rows(form, columns),
                  (QStringList{u"ARTICLE|VARCHAR"_s, u"MAKER|CHAR"_s, u"NOTE|LONGVARCHAR"_s, u"PRICE|INTEGER"_s,
                               u"SOLD|DATE"_s}));
        EXPECT_EQ(dialog::selected(form, columns), QStringList());
        for (int line = 0; line < 5; ++line)
            EXPECT_EQ(dialog::items(form, u"cboColumn_%1"_s.arg(line)),
                      (QStringList{u"ARTICLE"_s, u"MAKER"_s, u"NOTE"_s, u"PRICE"_s, u"SOLD"_s}));
        EXPECT_EQ(dialog::label(form, u"lblTable"_s), u"From SALES_ITEMS"_s);
        EXPECT_EQ(dialog::label(form, u"lblWarning"_s),
                  u"Please Note:\nCriteria which return a large amount of data may take some time to retrieve over a "
                  "slow connection."_s);
        EXPECT_EQ(dialog::caption(form, u"cmdSelectAll"_s), u"&All"_s);
        EXPECT_EQ(dialog::caption(form, u"cmdClear"_s), u"&Clear"_s);
        EXPECT_EQ(dialog::focus(form), columns);
        EXPECT_FALSE(dialog::isEnabled(form, ok));
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(statements.statements(), QStringList{readColumns(u"ITEMS"_s)});
}

TEST_F(TableCriteria, OffersTheJointsAndTheComparisons)
{
    build([&](DialogForm& form) {
        EXPECT_EQ(dialog::items(form, u"cboAndOr_0"_s), (QStringList{QString(), u"WHERE"_s}));
        for (int line = 0; line < 5; ++line) {
            SCOPED_TRACE(line);
            if (line > 0) {
                EXPECT_EQ(dialog::items(form, u"cboAndOr_%1"_s.arg(line)), (QStringList{QString(), u"AND"_s, u"OR"_s}));
            }
            EXPECT_EQ(dialog::items(form, u"cboCriteria_%1"_s.arg(line)),
                      (QStringList{u"LIKE"_s, u"="_s, u"<>"_s, u"<"_s, u">"_s, u"<="_s, u">="_s}));
        }
        EXPECT_EQ(conditions(form), QStringList(5, u"|||"_s));
        EXPECT_EQ(openConditions(form), none);
        DialogScript::click(form, cancel);
    });
}

TEST_F(TableCriteria, NullsAndEmptyTypesAreShownAsSuch)
{
    change(u"UPDATE TW_COLUMN SET SQL_TYPE_NAME = NULL WHERE COLUMN_NAME = 'PRICE'"_s);
    change(u"UPDATE TW_COLUMN SET SQL_TYPE_NAME = '' WHERE COLUMN_NAME = 'SOLD'"_s);
    const QString built = build([&](DialogForm& form) {
        EXPECT_EQ(dialog::rows(form, columns).last(2), (QStringList{u"PRICE|"_s, u"SOLD|"_s}));
        dialog::clickRow(form, columns, u"PRICE"_s);
        fillIn(form, 0, u"WHERE"_s, u"PRICE"_s, u"="_s, u"it's"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [PRICE] FROM [SALES_ITEMS] WHERE [PRICE] = it's"_s);
}

TEST_F(TableCriteria, ANameGoesOutAsItStands)
{
    change(u"UPDATE TW_COLUMN SET COLUMN_NAME = 'A%1]' WHERE COLUMN_NAME = 'PRICE'"_s);
    const QString built = build([&](DialogForm& form) {
        dialog::clickRow(form, columns, u"A%1]"_s);
        fillIn(form, 0, u"WHERE"_s, u"A%1]"_s, u">"_s, u"%2"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [A%1]] FROM [SALES_ITEMS] WHERE [A%1]] > %2"_s);
}

// The columns --------------------------------------------------------------------------------------------------------

TEST_F(TableCriteria, TheColumnsComeInTheOrderOfTheList)
{
    const QString built = build([&](DialogForm& form) {
        dialog::clickRow(form, columns, u"SOLD"_s);
        dialog::clickRow(form, columns, u"MAKER"_s);
        dialog::clickRow(form, columns, u"ARTICLE"_s);
        EXPECT_EQ(dialog::selected(form, columns), (QStringList{u"ARTICLE"_s, u"MAKER"_s, u"SOLD"_s}));
        // A second click takes a column out.
        dialog::clickRow(form, columns, u"MAKER"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [ARTICLE], [SOLD] FROM [SALES_ITEMS] "_s);
}

TEST_F(TableCriteria, AllAndNoneSelectAndUnselectThemAll)
{
    const QString built = build([&](DialogForm& form) {
        DialogScript::click(form, u"cmdSelectAll"_s);
        EXPECT_EQ(dialog::selected(form, columns).size(), 5);
        EXPECT_TRUE(dialog::isEnabled(form, ok));
        DialogScript::click(form, u"cmdSelectNone"_s);
        EXPECT_EQ(dialog::selected(form, columns), QStringList());
        DialogScript::click(form, u"cmdSelectAll"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [ARTICLE], [MAKER], [NOTE], [PRICE], [SOLD] FROM [SALES_ITEMS] "_s);
}

TEST_F(TableCriteria, WithoutAColumnOkAsksForOne)
{
    const QString built = build([&](DialogForm& form) {
        dialog::clickRow(form, columns, u"NOTE"_s);
        EXPECT_TRUE(dialog::isEnabled(form, ok));
        dialog::clickRow(form, columns, u"NOTE"_s);
        EXPECT_EQ(dialog::selected(form, columns), QStringList());
        boxes.expectInform(u"You must select at least one column to return."_s);
        DialogScript::click(form, ok);
        boxes.verify();
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(dialog::focus(form), columns);
        dialog::clickRow(form, columns, u"SOLD"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [SOLD] FROM [SALES_ITEMS] "_s);
}

TEST_F(TableCriteria, EnterDoesNothingBeforeAColumnIsSelected)
{
    const QString built = build([&](DialogForm& form) {
        dialog::hit(form, Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        dialog::clickRow(form, columns, u"SOLD"_s);
        dialog::hit(form, Qt::Key_Return);
    });
    EXPECT_EQ(built, u"SELECT [SOLD] FROM [SALES_ITEMS] "_s);
}

TEST_F(TableCriteria, ATableWithoutColumnsCanOnlyBeLeft)
{
    EXPECT_EQ(build(
                  [&](DialogForm& form) {
                      EXPECT_EQ(dialog::rows(form, columns), QStringList());
                      DialogScript::click(form, u"cmdSelectAll"_s);
                      EXPECT_FALSE(dialog::isEnabled(form, ok));
                      DialogScript::click(form, cancel);
                  },
                  u"NONE"_s),
              QString());
}

// The conditions -----------------------------------------------------------------------------------------------------

TEST_F(TableCriteria, AConditionOpensWithItsJointAndTheOthersWithTheFirst)
{
    build([&](DialogForm& form) {
        const QString all = u"%1: cboAndOr cboColumn cboCriteria txtCriteria"_s;
        dialog::pick(form, u"cboAndOr_0"_s, u"WHERE"_s);
        EXPECT_EQ(openConditions(form),
                  (QStringList{all.arg(0), u"1: cboAndOr"_s, u"2: cboAndOr"_s, u"3: cboAndOr"_s, u"4: cboAndOr"_s}));
        dialog::pick(form, u"cboAndOr_3"_s, u"OR"_s);
        EXPECT_EQ(openConditions(form),
                  (QStringList{all.arg(0), u"1: cboAndOr"_s, u"2: cboAndOr"_s, all.arg(3), u"4: cboAndOr"_s}));
        dialog::pick(form, u"cboAndOr_0"_s, {});
        EXPECT_EQ(openConditions(form), none);
        dialog::pick(form, u"cboAndOr_0"_s, u"WHERE"_s);
        EXPECT_EQ(openConditions(form).at(3), all.arg(3));
        dialog::pick(form, u"cboAndOr_3"_s, {});
        EXPECT_EQ(openConditions(form).at(3), u"3: cboAndOr"_s);
        DialogScript::click(form, cancel);
    });
}

TEST_F(TableCriteria, TheOthersAreLockedAndStillReadWithoutTheFirst)
{
    build([&](DialogForm& form) {
        const auto& value = dialog::get<QLineEdit>(form, u"txtCriteria_2"_s);
        EXPECT_TRUE(value.isReadOnly());
        fillIn(form, 0, u"WHERE"_s, u"PRICE"_s, u">"_s, u"3"_s);
        EXPECT_FALSE(value.isReadOnly());
        fillIn(form, 2, u"AND"_s, u"NOTE"_s, u"="_s, u"kept"_s);
        dialog::pick(form, u"cboAndOr_0"_s, {});
        EXPECT_TRUE(value.isReadOnly());
        dialog::write(form, u"txtCriteria_2"_s, u"other"_s);
        EXPECT_EQ(value.text(), u"kept"_s);
        EXPECT_FALSE(dialog::get<QLineEdit>(form, u"txtCriteria_0"_s).isReadOnly());
        dialog::pick(form, u"cboAndOr_0"_s, u"WHERE"_s);
        dialog::write(form, u"txtCriteria_2"_s, u"other"_s);
        EXPECT_EQ(value.text(), u"other"_s);
        DialogScript::click(form, cancel);
    });
}

TEST_F(TableCriteria, OneConditionLimitsTheRecords)
{
    const QString built = build([&](DialogForm& form) {
        dialog::clickRow(form, columns, u"ARTICLE"_s);
        fillIn(form, 0, u"WHERE"_s, u"PRICE"_s, u">="_s, u"7"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [ARTICLE] FROM [SALES_ITEMS] WHERE [PRICE] >= 7"_s);
}

TEST_F(TableCriteria, AllFiveConditionsComeInOrder)
{
    const QString built = build([&](DialogForm& form) {
        dialog::clickRow(form, columns, u"ARTICLE"_s);
        fillIn(form, 0, u"WHERE"_s, u"PRICE"_s, u"<"_s, u"7"_s);
        fillIn(form, 1, u"OR"_s, u"MAKER"_s, u"LIKE"_s, u"o'%"_s);
        fillIn(form, 2, u"AND"_s, u"SOLD"_s, u"<>"_s, u"1998-03-07"_s);
        fillIn(form, 3, u"OR"_s, u"ARTICLE"_s, u"="_s, u"pen"_s);
        fillIn(form, 4, u"AND"_s, u"NOTE"_s, u"<="_s, u"'A4'"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [ARTICLE] FROM [SALES_ITEMS] WHERE [PRICE] < 7 OR [MAKER] LIKE 'o''%' AND "
                     "[SOLD] <> #1998-03-07# OR [ARTICLE] = 'pen' AND [NOTE] <= 'A4'"_s);
}

TEST_F(TableCriteria, ABlankConditionIsSkipped)
{
    const QString built = build([&](DialogForm& form) {
        dialog::clickRow(form, columns, u"ARTICLE"_s);
        fillIn(form, 0, u"WHERE"_s, u"PRICE"_s, u">"_s, u"3"_s);
        // It was filled in before it was blanked.
        fillIn(form, 1, u"AND"_s, u"NOTE"_s, u"="_s, u"x"_s);
        dialog::pick(form, u"cboAndOr_1"_s, {});
        fillIn(form, 2, u"OR"_s, u"ARTICLE"_s, u"="_s, u"pen"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [ARTICLE] FROM [SALES_ITEMS] WHERE [PRICE] > 3 OR [ARTICLE] = 'pen'"_s);
}

TEST_F(TableCriteria, ConditionsStayWhenTheFirstOneIsBlanked)
{
    const QString built = build([&](DialogForm& form) {
        dialog::clickRow(form, columns, u"ARTICLE"_s);
        fillIn(form, 0, u"WHERE"_s, u"PRICE"_s, u">"_s, u"3"_s);
        fillIn(form, 1, u"AND"_s, u"NOTE"_s, u"="_s, u"x"_s);
        dialog::pick(form, u"cboAndOr_0"_s, {});
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [ARTICLE] FROM [SALES_ITEMS]  AND [NOTE] = x"_s);
}

TEST_F(TableCriteria, WhatIsLeftOutOfAConditionIsMissingInTheStatement)
{
    const QString built = build([&](DialogForm& form) {
        dialog::clickRow(form, columns, u"ARTICLE"_s);
        fillIn(form, 0, u"WHERE"_s, {}, {}, u"3"_s);
        fillIn(form, 1, u"AND"_s, u"MAKER"_s, u"="_s, {});
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [ARTICLE] FROM [SALES_ITEMS] WHERE []  3 AND [MAKER] = ''"_s);
}

TEST_F(TableCriteria, ClearBlanksEverything)
{
    build([&](DialogForm& form) {
        DialogScript::click(form, u"cmdSelectAll"_s);
        fillIn(form, 0, u"WHERE"_s, u"PRICE"_s, u">"_s, u"3"_s);
        fillIn(form, 1, u"AND"_s, u"NOTE"_s, u"="_s, u"x"_s);
        EXPECT_EQ(conditions(form).first(2), (QStringList{u"WHERE|PRICE|>|3"_s, u"AND|NOTE|=|x"_s}));
        DialogScript::click(form, u"cmdClear"_s);
        EXPECT_EQ(dialog::selected(form, columns), QStringList());
        EXPECT_EQ(conditions(form), QStringList(5, u"|||"_s));
        EXPECT_EQ(openConditions(form), none);
        DialogScript::click(form, cancel);
    });
}

TEST_F(TableCriteria, ALongValueLosesNothing)
{
    const QString value = QString(3000, u'x') + u"'"_s;
    const QString built = build([&](DialogForm& form) {
        dialog::clickRow(form, columns, u"ARTICLE"_s);
        fillIn(form, 0, u"WHERE"_s, u"ARTICLE"_s, u"="_s, u"y"_s);
        QApplication::clipboard()->setText(value);
        dialog::hit(form, Qt::Key_A, Qt::ControlModifier);
        dialog::hit(form, Qt::Key_V, Qt::ControlModifier);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(built, u"SELECT [ARTICLE] FROM [SALES_ITEMS] WHERE [ARTICLE] = '"_s + QString(3000, u'x') + u"'''"_s);
}

// Ending -------------------------------------------------------------------------------------------------------------

TEST_F(TableCriteria, CancelGivesNothingAndNothingIsKept)
{
    const std::array<DialogScript::Action, 3> ways{
        [](DialogForm& form) { DialogScript::click(form, cancel); },
        [](DialogForm& form) { dialog::hit(form, Qt::Key_Escape); },
        [](DialogForm& form) { form.close(); },
    };
    for (const auto& end : ways) {
        EXPECT_EQ(build([&](DialogForm& form) {
                      EXPECT_EQ(dialog::selected(form, columns), QStringList());
                      EXPECT_EQ(conditions(form), QStringList(5, u"|||"_s));
                      EXPECT_FALSE(dialog::isEnabled(form, ok));
                      DialogScript::click(form, u"cmdSelectAll"_s);
                      fillIn(form, 0, u"WHERE"_s, u"PRICE"_s, u">"_s, u"3"_s);
                      end(form);
                  }),
                  QString());
    }
}

TEST_F(TableCriteria, NamesWithApostrophesAreDoubledOnlyInTheCatalogsStatement)
{
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('it''s', 'm''y', 'o''wn')"_s);
    const QString built = build(
        [&](DialogForm& form) {
            EXPECT_EQ(dialog::label(form, u"lblTable"_s), u"From it's_m'y"_s);
            dialog::clickRow(form, columns, u"o'wn"_s);
            DialogScript::click(form, ok);
        },
        u"m'y"_s, u"it's"_s);
    EXPECT_EQ(statements.statements(), QStringList{readColumns(u"m''y"_s, u"it''s"_s)});
    EXPECT_EQ(built, u"SELECT [o'wn] FROM [it's_m'y] "_s);
}

TEST_F(TableCriteria, WithoutAConnectionThereIsNoStatement)
{
    world.addUnreachableDatasource(u"Nowhere"_s);
    start();
    expectUnreachable();
    EXPECT_EQ(frmTableCriteria::GetCriteria(u"Nowhere"_s, u"SALES"_s, u"ITEMS"_s), QString());
    boxes.verify();
}

TEST_F(TableCriteria, WithoutItsColumnsThereIsNoStatement)
{
    start();
    CConnections::instance().Item(datasource);
    statements.clear();
    statements.failAt(1);
    errors.expect(Press::Ignore);
    EXPECT_EQ(frmTableCriteria::GetCriteria(datasource, u"SALES"_s, u"ITEMS"_s), QString());
    errors.verify();
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmTableCriteria.GetCriteria"_s);
    EXPECT_FALSE(forms::loaded(criteria));
}

TEST_F(TableCriteria, ADefaultDatabaseLeavesThePrefixOut)
{
    world.addDatasource(u"OnlySales"_s, {u"DefaultDatabase=SALES"_s});
    start();
    CConnections::instance().Item(u"OnlySales"_s);
    world.run(u"OnlySales"_s,
              u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('SALES', 'ITEMS', 'PRICE')"_s);
    dialogs.expect(criteria, [&](DialogForm& form) {
        EXPECT_EQ(dialog::label(form, u"lblTable"_s), u"From ITEMS"_s);
        dialog::clickRow(form, columns, u"PRICE"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(frmTableCriteria::GetCriteria(u"OnlySales"_s, u"SALES"_s, u"ITEMS"_s), u"SELECT [PRICE] FROM [ITEMS] "_s);
}

// Literals -----------------------------------------------------------------------------------------------------------

TEST(WrapCriteria, OnlyTheTwoExactTextTypesAreQuotedAndDatesAreMarked)
{
    const std::vector<std::tuple<const char*, const char*, const char*>> rows{
        {"it's", "VARCHAR", "'it''s'"},
        {"it's", "CHAR", "'it''s'"},
        {"it's", "varchar", "'it''s'"},
        {"it's", "Char", "'it''s'"},
        {"it's", "LONGVARCHAR", "it's"},
        {"it's", "CHARACTER", "it's"},
        {"it's", "VARCHAR ", "it's"},
        {"1998-03-07", "DATE", "#1998-03-07#"},
        {"10:00", "Time", "#10:00#"},
        {"1998", "timestamp", "#1998#"},
        {"a#b", "DATE", "#a#b#"},
        {"12", "INTEGER", "12"},
        {"", "INTEGER", ""},
        {"", "CHAR", "''"},
        {"", "DATE", "##"},
        {"it's", "", "it's"},
        {"7", "DATETIME", "7"},
    };
    for (const auto& [value, type, literal] : rows) {
        EXPECT_EQ(frmTableCriteria::WrapCriteria(QLatin1String(value), QLatin1String(type)), QLatin1String(literal))
            << value << " as " << type;
    }
}
