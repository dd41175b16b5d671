#include "frmTimeFormat.h"

#include "DialogScript.h"

#include "QtPrinting.h"
#include "RecordingOutside.h"

#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{

const QDateTime moment(QDate(1998, 3, 7), QTime(15, 9, 6));

class TimeFormat : public testing::Test
{
protected:
    void TearDown() override { EXPECT_FALSE(forms::loaded(u"frmTimeFormat"_s)); }

    static QString build(const QString& format, const QStringList& clicks)
    {
        DialogScript script;
        script.expect(u"frmTimeFormat"_s, [&](DialogForm& dialog) {
            for (const QString& button : clicks)
                DialogScript::click(dialog, button);
        });
        return frmTimeFormat::GetFormat(format);
    }

    RecordingOutside outside;
};

} // namespace

TEST_F(TimeFormat, EveryTokenGivesItsPartOfTheTime)
{
    EXPECT_EQ(frmTimeFormat::MakeExample(u"hh"_s, moment), u"15"_s);
    EXPECT_EQ(frmTimeFormat::MakeExample(u"mm"_s, moment), u"09"_s);
    EXPECT_EQ(frmTimeFormat::MakeExample(u"ss"_s, moment), u"06"_s);
    EXPECT_EQ(frmTimeFormat::MakeExample(u"cc"_s, moment), u"00"_s);
    EXPECT_EQ(frmTimeFormat::MakeExample(u"hh:mm:ss.cc"_s, moment), u"15:09:06.00"_s);
}

TEST_F(TimeFormat, WhatIsNoTokenStandsForItself)
{
    EXPECT_EQ(frmTimeFormat::MakeExample(u"_;-.,/\\: "_s, moment), u"_;-.,/\\: "_s);
    EXPECT_EQ(frmTimeFormat::MakeExample(u"HH MM SS CC"_s, moment), u"HH MM SS CC"_s);
    EXPECT_EQ(frmTimeFormat::MakeExample(u"hhh YYYY c"_s, moment), u"15h YYYY c"_s);
    EXPECT_EQ(frmTimeFormat::MakeExample(u"🚀ss"_s, moment), u"🚀06"_s);
}

TEST_F(TimeFormat, TheExampleIsOfThePresentMoment)
{
    outside.clock = QDateTime(QDate(2001, 12, 31), QTime(0, 0, 59));
    EXPECT_EQ(frmTimeFormat::MakeExample(u"hh.mm.ss"_s), u"00.00.59"_s);
}

TEST_F(TimeFormat, EachButtonAppendsItsToken)
{
    const QStringList captions{u"Hours"_s,         u"Minutes"_s,    u"Seconds"_s,   u"Underscore"_s,
                               u"Semi-Collon"_s,   u"Hyphen"_s,     u"Full Stop"_s, u"Comma"_s,
                               u"Forward Slash"_s, u"Back Slash"_s, u"Collon"_s,    u" (Space)"_s};
    const QStringList tokens{u"hh"_s, u"mm"_s, u"ss"_s, u"_"_s,  u";"_s, u"-"_s,
                             u"."_s,  u","_s,  u"/"_s,  u"\\"_s, u":"_s, u" "_s};
    DialogScript script;
    script.expect(u"frmTimeFormat"_s, [&](DialogForm& dialog) {
        QString format;
        for (qsizetype index = 0; index < tokens.size(); ++index) {
            const QString name = u"cmdComp_%1"_s.arg(index);
            auto* button = dialog.findChild<QPushButton*>(name);
            ASSERT_NE(button, nullptr);
            EXPECT_EQ(button->text(), captions.at(index));
            DialogScript::click(dialog, name);
            format += tokens.at(index);
            EXPECT_EQ(DialogScript::text(dialog, u"lblFormat"_s), format);
            EXPECT_EQ(DialogScript::text(dialog, u"lblExample"_s), frmTimeFormat::MakeExample(format));
        }
        EXPECT_EQ(dialog.findChild<QPushButton*>(u"cmdComp_12"_s), nullptr);
        DialogScript::click(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(frmTimeFormat::GetFormat({}), tokens.join(QString()));
}

TEST_F(TimeFormat, DeleteRemovesTheLastComponent)
{
    const QString remove = u"cmdDelete"_s;
    const QString ok = u"cmdOK"_s;
    EXPECT_EQ(build(u"hh:mm:ss.cc"_s, {remove, ok}), u"hh:mm:ss."_s);
    EXPECT_EQ(build(u"hh:mm:ss."_s, {remove, ok}), u"hh:mm:ss"_s);
    EXPECT_EQ(build(u"hhmmss"_s, {remove, remove, remove, remove, ok}), QString());
    EXPECT_EQ(build(u":"_s, {remove, ok}), u":"_s);
    EXPECT_EQ(build(u":c"_s, {remove, ok}), u":"_s);
    EXPECT_EQ(build({}, {remove, ok}), QString());
}

TEST_F(TimeFormat, TheTextsShowTheFormatAsGivenAndWhatADeletionLeaves)
{
    outside.clock = moment;
    DialogScript script;
    script.expect(u"frmTimeFormat"_s, [](DialogForm& dialog) {
        const QStringList formats{u"hh:ss.cc"_s, u"hh:ss."_s, u"hh:ss"_s, u"hh:"_s};
        const QStringList examples{u"15:06.00"_s, u"15:06."_s, u"15:06"_s, u"15:"_s};
        for (qsizetype deletions = 0; deletions < formats.size(); ++deletions) {
            if (deletions > 0)
                DialogScript::click(dialog, u"cmdDelete"_s);
            EXPECT_EQ(DialogScript::text(dialog, u"lblFormat"_s), formats.at(deletions));
            EXPECT_EQ(DialogScript::text(dialog, u"lblExample"_s), examples.at(deletions));
        }
        DialogScript::click(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(frmTimeFormat::GetFormat(u"hh:ss.cc"_s), u"hh:"_s);
}

TEST_F(TimeFormat, AFormatStaysBelow255Characters)
{
    EXPECT_EQ(build(QString(253, u'-'), {u"cmdComp_0"_s, u"cmdComp_5"_s, u"cmdComp_5"_s, u"cmdOK"_s}),
              QString(254, u'-'));
}

TEST_F(TimeFormat, AnythingButOkGivesTheFormatAsItWas)
{
    EXPECT_EQ(build(u"hh"_s, {u"cmdComp_1"_s, u"cmdCancel"_s}), u"hh"_s);
    DialogScript script;
    script.expect(u"frmTimeFormat"_s, [](DialogForm& dialog) {
        DialogScript::click(dialog, u"cmdComp_1"_s);
        dialog.close();
    });
    EXPECT_EQ(frmTimeFormat::GetFormat(u"ss"_s), u"ss"_s);
}
