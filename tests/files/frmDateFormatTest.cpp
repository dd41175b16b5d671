#include "frmDateFormat.h"

#include "DialogScript.h"

#include "QtPrinting.h"
#include "RecordingOutside.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace
{

/// Friday, 7 March 1998.
const QDateTime moment(QDate(1998, 3, 7), QTime(9, 5, 6));

class Locale
{
public:
    explicit Locale(const QLocale& locale) { QLocale::setDefault(locale); }
    ~Locale() { QLocale::setDefault(m_former); }
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;

private:
    QLocale m_former;
};

class DateFormat : public testing::Test
{
protected:
    void TearDown() override { EXPECT_FALSE(forms::loaded(u"frmDateFormat"_s)); }

    /// Lets the dialog build on a format by clicks on the buttons, and returns what it gives.
    static QString build(const QString& format, const QStringList& clicks)
    {
        DialogScript script;
        script.expect(u"frmDateFormat"_s, [&](DialogForm& dialog) {
            for (const QString& button : clicks)
                DialogScript::click(dialog, button);
        });
        return frmDateFormat::GetFormat(format);
    }

    RecordingOutside outside;
};

} // namespace

TEST_F(DateFormat, EveryTokenGivesItsPartOfTheDate)
{
    const Locale english(QLocale(QLocale::English, QLocale::UnitedKingdom));
    EXPECT_EQ(frmDateFormat::MakeExample(u"YY"_s, moment), u"98"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"YYYY"_s, moment), u"1998"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"MM"_s, moment), u"03"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"MMM"_s, moment), u"Mar"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"DD"_s, moment), u"07"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"DD/MM/YYYY"_s, moment), u"07/03/1998"_s);
}

TEST_F(DateFormat, TheLongestTokenIsReadFirst)
{
    const Locale english(QLocale(QLocale::English, QLocale::UnitedKingdom));
    EXPECT_EQ(frmDateFormat::MakeExample(u"YYYYY"_s, moment), u"1998Y"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"YYYYYY"_s, moment), u"199898"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"YYY"_s, moment), u"98Y"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"MMMM"_s, moment), u"MarM"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"MMMMM"_s, moment), u"Mar03"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"DDD"_s, moment), u"07D"_s);
}

TEST_F(DateFormat, WhatIsNoTokenStandsForItself)
{
    EXPECT_EQ(frmDateFormat::MakeExample(u"_;-.,/\\: "_s, moment), u"_;-.,/\\: "_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"yyyy mm dd"_s, moment), u"yyyy mm dd"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"Y M D hh"_s, moment), u"Y M D hh"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"🚀DD'🚀"_s, moment), u"🚀07'🚀"_s);
    EXPECT_EQ(frmDateFormat::MakeExample({}, moment), QString());
}

TEST_F(DateFormat, MonthsBearTheNamesOfTheUsersLanguage)
{
    const Locale french(QLocale(QLocale::French, QLocale::France));
    EXPECT_EQ(frmDateFormat::MakeExample(u"DD MMM YYYY"_s, moment),
              u"07 "_s + QLocale().toString(moment.date(), u"MMM") + u" 1998"_s);
    EXPECT_EQ(frmDateFormat::MakeExample(u"MMM"_s, moment), u"mars"_s);
}

TEST_F(DateFormat, TheExampleIsOfThePresentMoment)
{
    outside.clock = QDateTime(QDate(2001, 12, 31), QTime(23, 59, 59));
    EXPECT_EQ(frmDateFormat::MakeExample(u"YYYY-MM-DD"_s), u"2001-12-31"_s);
}

TEST_F(DateFormat, EachButtonAppendsItsToken)
{
    const QStringList captions{u"Year (98)"_s,     u"Year (1998)"_s, u"Month (01)"_s, u"Month (Jan)"_s, u"Day"_s,
                               u"Underscore"_s,    u"Semi-Collon"_s, u"Hyphen"_s,     u"Full Stop"_s,   u"Comma"_s,
                               u"Forward Slash"_s, u"Back Slash"_s,  u"Collon"_s,     u" (Space)"_s};
    const QStringList tokens{u"YY"_s, u"YYYY"_s, u"MM"_s, u"MMM"_s, u"DD"_s, u"_"_s, u";"_s,
                             u"-"_s,  u"."_s,    u","_s,  u"/"_s,   u"\\"_s, u":"_s, u" "_s};
    DialogScript script;
    script.expect(u"frmDateFormat"_s, [&](DialogForm& dialog) {
        QString format;
        for (qsizetype index = 0; index < tokens.size(); ++index) {
            const QString name = u"cmdComp_%1"_s.arg(index);
            auto* button = dialog.findChild<QPushButton*>(name);
            ASSERT_NE(button, nullptr);
            EXPECT_EQ(button->text(), captions.at(index));
            EXPECT_FALSE(button->accessibleName().isEmpty());
            DialogScript::click(dialog, name);
            format += tokens.at(index);
            EXPECT_EQ(DialogScript::text(dialog, u"lblFormat"_s), format);
            EXPECT_EQ(DialogScript::text(dialog, u"lblExample"_s), frmDateFormat::MakeExample(format));
        }
        EXPECT_EQ(dialog.findChild<QPushButton*>(u"cmdComp_14"_s), nullptr);
        DialogScript::click(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(frmDateFormat::GetFormat({}), tokens.join(QString()));
}

TEST_F(DateFormat, ADayAMonthAndAYearGiveTheDateInThatLayout)
{
    outside.clock = moment;
    DialogScript script;
    script.expect(u"frmDateFormat"_s, [&](DialogForm& dialog) {
        for (const int component : {4, 10, 2, 10, 1})
            DialogScript::click(dialog, u"cmdComp_%1"_s.arg(component));
        EXPECT_EQ(DialogScript::text(dialog, u"lblExample"_s), u"07/03/1998"_s);
        DialogScript::click(dialog, u"cmdOK"_s);
    });
    const QString format = frmDateFormat::GetFormat({});
    EXPECT_EQ(format, u"DD/MM/YYYY"_s);
    EXPECT_EQ(format.size(), 10);
}

TEST_F(DateFormat, DeleteRemovesTheLastComponent)
{
    const QString remove = u"cmdDelete"_s;
    const QString ok = u"cmdOK"_s;
    EXPECT_EQ(build(u"YYYYMM"_s, {remove, ok}), u"YYYY"_s);
    EXPECT_EQ(build(u"YYYYMM"_s, {remove, remove, ok}), QString());
    EXPECT_EQ(build(u"DD/MMM"_s, {remove, ok}), u"DD/"_s);
    EXPECT_EQ(build(u"DD/MMM"_s, {remove, remove, ok}), u"DD"_s);
    EXPECT_EQ(build(u"YY"_s, {remove, ok}), QString());
    EXPECT_EQ(build(u"DDYYY"_s, {remove, ok}), u"DDY"_s);
}

TEST_F(DateFormat, ALoneSeparatorCannotBeDeleted)
{
    const QString remove = u"cmdDelete"_s;
    const QString ok = u"cmdOK"_s;
    EXPECT_EQ(build(u"/"_s, {remove, ok}), u"/"_s);
    EXPECT_EQ(build(u"/-"_s, {remove, remove, ok}), u"/"_s);
    EXPECT_EQ(build({}, {remove, remove, ok}), QString());
    EXPECT_EQ(build(u"🚀"_s, {remove, ok}), u"🚀"_s);
    EXPECT_EQ(build(u"🚀🚀"_s, {remove, ok}), u"🚀"_s);
}

TEST_F(DateFormat, AFormatStaysBelow255Characters)
{
    const QString room = QString(252, u'-');
    EXPECT_EQ(build(room, {u"cmdComp_2"_s, u"cmdComp_7"_s, u"cmdOK"_s}), room + u"MM"_s);
    EXPECT_EQ(build(room, {u"cmdComp_1"_s, u"cmdComp_3"_s, u"cmdComp_7"_s, u"cmdOK"_s}), room + u"-"_s);
    EXPECT_EQ(build(QString(253, u'-'), {u"cmdComp_7"_s, u"cmdComp_7"_s, u"cmdOK"_s}), QString(254, u'-'));
}

TEST_F(DateFormat, CancelGivesTheFormatAsItWas)
{
    EXPECT_EQ(build(u"DD.MM"_s, {u"cmdComp_8"_s, u"cmdComp_0"_s, u"cmdCancel"_s}), u"DD.MM"_s);
}

TEST_F(DateFormat, ClosingByTheTitleBarIsACancel)
{
    DialogScript script;
    script.expect(u"frmDateFormat"_s, [](DialogForm& dialog) {
        DialogScript::click(dialog, u"cmdComp_0"_s);
        dialog.close();
    });
    EXPECT_EQ(frmDateFormat::GetFormat(u"DD"_s), u"DD"_s);
}

TEST_F(DateFormat, ADialogThatGoesWhileItShowsIsACancel)
{
    DialogScript script;
    script.expect(u"frmDateFormat"_s, [](DialogForm& dialog) {
        DialogScript::click(dialog, u"cmdComp_0"_s);
        forms::unload(dialog.name());
    });
    EXPECT_EQ(frmDateFormat::GetFormat(u"DD"_s), u"DD"_s);
}

TEST_F(DateFormat, StrangeFormatsComeBackAsTheyWere)
{
    for (const QString& format : {u"it's & <b>🚀</b>"_s, QString(300, u'D'), u"a\nb\tc"_s, u"%1 %n"_s})
        EXPECT_EQ(build(format, {u"cmdOK"_s}), format);
}

TEST_F(DateFormat, TheKeyboardReachesEverything)
{
    DialogScript script;
    script.expect(u"frmDateFormat"_s, [](DialogForm& dialog) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.focusWidget() && dialog.focusWidget()->hasFocus(); }));
        QStringList reached;
        for (int tabs = 0; tabs < 40; ++tabs) {
            if (reached.contains(dialog.focusWidget()->objectName()))
                break;
            reached.append(dialog.focusWidget()->objectName());
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        }
        for (const QString& name : {u"lblFormat"_s, u"lblExample"_s, u"cmdDelete"_s, u"cmdOK"_s, u"cmdCancel"_s})
            EXPECT_TRUE(reached.contains(name)) << reached.join(' ').toStdString();
        for (int component = 0; component < 14; ++component)
            EXPECT_TRUE(reached.contains(u"cmdComp_%1"_s.arg(component))) << component;
        // Enter presses the button that has the focus.
        auto* day = dialog.findChild<QPushButton*>(u"cmdComp_4"_s);
        day->setFocus();
        QTest::keyClick(day, Qt::Key_Return);
        EXPECT_EQ(DialogScript::text(dialog, u"lblFormat"_s), u"DD"_s);
        // And "OK" where the focus is in none.
        auto* text = dialog.findChild<QLineEdit*>(u"lblFormat"_s);
        text->setFocus();
        QTest::keyClick(text, Qt::Key_Enter);
    });
    EXPECT_EQ(frmDateFormat::GetFormat({}), u"DD"_s);
}

TEST_F(DateFormat, EscapeIsACancel)
{
    DialogScript script;
    script.expect(u"frmDateFormat"_s, [](DialogForm& dialog) {
        DialogScript::click(dialog, u"cmdComp_0"_s);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
    });
    EXPECT_EQ(frmDateFormat::GetFormat(u"DD"_s), u"DD"_s);
}

TEST_F(DateFormat, TheTextsCannotBeTypedInto)
{
    DialogScript script;
    script.expect(u"frmDateFormat"_s, [](DialogForm& dialog) {
        for (const QString& name : {u"lblFormat"_s, u"lblExample"_s}) {
            auto* text = dialog.findChild<QLineEdit*>(name);
            const QString former = text->text();
            text->setFocus();
            QTest::keyClicks(text, u"x"_s);
            QTest::keyClick(text, Qt::Key_Backspace);
            EXPECT_EQ(text->text(), former);
            EXPECT_FALSE(text->accessibleName().isEmpty());
        }
        DialogScript::click(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(frmDateFormat::GetFormat(u"YY"_s), u"YY"_s);
}

TEST_F(DateFormat, TheTextsShowTheFormatAsGivenAndWhatADeletionLeaves)
{
    const Locale english(QLocale(QLocale::English, QLocale::UnitedKingdom));
    outside.clock = moment;
    DialogScript script;
    script.expect(u"frmDateFormat"_s, [](DialogForm& dialog) {
        const QStringList formats{u"DD/MMM"_s, u"DD/"_s, u"DD"_s, QString(), QString()};
        const QStringList examples{u"07/Mar"_s, u"07/"_s, u"07"_s, QString(), QString()};
        for (qsizetype deletions = 0; deletions < formats.size(); ++deletions) {
            if (deletions > 0)
                DialogScript::click(dialog, u"cmdDelete"_s);
            EXPECT_EQ(DialogScript::text(dialog, u"lblFormat"_s), formats.at(deletions));
            EXPECT_EQ(DialogScript::text(dialog, u"lblExample"_s), examples.at(deletions));
        }
        DialogScript::click(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(frmDateFormat::GetFormat(u"DD/MMM"_s), QString());
}

/// Whatever is built from components goes away component by component, as long as no component's end reads as another.
TEST_F(DateFormat, DeletingUndoesBuilding)
{
    outside.clock = moment;
    std::mt19937 random(19980307);
    std::vector<int> tokens{0, 1, 2, 3, 4};
    for (int round = 0; round < 5; ++round) {
        std::shuffle(tokens.begin(), tokens.end(), random);
        DialogScript script;
        script.expect(u"frmDateFormat"_s, [&](DialogForm& dialog) {
            QStringList formats{DialogScript::text(dialog, u"lblFormat"_s)};
            QStringList examples{DialogScript::text(dialog, u"lblExample"_s)};
            const auto append = [&](int component) {
                DialogScript::click(dialog, u"cmdComp_%1"_s.arg(component));
                formats.append(DialogScript::text(dialog, u"lblFormat"_s));
                examples.append(DialogScript::text(dialog, u"lblExample"_s));
            };
            for (const int token : tokens) {
                // A separator in front of each token keeps it from growing together with the one before.
                append(5 + static_cast<int>(random() % 9));
                append(token);
            }
            SCOPED_TRACE(formats.back().toStdString());
            while (formats.size() > 1) {
                formats.removeLast();
                examples.removeLast();
                DialogScript::click(dialog, u"cmdDelete"_s);
                EXPECT_EQ(DialogScript::text(dialog, u"lblFormat"_s), formats.back());
                EXPECT_EQ(DialogScript::text(dialog, u"lblExample"_s), examples.back());
            }
            DialogScript::click(dialog, u"cmdOK"_s);
        });
        EXPECT_EQ(frmDateFormat::GetFormat(u"DD"_s), u"DD"_s);
    }
}
