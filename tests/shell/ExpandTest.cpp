#include "MainWindowFixture.h"

using namespace Qt::StringLiterals;

using Expand = MainWindowTest;

TEST_F(Expand, ADatasourceConnectsOnItsFirstExpansionAndShowsItsThreeCollections)
{
    start();
    EXPECT_EQ(rootTexts(), QStringList{datasource});
    EXPECT_EQ(node(key()).Image(), u"DSN Ghost"_s);

    clickExpander(key());

    EXPECT_EQ(children(key()), (QStringList{u"Files"_s, u"Databases"_s, u"Users"_s}));
    EXPECT_EQ(node(key()).Image(), u"Datasource"_s);
    EXPECT_TRUE(node(key()).Selected());
    EXPECT_EQ(statements.statements(), (QStringList{u"SELECT * FROM TW_SQLDT"_s, u"SELECT * FROM TW_LOCDT"_s}));
}

TEST_F(Expand, FieldsAreListedByName)
{
    start();
    expandTo(key({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s}));
    EXPECT_EQ(children(key({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s})),
              (QStringList{u"BONUS"_s, u"EMPLOYEE"_s, u"SALARY"_s}));
}
