#include "FieldPaneFixture.h"

#include "DropDown.h"
#include "LocalTypeLimits.h"
#include "UpDown.h"

#include <ostream>
#include <random>

using namespace Qt::StringLiterals;
using namespace fieldpane;

namespace
{

/// Attributes as a catalog might hold them.
QString randomAttributes(std::mt19937& random)
{
    const auto pick = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    QStringList items{QStringList{u"BINARY"_s, u"PACKED"_s, u"CHARACTER"_s, u"ZONED"_s}[pick(4)]};
    for (const char* word : {"STRING", "INTEGER", "UNSIGNED"}) {
        if (pick(3) == 0)
            items.append(QLatin1String(word));
    }
    for (const char* key : {"LENGTH", "DEFAULT_LENGTH", "MIN_LENGTH", "MAX_LENGTH", "PRECISION", "DEFAULT_PRECISION",
                            "SCALE", "DEFAULT_SCALE", "MIN_SCALE", "MAX_SCALE"}) {
        if (pick(2) == 0)
            items.append(QLatin1String(key) + '='_L1 + QString::number(pick(12)));
    }
    if (pick(3) == 0)
        items.append(QStringList{u"FORMAT=YYMMDD"_s, u"DEFAULT_FORMAT=hh:mm"_s}[pick(2)]);
    return items.join(';'_L1);
}

QString told(const LocalTypeLimits::Range& range, bool isFixed)
{
    return isFixed ? u"(%1 - Fixed)"_s.arg(range.preset) : u"(%1 to %2)"_s.arg(range.minimum).arg(range.maximum);
}

} // namespace

TEST_F(FieldPane, TheLimitsOfAnyTypeAreThoseOfItsAttributes)
{
    std::mt19937 random(11);
    QStringList all;
    for (int type = 0; type < 120; ++type) {
        all.append(randomAttributes(random));
        change(u"INSERT INTO TW_LOCDT (LOCAL_TYPE_NAME, ATTRIBUTES) VALUES ('T%1', '%2')"_s.arg(type).arg(all.back()));
    }
    beginToAdd();
    for (int type = 0; type < all.size(); ++type) {
        const QString wrapped = ';'_L1 + all[type] + ';'_L1;
        SCOPED_TRACE(wrapped.toStdString());
        const LocalTypeLimits limits = LocalTypeLimits::of(wrapped, LocalTypeLimits::PaneStringPosition);
        const bool isPacked = wrapped.startsWith(u";PACKED"_s);
        if (state().endsWith(u"Undo"_s))
            press(u"Undo"_s);
        list(u"LOCAL_TYPE_NAME"_s).select(u"T%1"_s.arg(type));

        EXPECT_EQ(sizes(), (QStringList{QString::number(limits.Length.preset), QString::number(limits.Precision.preset),
                                        QString::number(limits.Scale.preset)}));
        EXPECT_EQ(text(u"FORMAT"_s), limits.Format);
        EXPECT_EQ(entry(u"LENGTH"_s).isEnabled(), limits.Length.editable);
        EXPECT_EQ(entry(u"PRECISION"_s).isEnabled(), limits.Precision.editable);
        EXPECT_EQ(entry(u"SCALE"_s).isEnabled(), limits.Scale.editable);
        EXPECT_EQ(entry(u"FORMAT"_s).isEnabled(), limits.FormatEditable);
        EXPECT_EQ(control(u"cmdFormat"_s).isEnabled(), limits.FormatEditable);
        EXPECT_EQ(arrows(2).Min(), limits.Length.minimum);
        EXPECT_EQ(arrows(2).Max(), limits.Length.maximum);
        EXPECT_EQ(arrows(4).Min(), limits.Scale.minimum);
        EXPECT_EQ(arrows(4).Max(), limits.Scale.maximum);
        EXPECT_EQ(this->limits(0), told(limits.Length, !limits.Length.editable));
        EXPECT_EQ(this->limits(2), told(limits.Scale, !limits.Scale.editable));
        if (isPacked) {
            // Behind a change of its length a packed number is limited by that.
            EXPECT_EQ(arrows(3).Min(), 2 * limits.Length.preset);
            EXPECT_EQ(arrows(3).Max(), 2 * limits.Length.preset + 1);
        } else {
            EXPECT_EQ(arrows(3).Min(), limits.Precision.minimum);
            EXPECT_EQ(arrows(3).Max(), limits.Precision.maximum);
            const bool isFixed = NumberAttr(u";DEFAULT_PRECISION="_s, wrapped) == 0;
            EXPECT_EQ(this->limits(1), told(limits.Precision, isFixed));
        }

        // The grid differs in the precision of binary strings alone.
        const LocalTypeLimits grid = LocalTypeLimits::of(wrapped, LocalTypeLimits::GridStringPosition);
        EXPECT_EQ(grid.Length.preset, limits.Length.preset);
        EXPECT_EQ(grid.Scale.maximum, limits.Scale.maximum);
        EXPECT_EQ(grid.Format, limits.Format);
        EXPECT_EQ(grid.Precision.minimum, limits.Precision.minimum);
        EXPECT_EQ(grid.Precision.maximum, limits.Precision.maximum);
        if (!wrapped.startsWith(u";BINARY;STRING;"_s)) {
            EXPECT_EQ(grid.Precision.preset, limits.Precision.preset);
            EXPECT_EQ(grid.Precision.editable, limits.Precision.editable);
        }
    }
}
