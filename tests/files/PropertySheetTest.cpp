#include "PropertySheet.h"

#include "DropDown.h"
#include "PropertyEntry.h"
#include "QtPrinting.h"
#include "RuntimeError.h"
#include "UpDown.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace
{

std::vector<Property> properties()
{
    return {
        {.prompt = "&Name:", .column = "NAME", .index = 1, .toolTip = "What it is called."},
        {.prompt = "&Size:",
         .column = "SIZE",
         .kind = EntryKind::Number,
         .index = 0,
         .limits = {.spinner = 2, .minimum = 3, .maximum = 9, .label = 1, .text = "(3 to 9)"},
         .button = {"cmdGuess", "Calculate", "Guess it"}},
        {.prompt = "&Kind:", .column = "KIND", .kind = EntryKind::List, .index = 2, .items = {"A", "B"}},
        {.prompt = "&Old", .column = "OLD", .kind = EntryKind::Flag, .index = 3},
        {.prompt = "&Word:", .column = "WORD", .kind = EntryKind::Password, .index = 4},
        {.prompt = "&Remarks:", .column = "REMARKS", .kind = EntryKind::Memo, .index = 5},
        {.column = "SECRET", .kind = EntryKind::Hidden, .index = 6},
    };
}

class Sheet : public testing::Test
{
protected:
    Sheet()
    {
        QObject::connect(&sheet, &PropertySheet::TextChanged, &sheet,
                         [this](const QString& column) { events.append("text "_L1 + column); });
        QObject::connect(&sheet, &PropertySheet::ListChanged, &sheet,
                         [this](const QString& column) { events.append("list "_L1 + column); });
        QObject::connect(&sheet, &PropertySheet::FlagClicked, &sheet,
                         [this](const QString& column) { events.append("flag "_L1 + column); });
        QObject::connect(&sheet, &PropertySheet::ButtonClicked, &sheet,
                         [this](const QString& name) { events.append("button "_L1 + name); });
        sheet.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&sheet));
    }

    PropertySheet sheet{properties()};
    QStringList events;
};

int errorOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const RuntimeError& error) {
        return static_cast<int>(error.number());
    }
    return 0;
}

} // namespace

TEST_F(Sheet, NamesItsControlsByTheirArrayAndColumnOrIndex)
{
    QStringList names;
    for (const Control& control : sheet.controls())
        names.append(control.Widget->objectName() + ' '_L1 + QString::number(control.Index));
    EXPECT_EQ(names, (QStringList{u"txtProperty_NAME 1"_s, u"txtProperty_SIZE 0"_s, u"spnUpDn_2 2"_s,
                                  u"lblMinMax_1 1"_s, u"txtProperty_KIND 2"_s, u"cboDropdown_KIND 2"_s,
                                  u"txtProperty_OLD 3"_s, u"chkProperty_OLD 3"_s, u"txtProperty_WORD 4"_s,
                                  u"txtProperty_REMARKS 5"_s, u"txtProperty_SECRET 6"_s}));
}

TEST_F(Sheet, HidesWhatStandsBehindListsAndFlags)
{
    for (const char* column : {"KIND", "OLD", "SECRET"})
        EXPECT_FALSE(sheet.text(QLatin1String(column)).Widget->isVisible()) << column;
    for (const char* column : {"NAME", "SIZE", "KIND", "OLD", "WORD", "REMARKS"})
        EXPECT_TRUE(sheet.entry(QLatin1String(column)).isVisible()) << column;
    EXPECT_EQ(dynamic_cast<QLineEdit&>(sheet.entry(u"WORD"_s)).echoMode(), QLineEdit::Password);
}

TEST_F(Sheet, PromptsLeadToTheirEntries)
{
    QStringList prompts;
    for (const QLabel* label : sheet.findChildren<QLabel*>()) {
        if (label->buddy())
            prompts.append(label->text() + ' '_L1 + label->buddy()->objectName() + ' '_L1 +
                           label->buddy()->accessibleName());
    }
    EXPECT_EQ(prompts, (QStringList{u"&Name: txtProperty_NAME Name"_s, u"&Size: txtProperty_SIZE Size"_s,
                                    u"&Kind: cboDropdown_KIND Kind"_s, u"&Old chkProperty_OLD Old"_s,
                                    u"&Word: txtProperty_WORD Word"_s, u"&Remarks: txtProperty_REMARKS Remarks"_s}));
    EXPECT_EQ(sheet.entry(u"NAME"_s).toolTip(), u"What it is called."_s);
}

TEST_F(Sheet, TellsOfWhatChanges)
{
    QTest::keyClicks(&sheet.entry(u"NAME"_s), u"x"_s);
    QTest::keyClick(&sheet.list(u"KIND"_s), Qt::Key_Down);
    QTest::keyClick(&sheet.entry(u"OLD"_s), Qt::Key_Space);
    QTest::mouseClick(&sheet.button(u"cmdGuess"_s), Qt::LeftButton);
    QTest::mouseClick(sheet.spinner(2).findChild<QWidget*>(u"up"_s), Qt::LeftButton);
    EXPECT_EQ(events,
              (QStringList{u"text NAME"_s, u"list KIND"_s, u"flag OLD"_s, u"button cmdGuess"_s, u"text SIZE"_s}));
    EXPECT_EQ(sheet.text(u"SIZE"_s).Value(), u"3"_s);
    EXPECT_EQ(sheet.minMax(1).text(), u"(3 to 9)"_s);
}

TEST_F(Sheet, HoldsEntriesToTheirColumns)
{
    std::vector<modDatabase::FieldInfo> fields{{u"SIZE"_s, dao::dbInteger, 2}};
    for (const char* column : {"NAME", "KIND", "OLD", "WORD", "REMARKS", "SECRET"})
        fields.push_back({QLatin1String(column), dao::dbText, 3});
    sheet.setColumns(modDatabase::FieldInfos(fields));
    QTest::keyClicks(&sheet.entry(u"NAME"_s), u"abcd"_s);
    QTest::keyClicks(&sheet.entry(u"SIZE"_s), u"-1.x2"_s);
    QTest::keyClicks(&sheet.entry(u"REMARKS"_s), u"abcd"_s);
    EXPECT_EQ(sheet.text(u"NAME"_s).Value(), u"ABC"_s);
    EXPECT_EQ(sheet.text(u"SIZE"_s).Value(), u"-12"_s);
    EXPECT_EQ(sheet.text(u"REMARKS"_s).Value(), u"abc"_s);
    fields.pop_back();
    EXPECT_EQ(errorOf([&] { sheet.setColumns(modDatabase::FieldInfos(fields)); }), 3265);
}

TEST_F(Sheet, WhatItLacksIsAFailedCall)
{
    EXPECT_EQ(errorOf([&] { sheet.text(u"NO"_s); }), 5);
    EXPECT_EQ(errorOf([&] { sheet.list(u"NAME"_s); }), 5);
    EXPECT_EQ(errorOf([&] { sheet.spinner(0); }), 5);
    EXPECT_EQ(errorOf([&] { sheet.minMax(0); }), 5);
    EXPECT_EQ(errorOf([&] { sheet.button(u"cmdNo"_s); }), 5);
    EXPECT_EQ(errorOf([&] { sheet.entry(u"NO"_s); }), 5);
}
