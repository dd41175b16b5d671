#include "modBoundControls.h"

#include "CConnections.h"
#include "DropDown.h"
#include "MainWindowFixture.h"
#include "PropertyEntry.h"
#include "Recordset.h"
#include "modDatabase.h"
#include "modString.h"

#include <QCheckBox>

#include <map>

using namespace Qt::StringLiterals;

namespace
{

class BoundControls : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        start();
        statements.clear();
    }

    dao::Database& db() const { return *CConnections::instance().Item(datasource)->db(); }
    std::unique_ptr<dao::Recordset> payroll() const
    {
        return db().OpenRecordset(u"SELECT * FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s);
    }

    PropertyEdit name;
    PropertyEdit size;
    PropertyEdit untagged;
    DropDown list;
    const Controls form{{u"txtProperty"_s, 0, u"FILE_NAME"_s, &name},
                        {u"txtProperty"_s, 1, u"RECORD_SIZE"_s, &size},
                        {u"txtProperty"_s, 2, {}, &untagged},
                        {u"cboDropdown"_s, 0, u"FILE_NAME"_s, &list}};
};

} // namespace

TEST_F(BoundControls, AreFilledFromTheRowByTheirTags)
{
    untagged.setText(u"as it was"_s);
    modBoundControls::PopulateFields(form, u"txtProperty"_s, *payroll());
    EXPECT_EQ(name.text(), u"PAYROLL"_s);
    EXPECT_EQ(size.text(), u"12"_s);
    EXPECT_EQ(untagged.text(), u"as it was"_s);
    EXPECT_EQ(list.currentIndex(), -1);
}

TEST_F(BoundControls, ANullShowsAsTheEmptyText)
{
    change(u"UPDATE TW_FILE SET RECORD_SIZE = NULL WHERE FILE_NAME = 'PAYROLL'"_s);
    size.setText(u"9"_s);
    modBoundControls::PopulateFields(form, u"txtProperty"_s, *payroll());
    EXPECT_EQ(size.text(), u""_s);
}

TEST_F(BoundControls, ATagThatTheRowLacksIsReported)
{
    const Controls wrong{{u"txtProperty"_s, 0, u"NO_SUCH"_s, &name}};
    errors.expect(Press::Ignore);
    modBoundControls::PopulateFields(wrong, u"txtProperty"_s, *payroll());
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().number, u"3265"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modBoundControls.PopulateFields"_s);
}

TEST_F(BoundControls, AListIsFilledWithTheFirstColumn)
{
    const auto rows = [&](const QString& where) {
        return modBoundControls::PopulateList(
            list, db(), u"SELECT FIELD_NAME, FIELD_NUMBER FROM TW_FIELD WHERE %1 ORDER BY FIELD_NUMBER"_s.arg(where));
    };
    EXPECT_EQ(rows(u"FILE_NAME = 'PAYROLL'"_s), 3);
    EXPECT_EQ(list.itemText(1), u"SALARY"_s);
    EXPECT_EQ(list.currentIndex(), -1);
    list.select(u"BONUS"_s);
    EXPECT_EQ(rows(u"FILE_NAME = 'PAYROLL' AND FIELD_NUMBER > 1"_s), 2);
    EXPECT_EQ(list.currentText(), u"BONUS"_s);
    EXPECT_EQ(rows(u"FILE_NAME = 'EMPTY'"_s), 0);
    EXPECT_EQ(list.count(), 0);
}

TEST_F(BoundControls, AListWhoseStatementFailsIsEmpty)
{
    list.refill({u"A"_s});
    errors.expect(Press::Ignore);
    EXPECT_EQ(modBoundControls::PopulateList(list, db(), u"SELECT NONSENSE FROM TW_FILE"_s), 0);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modBoundControls.PopulateList"_s);
    EXPECT_EQ(list.count(), 0);
}

TEST_F(BoundControls, AllOfANameAreEnabledAtOnce)
{
    modBoundControls::EnableControls(form, u"txtProperty"_s, false);
    EXPECT_FALSE(name.isEnabled());
    EXPECT_FALSE(untagged.isEnabled());
    EXPECT_TRUE(list.isEnabled());
    modBoundControls::EnableControls(form, u"txtProperty"_s, true);
    EXPECT_TRUE(name.isEnabled());
}

TEST_F(BoundControls, AListLosesItsSelectionWhateverTheValueIs)
{
    list.refill({u"A"_s, u"B"_s});
    list.select(u"A"_s);
    modBoundControls::SetControls(form, u"cboDropdown"_s, u"B"_s);
    EXPECT_EQ(list.currentIndex(), -1);
    modBoundControls::SetControls(form, u"txtProperty"_s, u"x"_s);
    EXPECT_EQ(name.text() + size.text() + untagged.text(), u"xxx"_s);
}

// The driver's word on columns ---------------------------------------------------------------------------------------

TEST_F(BoundControls, TheDriverTellsTypesAndWidthsOfTheColumns)
{
    dao::Database& catalog = db();
    statements.clear();
    const modDatabase::FieldInfos fields = modDatabase::FetchFieldInfo(catalog, u"TW_FIELD"_s);
    EXPECT_EQ(statements.statements(), QStringList{u"SELECT * FROM TW_FIELD "_s});
    const std::map<QString, std::pair<dao::DataType, long>> expected{
        {u"FILE_NAME"_s, {dao::dbText, 32}},      {u"FIELD_NUMBER"_s, {dao::dbInteger, 6}},
        {u"FIELD_NAME"_s, {dao::dbText, 32}},     {u"LOCAL_TYPE_NAME"_s, {dao::dbText, 32}},
        {u"OFFSET"_s, {dao::dbLong, 9}},          {u"LENGTH"_s, {dao::dbLong, 9}},
        {u"PRECISION"_s, {dao::dbLong, 9}},       {u"SCALE"_s, {dao::dbInteger, 6}},
        {u"ENCRYPTED"_s, {dao::dbInteger, 6}},    {u"FORMAT"_s, {dao::dbText, 254}},
        {u"DEFAULT_VALUE"_s, {dao::dbText, 254}}, {u"REMARKS"_s, {dao::dbText, 254}},
    };
    for (const auto& [name, column] : expected) {
        SCOPED_TRACE(name.toStdString());
        EXPECT_EQ(fields.Item(name).Name, name);
        EXPECT_EQ(fields.Item(name).Type, column.first);
        EXPECT_EQ(fields.Item(name).inputWidth(), column.second);
        EXPECT_EQ(fields.Item(name).isText(), column.first == dao::dbText);
    }
}

TEST_F(BoundControls, TheColumnsOfATableWithoutRowsAreKnownToo)
{
    change(u"DELETE FROM TW_FILE"_s);
    const modDatabase::FieldInfos fields = modDatabase::FetchFieldInfo(db(), u"TW_FILE"_s);
    EXPECT_EQ(fields.Item(u"FILE_NAME"_s).Size, 32);
    EXPECT_EQ(fields.Item(u"RECORD_SIZE"_s).Type, dao::dbLong);
    EXPECT_THROW(fields.Item(u"NO_SUCH"_s), RuntimeError);
}

// Blanks -------------------------------------------------------------------------------------------------------------

TEST(Trim, TakesBlanksFromBothEndsAndNothingElse)
{
    EXPECT_EQ(modString::Trim(u"  a b  "_s), u"a b"_s);
    EXPECT_EQ(modString::Trim(u"   "_s), u""_s);
    EXPECT_EQ(modString::Trim(u""_s), u""_s);
    EXPECT_EQ(modString::Trim(QString()), u""_s);
    EXPECT_EQ(modString::Trim(u"\ta\n"_s), u"\ta\n"_s);
    EXPECT_EQ(modString::Trim(u" \u00a0a "_s), u"\u00a0a"_s);
}
