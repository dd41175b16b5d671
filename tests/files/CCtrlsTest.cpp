#include "CCtrls.h"

#include "DropDown.h"
#include "PropertyEntry.h"
#include "QtPrinting.h"

#include <QCheckBox>
#include <QLabel>
#include <QSpinBox>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{

/// A form of two texts, a list, a flag and a label.
class ControlsTest : public testing::Test
{
protected:
    ControlsTest() { list.refill({u"FIXED"_s, u"VARIABLE"_s}); }

    PropertyEdit name;
    PropertyEdit untagged;
    PropertyMemo remarks;
    DropDown list;
    QCheckBox flag;
    QLabel label;
    const Controls form{{u"txtProperty"_s, 0, u"FILE_NAME"_s, &name},  {u"cboDropdown"_s, 0, u"RECORD_TYPE"_s, &list},
                        {u"txtProperty"_s, 3, {}, &untagged},          {u"chkProperty"_s, 1, u"MONEY"_s, &flag},
                        {u"txtProperty"_s, 2, u"REMARKS"_s, &remarks}, {u"lblMinMax"_s, 0, {}, &label}};
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

TEST_F(ControlsTest, AreBoundByTheirColumnsOrTheirNameAndIndex)
{
    CCtrls bound;
    bound.BindControls(form, u"txtProperty"_s);
    QStringList keys;
    for (const CCtrl& control : bound)
        keys.append(control.Key);
    EXPECT_EQ(keys, (QStringList{u"FILE_NAME"_s, u"txtProperty(3)"_s, u"REMARKS"_s}));
    EXPECT_EQ(bound.Count(), 3);
    EXPECT_EQ(bound.Item(u"REMARKS"_s).Widget, &remarks);
    EXPECT_EQ(bound.find(u"RECORD_TYPE"_s), nullptr);
}

TEST_F(ControlsTest, AMissingKeyAndASecondOneAreErrors)
{
    CCtrls bound;
    bound.add(u"A"_s, form[0]);
    EXPECT_EQ(errorOf([&] { bound.Item(u"a"_s); }), 5);
    EXPECT_EQ(errorOf([&] { bound.Remove(u"B"_s); }), 5);
    EXPECT_EQ(errorOf([&] { bound.add(u"A"_s, form[1]); }), 457);
    bound.Remove(u"A"_s);
    EXPECT_EQ(bound.Count(), 0);
}

TEST_F(ControlsTest, HaveTheirValueAsText)
{
    form[0].setValue(u"PAYROLL"_s);
    form[4].setValue(u"one\r\ntwo"_s);
    form[5].setValue(u"(1 to 2)"_s);
    EXPECT_EQ(form[0].Value(), u"PAYROLL"_s);
    EXPECT_EQ(form[4].Value(), u"one\r\ntwo"_s);
    EXPECT_EQ(form[5].Value(), u"(1 to 2)"_s);
    EXPECT_EQ(label.text(), u"(1 to 2)"_s);
}

TEST_F(ControlsTest, AListHasTheTextThatIsSelected)
{
    form[1].setValue(u"VARIABLE"_s);
    EXPECT_EQ(form[1].Value(), u"VARIABLE"_s);
    form[1].setValue(u"unknown"_s);
    EXPECT_EQ(form[1].Value(), u""_s);
    EXPECT_EQ(list.currentIndex(), -1);
}

TEST_F(ControlsTest, AFlagIsOneOrZero)
{
    EXPECT_EQ(form[3].Value(), u"0"_s);
    form[3].setValue(u"1"_s);
    EXPECT_EQ(form[3].Value(), u"1"_s);
    EXPECT_TRUE(flag.isChecked());
    for (const QString& other : {u"0"_s, u"2"_s, u""_s}) {
        form[3].setValue(u"1"_s);
        form[3].setValue(other);
        EXPECT_FALSE(flag.isChecked());
    }
}
