#include "Recordset.h"
#include "RuntimeError.h"

#include "QtPrinting.h"

#include <gtest/gtest.h>

#include <optional>

namespace
{

class OneRow final : public dao::Recordset
{
public:
    explicit OneRow(std::vector<QString> names)
    {
        for (QString& name : names) {
            dao::Field field;
            field.Name = std::move(name);
            addField(std::move(field));
        }
    }
    bool Eof() const override { return false; }
    void MoveNext() override {}
    void MoveFirst() override {}
    void MoveLast() override {}
    long RecordCount() const override { return 1; }
    long AbsolutePosition() const override { return 0; }
    QStringView View(int column, bool* isNull) const override
    {
        static const QString texts[] = {"zero", "one", "two", "three"};
        if (isNull)
            *isNull = column == 3;
        return column == 3 ? QStringView() : QStringView(texts[column]);
    }
};

template <class Action>
std::optional<ErrorNumber> raised(Action&& action)
{
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return std::nullopt;
}

} // namespace

TEST(Fields, AreFoundWhateverTheirCaseAndInAnyOrder)
{
    const OneRow row({"FILE_NAME", "Offset", "L\u00e4nge", "REMARKS"});
    for (int repeat = 0; repeat < 3; ++repeat) {
        EXPECT_EQ(row.Fields().Item("offset").Value().Text(), "one");
        EXPECT_EQ(row.Fields().Item("L\u00c4NGE").Value().Text(), "two");
        EXPECT_EQ(row.Fields().Item("file_name").Value().Text(), "zero");
        EXPECT_TRUE(row.Fields().Item("Remarks").Value().IsNull());
    }
    EXPECT_EQ(raised([&] { row.Fields().Item("NONE"); }), ErrorNumber::ItemNotFound);
    EXPECT_EQ(raised([&] { row.Fields().Item(""); }), ErrorNumber::ItemNotFound);
    EXPECT_EQ(raised([&] { row.Fields().Item(4); }), ErrorNumber::ItemNotFound);
    EXPECT_EQ(raised([&] { row.Fields().Item(-1); }), ErrorNumber::ItemNotFound);
}

TEST(Fields, TheFirstOfTwoColumnsWithOneNameIsFound)
{
    const OneRow row({"A", "b", "B", "C"});
    for (int repeat = 0; repeat < 3; ++repeat)
        EXPECT_EQ(row.Fields().Item("B").Value().Text(), "one");
    EXPECT_EQ(row.Fields().Item("C").Value().IsNull(), true);
    EXPECT_EQ(row.Fields().Item("B").Value().Text(), "one");
    EXPECT_EQ(row.Fields().Item(2).Value().Text(), "two");
}

TEST(Value, ReadsAsANumberByTheRulesOfTheProgram)
{
    EXPECT_EQ(dao::Value("12").Long(), 12);
    EXPECT_EQ(dao::Value("2.5").Long(), 2);
    EXPECT_EQ(dao::Value("-3.5").Long(), -4);
    EXPECT_EQ(raised([] { static_cast<void>(dao::Value().Long()); }), ErrorNumber::InvalidUseOfNull);
    EXPECT_EQ(raised([] { static_cast<void>(dao::Value("x").Long()); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(raised([] { static_cast<void>(dao::Value("3000000000").Long()); }), ErrorNumber::Overflow);
    EXPECT_EQ(dao::Value().Text(), "");
}

TEST(Value, OfAFieldWithoutARecordsetRaises)
{
    EXPECT_EQ(raised([] { dao::Field().Value(); }), ErrorNumber::NoCurrentRecord);
}
