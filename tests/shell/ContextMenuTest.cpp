#include "MainWindowFixture.h"
#include "RecordingPanes.h"

#include "Commands.h"
#include "Settings.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;

namespace
{

const QStringList database{u"DB"_s, u"db=SALES"_s};
const QStringList table = database + QStringList{u"TA"_s, u"ta=ORDERS"_s};
const QStringList systemDatabase{u"DB"_s, u"db=TW"_s};
const QStringList systemTable = systemDatabase + QStringList{u"TA"_s, u"ta=USER"_s};

/// What a node's menu shows on its first use in a run, in the order of the menu; nothing for no menu.
struct Menu {
    const char* name;
    QStringList node;
    QStringList entries;
};

void PrintTo(const Menu& menu, std::ostream* out)
{
    *out << menu.name;
}

std::vector<Menu> firstMenus()
{
    return {
        {"Datasource",
         {},
         {u"mnu_DSNExpandAll"_s, u"mnu_DSNImport"_s, u"mnu_DSNExport"_s, u"mnu_DSNClear"_s, u"mnu_DSNDisconnect"_s}},
        {"Files", {u"FI"_s}, {u"mnu_FileExpandAll"_s, u"mnu_FileAdd"_s}},
        {"File",
         {u"FI"_s, u"fi=PAYROLL"_s},
         {u"mnu_FileExpandAll"_s, u"mnu_FileAdd"_s, u"mnu_FileEdit"_s, u"mnu_FileSep1"_s, u"mnu_FileCopy"_s,
          u"mnu_FileDelete"_s, u"mnu_FileSep2"_s, u"mnu_FileFileToTableWizard"_s}},
        {"SystemFile",
         {u"FI"_s, u"fi=CNTRL"_s},
         {u"mnu_FileExpandAll"_s, u"mnu_FileAdd"_s, u"mnu_FileSep1"_s, u"mnu_FileCopy"_s, u"mnu_FileSep2"_s}},
        {"Fields",
         {u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s},
         {u"mnu_FieldAddNew"_s, u"mnu_FieldRecalculate"_s, u"mnu_FieldReorder"_s}},
        {"FieldsOfASystemFile", {u"FI"_s, u"fi=USER"_s, u"FD"_s}, {}},
        {"Field",
         {u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s, u"fd=SALARY"_s},
         {u"mnu_FieldAddNew"_s, u"mnu_FieldEdit"_s, u"mnu_FieldDelete"_s, u"mnu_FieldRecalculate"_s,
          u"mnu_FieldReorder"_s}},
        {"FieldOfASystemFile", {u"FI"_s, u"fi=USER"_s, u"FD"_s, u"fd=REMARKS"_s}, {}},
        {"Databases", {u"DB"_s}, {u"mnu_DBExpandAll"_s, u"mnu_DBAdd"_s}},
        {"Database",
         database,
         {u"mnu_DBExpandAll"_s, u"mnu_DBAdd"_s, u"mnu_DBEdit"_s, u"mnu_DBDelete"_s, u"mnu_DBSep1"_s, u"mnu_DBCopy"_s}},
        {"SystemDatabase", systemDatabase, {u"mnu_DBExpandAll"_s, u"mnu_DBAdd"_s, u"mnu_DBSep1"_s, u"mnu_DBCopy"_s}},
        {"Tables", database + QStringList{u"TA"_s}, {u"mnu_TableExpandAll"_s, u"mnu_TableAddNew"_s}},
        {"TablesOfTheSystemDatabase", systemDatabase + QStringList{u"TA"_s}, {u"mnu_TableExpandAll"_s}},
        {"Table",
         table,
         {u"mnu_TableExpandAll"_s, u"mnu_TableAddNew"_s, u"mnu_TableEdit"_s, u"mnu_TableDelete"_s, u"mnu_TableSep1"_s,
          u"mnu_TableViewData"_s, u"mnu_TableCopy"_s}},
        {"SystemTable",
         systemTable,
         {u"mnu_TableExpandAll"_s, u"mnu_TableSep1"_s, u"mnu_TableViewData"_s, u"mnu_TableCopy"_s}},
        {"Columns", table + QStringList{u"CO"_s}, {u"mnu_ColumnAddNew"_s, u"mnu_ColumnReorder"_s}},
        {"ColumnsOfASystemTable", systemTable + QStringList{u"CO"_s}, {}},
        {"Column",
         table + QStringList{u"CO"_s, u"co=AMOUNT"_s},
         {u"mnu_ColumnAddNew"_s, u"mnu_ColumnEdit"_s, u"mnu_ColumnDelete"_s, u"mnu_ColumnReorder"_s}},
        {"ColumnOfASystemTable", systemTable + QStringList{u"CO"_s, u"co=REMARKS"_s}, {}},
        {"SpecialColumns", table + QStringList{u"SCO"_s}, {}},
        {"Users", {u"US"_s}, {u"mnu_UserAddNew"_s}},
        {"User", {u"US"_s, u"us=CLERK"_s}, {u"mnu_UserAddNew"_s, u"mnu_UserEdit"_s, u"mnu_UserDelete"_s}},
        {"Administrator", {u"US"_s, u"us=ADMIN"_s}, {u"mnu_UserAddNew"_s, u"mnu_UserEdit"_s, u"mnu_UserDelete"_s}},
        {"DatabasePrivileges", database + QStringList{u"DBPRV"_s}, {u"mnu_DBPRVAddNew"_s}},
        {"DatabasePrivilegesOfTheSystemDatabase", systemDatabase + QStringList{u"DBPRV"_s}, {u"mnu_DBPRVAddNew"_s}},
        {"DatabasePrivilege",
         database + QStringList{u"DBPRV"_s, u"dbprv=CLERK"_s},
         {u"mnu_DBPRVAddNew"_s, u"mnu_DBPRVEdit"_s, u"mnu_DBPRVDelete"_s}},
        {"DatabasePrivilegeOnTheSystemDatabase",
         systemDatabase + QStringList{u"DBPRV"_s, u"dbprv=ADMIN"_s},
         {u"mnu_DBPRVAddNew"_s, u"mnu_DBPRVEdit"_s, u"mnu_DBPRVDelete"_s}},
        {"TablePrivileges", table + QStringList{u"TBLPRV"_s}, {u"mnu_TBLPRVAddNew"_s}},
        {"TablePrivilegesOfASystemTable", systemTable + QStringList{u"TBLPRV"_s}, {}},
        {"TablePrivilege",
         table + QStringList{u"TBLPRV"_s, u"tblprv=CLERK"_s},
         {u"mnu_TBLPRVAddNew"_s, u"mnu_TBLPRVEdit"_s, u"mnu_TBLPRVDelete"_s}},
        {"TablePrivilegeOnASystemTable", systemTable + QStringList{u"TBLPRV"_s, u"tblprv=ADMIN"_s}, {}},
    };
}

class ContextMenu : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        settings::save(u"Options"_s, u"SysTables"_s, 1);
    }

    RecordingPanes asked;
};

class ContextMenuOf : public ContextMenu, public testing::WithParamInterface<Menu>
{
};

QString mnemonicsShown(const QMenu& menu)
{
    QStringList captions;
    for (const QAction* action : menu.actions()) {
        if (!action->isSeparator())
            captions.append(action->objectName() + ": " + action->text());
    }
    return captions.join('\n');
}

} // namespace

TEST_P(ContextMenuOf, ShowsItsEntries)
{
    const QString where = key(GetParam().node);
    start();
    expandTo(where);
    EXPECT_EQ(menuOf(where), GetParam().entries);
    // A second use of the same menu on the same node changes nothing.
    EXPECT_EQ(menuOf(where), GetParam().entries);
}

INSTANTIATE_TEST_SUITE_P(First, ContextMenuOf, testing::ValuesIn(firstMenus()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ContextMenu, AnUnconnectedDatasourceCanOnlyBeConnected)
{
    start();
    EXPECT_EQ(menuOf(key()), QStringList{u"mnu_DSNConnect"_s});
    clickExpander(key());
    EXPECT_EQ(menuOf(key()), (QStringList{u"mnu_DSNExpandAll"_s, u"mnu_DSNImport"_s, u"mnu_DSNExport"_s,
                                          u"mnu_DSNClear"_s, u"mnu_DSNDisconnect"_s}));
    choose(key(), u"mnu_DSNDisconnect"_s);
    EXPECT_EQ(menuOf(key()), QStringList{u"mnu_DSNConnect"_s});
}

TEST_F(ContextMenu, TheStateOfADatasourceIsReadFromItsSelectedImage)
{
    start();
    node(key()).setSelectedImage(u"Datasource"_s);
    EXPECT_FALSE(menuOf(key()).contains(u"mnu_DSNConnect"_s));
    node(key()).setImage(u"Datasource"_s);
    node(key()).setSelectedImage(u"DSN Ghost"_s);
    EXPECT_EQ(menuOf(key()), QStringList{u"mnu_DSNConnect"_s});
}

TEST_F(ContextMenu, AddStaysHiddenOnTablesAfterATableOfTheCatalogUntilTheNextCollection)
{
    start();
    expandTo(key(table));
    expandTo(key(systemTable));
    const QString add = u"mnu_TableAddNew"_s;
    EXPECT_TRUE(menuOf(key(table)).contains(add));
    EXPECT_FALSE(menuOf(key(systemTable)).contains(add));
    EXPECT_FALSE(menuOf(key(table)).contains(add));
    EXPECT_FALSE(menuOf(key(systemDatabase + QStringList{u"TA"_s})).contains(add));
    EXPECT_FALSE(menuOf(key(table)).contains(add));
    EXPECT_TRUE(menuOf(key(database + QStringList{u"TA"_s})).contains(add));
    EXPECT_TRUE(menuOf(key(table)).contains(add));
}

TEST_F(ContextMenu, EachUseSetsWhatItNames)
{
    // Pairs of nodes that share a menu, used one after the other in both directions.
    const std::vector<std::pair<QStringList, QStringList>> pairs{
        {{u"FI"_s}, {u"FI"_s, u"fi=PAYROLL"_s}},
        {{u"FI"_s, u"fi=CNTRL"_s}, {u"FI"_s, u"fi=PAYROLL"_s}},
        {{u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s}, {u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s, u"fd=SALARY"_s}},
        {{u"DB"_s}, database},
        {systemDatabase, database},
        {database + QStringList{u"TA"_s}, table},
        {table + QStringList{u"CO"_s}, table + QStringList{u"CO"_s, u"co=AMOUNT"_s}},
        {{u"US"_s}, {u"US"_s, u"us=CLERK"_s}},
        {database + QStringList{u"DBPRV"_s}, database + QStringList{u"DBPRV"_s, u"dbprv=CLERK"_s}},
        {table + QStringList{u"TBLPRV"_s}, table + QStringList{u"TBLPRV"_s, u"tblprv=CLERK"_s}},
    };
    const auto entriesOf = [](const QStringList& node) {
        for (const Menu& menu : firstMenus()) {
            if (menu.node == node)
                return menu.entries;
        }
        return QStringList{u"not in the table"_s};
    };
    start();
    for (const auto& [first, second] : pairs) {
        expandTo(key(first));
        expandTo(key(second));
        for (const QStringList& node : {first, second, first})
            EXPECT_EQ(menuOf(key(node)), entriesOf(node)) << key(node).toStdString();
    }
}

TEST_F(ContextMenu, SomeEntriesAreNeverTouched)
{
    start();
    for (const Menu& menu : firstMenus()) {
        expandTo(key(menu.node));
        menuOf(key(menu.node));
    }
    for (const char* name : {"mnu_FileExpandAll", "mnu_DBExpandAll", "mnu_TableExpandAll", "mnu_DBAdd",
                             "mnu_FieldAddNew", "mnu_FieldReorder", "mnu_ColumnAddNew", "mnu_ColumnReorder",
                             "mnu_UserAddNew", "mnu_DBPRVAddNew", "mnu_TBLPRVAddNew"})
        EXPECT_TRUE(window->findChild<QAction*>(QLatin1String(name))->isVisible()) << name;
}

TEST_F(ContextMenu, OnlyTheCatalogsOwnNamesInTheirOwnCaseCount)
{
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('field'), ('FIELD,FILE'), ('KEY2')"_s);
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('tw')"_s);
    start();
    expandTo(key({u"FI"_s}));
    expandTo(key({u"DB"_s}));
    EXPECT_TRUE(menuOf(key({u"FI"_s, u"fi=field"_s})).contains(u"mnu_FileDelete"_s));
    EXPECT_TRUE(menuOf(key({u"FI"_s, u"fi=KEY"_s})).contains(u"mnu_FileDelete"_s));
    EXPECT_TRUE(menuOf(key({u"FI"_s, u"fi=KEY2"_s})).contains(u"mnu_FileDelete"_s));
    // The names stand in one text with commas between them.
    EXPECT_FALSE(menuOf(key({u"FI"_s, u"fi=FIELD,FILE"_s})).contains(u"mnu_FileDelete"_s));
    EXPECT_TRUE(menuOf(key({u"DB"_s, u"db=tw"_s})).contains(u"mnu_DBDelete"_s));
}

TEST_F(ContextMenu, TheCatalogsDatabaseIsKnownByItsKeyAndNotByTheNameOfATable)
{
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('SALES', 'TW')"_s);
    const QString where = key(database + QStringList{u"TA"_s, u"ta=TW"_s});
    start();
    expandTo(where);
    EXPECT_TRUE(menuOf(where).contains(u"mnu_TableDelete"_s));
}

TEST_F(ContextMenu, AllMenusHaveTheirEntriesInOrderWithTheirCaptions)
{
    start();
    const QMap<QString, QString> expected{
        {u"mnuFile"_s, u"mnuFileRefresh: &Refresh Datasources\n"
                       "mnuFileImportCSV: &Import Catalog\n"
                       "mnuFileExportCSV: &Export Catalog\n"
                       "mnuFileExit: E&xit"_s},
        {u"mnuView"_s, u"mnuViewToolbar: &Tool Bar\n"
                       "mnuViewStatusBar: &Status Bar\n"
                       "mnuViewOptions: &Options"_s},
        {u"mnuHelp"_s, u"mnuHelpAbout: &About Quorvane"_s},
        {u"mnu_DSN"_s, u"mnu_DSNConnect: &Connect\n"
                       "mnu_DSNExpandAll: E&xpand All\n"
                       "mnu_DSNImport: &Import Catalog\n"
                       "mnu_DSNExport: &Export Catalog\n"
                       "mnu_DSNClear: C&lear Catalog\n"
                       "mnu_DSNDisconnect: &Disconnect"_s},
        {u"mnu_File"_s, u"mnu_FileExpandAll: E&xpand All\n"
                        "mnu_FileAdd: &Add New File\n"
                        "mnu_FileEdit: &Edit File\n"
                        "mnu_FileCopy: &Copy\n"
                        "mnu_FileDelete: &Delete File\n"
                        "mnu_FileFileToTableWizard: File to Table &Wizard"_s},
        {u"mnu_Field"_s, u"mnu_FieldAddNew: &Add New Field\n"
                         "mnu_FieldEdit: &Edit Field\n"
                         "mnu_FieldDelete: &Delete Field\n"
                         "mnu_FieldRecalculate: Recalulate &Offsets\n"
                         "mnu_FieldReorder: &Reorder Fields"_s},
        {u"mnu_DB"_s, u"mnu_DBExpandAll: E&xpand All\n"
                      "mnu_DBAdd: &Add New Database\n"
                      "mnu_DBEdit: &Edit Database\n"
                      "mnu_DBDelete: &Delete Database\n"
                      "mnu_DBCopy: &Copy"_s},
        {u"mnu_Table"_s, u"mnu_TableExpandAll: E&xpand All\n"
                         "mnu_TableAddNew: &Add New Table\n"
                         "mnu_TableEdit: &Edit Table\n"
                         "mnu_TableDelete: &Delete Table\n"
                         "mnu_TableViewData: &View Data\n"
                         "mnu_TableCopy: &Copy"_s},
        {u"mnu_Column"_s, u"mnu_ColumnAddNew: &Add New Column\n"
                          "mnu_ColumnEdit: &Edit Column\n"
                          "mnu_ColumnDelete: &Delete Column\n"
                          "mnu_ColumnReorder: &Reorder Columns"_s},
        {u"mnu_User"_s, u"mnu_UserAddNew: &Add New User\n"
                        "mnu_UserEdit: &Edit User\n"
                        "mnu_UserDelete: &Delete User"_s},
        {u"mnu_DBPRV"_s, u"mnu_DBPRVAddNew: &Add New User Privileges\n"
                         "mnu_DBPRVEdit: &Edit User's Privileges\n"
                         "mnu_DBPRVDelete: &Delete User's Privileges"_s},
        {u"mnu_TBLPRV"_s, u"mnu_TBLPRVAddNew: &Add New User Priveleges\n"
                          "mnu_TBLPRVEdit: &Edit User's Privileges\n"
                          "mnu_TBLPRVDelete: &Delete User's Privileges"_s},
    };
    for (auto menu = expected.cbegin(); menu != expected.cend(); ++menu)
        EXPECT_EQ(mnemonicsShown(window->menu(menu.key())), menu.value());

    const QMap<QString, QString> captions{
        {u"mnuFile"_s, u"&File"_s},  {u"mnuView"_s, u"&View"_s},    {u"mnuHelp"_s, u"&Help"_s},
        {u"mnu_DSN"_s, u"DSN"_s},    {u"mnu_File"_s, u"_File"_s},   {u"mnu_Field"_s, u"_Field"_s},
        {u"mnu_DB"_s, u"_DB"_s},     {u"mnu_Table"_s, u"_Table"_s}, {u"mnu_Column"_s, u"_Column"_s},
        {u"mnu_User"_s, u"_User"_s}, {u"mnu_DBPRV"_s, u"DBPRV"_s},  {u"mnu_TBLPRV"_s, u"TBLPRV"_s}};
    for (auto menu = captions.cbegin(); menu != captions.cend(); ++menu)
        EXPECT_EQ(window->menu(menu.key()).title(), menu.value());

    QStringList bar;
    for (const QAction* title : window->menuBar()->actions())
        bar.append(title->text());
    EXPECT_EQ(bar, (QStringList{u"&File"_s, u"&View"_s, u"&Help"_s}));
}

namespace
{

/// A command on a node and what it asks of which pane; "$" is the datasource.
struct PaneCommand {
    const char* entry;
    QStringList node;
    const char* call;
};

void PrintTo(const PaneCommand& command, std::ostream* out)
{
    *out << command.entry << " -> " << command.call;
}

std::vector<PaneCommand> paneCommands()
{
    const QStringList file{u"FI"_s, u"fi=PAYROLL"_s};
    const QStringList fields = file + QStringList{u"FD"_s};
    const QStringList field = fields + QStringList{u"fd=SALARY"_s};
    const QStringList tables = database + QStringList{u"TA"_s};
    const QStringList columns = table + QStringList{u"CO"_s};
    const QStringList column = columns + QStringList{u"co=AMOUNT"_s};
    const QStringList databasePrivileges = database + QStringList{u"DBPRV"_s};
    const QStringList databasePrivilege = databasePrivileges + QStringList{u"dbprv=CLERK"_s};
    const QStringList tablePrivileges = table + QStringList{u"TBLPRV"_s};
    const QStringList tablePrivilege = tablePrivileges + QStringList{u"tblprv=CLERK"_s};
    const QStringList user{u"US"_s, u"us=CLERK"_s};
    return {
        {"mnu_DSNImport", {}, "frmCSVImport.Display($)"},
        {"mnu_DSNExport", {}, "frmCSVExport.Display($)"},
        {"mnu_FileAdd", {u"FI"_s}, "frmFile.AddNew($)"},
        {"mnu_FileAdd", file, "frmFile.AddNew($)"},
        {"mnu_FileEdit", file, "frmFile.Edit($, PAYROLL)"},
        {"mnu_FileDelete", file, "frmFile.Delete($, PAYROLL)"},
        {"mnu_FieldAddNew", fields, "frmField.AddNew($, PAYROLL)"},
        {"mnu_FieldAddNew", field, "frmField.AddNew($, PAYROLL)"},
        {"mnu_FieldEdit", field, "frmField.Edit($, PAYROLL, SALARY)"},
        {"mnu_FieldDelete", field, "frmField.Delete($, PAYROLL, SALARY)"},
        {"mnu_DBAdd", {u"DB"_s}, "frmDatabase.AddNew($)"},
        {"mnu_DBAdd", database, "frmDatabase.AddNew($)"},
        {"mnu_DBEdit", database, "frmDatabase.Edit($, SALES)"},
        {"mnu_DBDelete", database, "frmDatabase.Delete($, SALES)"},
        {"mnu_TableAddNew", tables, "frmTable.AddNew($, SALES)"},
        {"mnu_TableAddNew", table, "frmTable.AddNew($, SALES)"},
        {"mnu_TableEdit", table, "frmTable.Edit($, SALES, ORDERS)"},
        {"mnu_TableDelete", table, "frmTable.Delete($, SALES, ORDERS)"},
        {"mnu_ColumnAddNew", columns, "frmColumn.AddNew($, SALES, ORDERS)"},
        {"mnu_ColumnAddNew", column, "frmColumn.AddNew($, SALES, ORDERS)"},
        {"mnu_ColumnEdit", column, "frmColumn.Edit($, SALES, ORDERS, AMOUNT)"},
        {"mnu_ColumnDelete", column, "frmColumn.Delete($, SALES, ORDERS, AMOUNT)"},
        {"mnu_UserAddNew", {u"US"_s}, "frmUser.AddNew($)"},
        {"mnu_UserAddNew", user, "frmUser.AddNew($)"},
        {"mnu_UserEdit", user, "frmUser.Edit($, CLERK)"},
        {"mnu_UserDelete", user, "frmUser.Delete($, CLERK)"},
        {"mnu_DBPRVAddNew", databasePrivileges, "frmDBPRV.AddNew($, SALES)"},
        {"mnu_DBPRVAddNew", databasePrivilege, "frmDBPRV.AddNew($, SALES)"},
        {"mnu_DBPRVEdit", databasePrivilege, "frmDBPRV.Edit($, SALES, CLERK)"},
        {"mnu_DBPRVDelete", databasePrivilege, "frmDBPRV.Delete($, SALES, CLERK)"},
        {"mnu_TBLPRVAddNew", tablePrivileges, "frmTBLPRV.AddNew($, SALES, ORDERS)"},
        {"mnu_TBLPRVAddNew", tablePrivilege, "frmTBLPRV.AddNew($, SALES, ORDERS)"},
        {"mnu_TBLPRVEdit", tablePrivilege, "frmTBLPRV.Edit($, SALES, ORDERS, CLERK)"},
        {"mnu_TBLPRVDelete", tablePrivilege, "frmTBLPRV.Delete($, SALES, ORDERS, CLERK)"},
    };
}

class ContextMenuCommand : public ContextMenu, public testing::WithParamInterface<PaneCommand>
{
};

} // namespace

TEST_P(ContextMenuCommand, CallsThePaneWithTheNamesOfTheNodeAndLeavesTheSelection)
{
    const QString where = key(GetParam().node);
    start();
    expandTo(where);
    click(key());
    asked.take();

    choose(where, QLatin1String(GetParam().entry));

    EXPECT_EQ(asked.take(), QStringList{QString::fromLatin1(GetParam().call).replace("$"_L1, datasource)});
    EXPECT_EQ(selectedKey(), key());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_P(ContextMenuCommand, DoesNothingWhereThePaneIsAbsent)
{
    const QString where = key(GetParam().node);
    start();
    expandTo(where);
    click(key());
    panes::remove(QString::fromLatin1(GetParam().call).section('.', 0, 0));
    asked.take();

    choose(where, QLatin1String(GetParam().entry));

    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(currentPane(), u"frmDSN"_s);
    EXPECT_TRUE(errors.shown().empty());
}

INSTANTIATE_TEST_SUITE_P(OfAPane, ContextMenuCommand, testing::ValuesIn(paneCommands()), [](const auto& info) {
    const QStringList& node = info.param.node;
    const QString type = node.isEmpty() ? u"DSN"_s : node.last().section('=', 0, 0);
    return info.param.entry + ("_On_" + type).toStdString();
});

namespace
{

struct FeatureCommand {
    const char* entry;
    QStringList node;
};

const std::vector<FeatureCommand> featureCommands{
    {"mnu_FileCopy", {u"FI"_s, u"fi=PAYROLL"_s}},
    {"mnu_FileFileToTableWizard", {u"FI"_s, u"fi=PAYROLL"_s}},
    {"mnu_FieldRecalculate", {u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s}},
    {"mnu_FieldReorder", {u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s, u"fd=SALARY"_s}},
    {"mnu_DBCopy", database},
    {"mnu_TableViewData", table},
    {"mnu_TableCopy", table},
    {"mnu_ColumnReorder", table + QStringList{u"CO"_s}},
};

} // namespace

TEST_F(ContextMenu, CommandsOfTheRoomsAboveGetTheItem)
{
    QStringList ran;
    for (const FeatureCommand& command : featureCommands) {
        const QString name = QLatin1String(command.entry);
        commands::add(name, [&ran, name](const DragItem& item) { ran.append(name + ' ' + item.Node); });
    }
    start();
    for (const FeatureCommand& command : featureCommands) {
        const QString where = key(command.node);
        expandTo(where);
        asked.take();
        ran.clear();
        choose(where, QLatin1String(command.entry));
        EXPECT_EQ(ran, QStringList{QLatin1String(command.entry) + ' ' + where});
        EXPECT_EQ(asked.take(), QStringList());
    }
    for (const FeatureCommand& command : featureCommands)
        commands::add(QLatin1String(command.entry), {});
}

TEST_F(ContextMenu, CommandsThatNoRoomHasBroughtDoNothing)
{
    start();
    for (const FeatureCommand& command : featureCommands) {
        const QString where = key(command.node);
        expandTo(where);
        asked.take();
        choose(where, QLatin1String(command.entry));
        EXPECT_EQ(asked.take(), QStringList());
    }
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(ContextMenu, PanesReachTheCommandsOfTheMainWindow)
{
    QStringList ran;
    const QStringList names{u"mnu_ColumnReorder"_s, u"mnu_FieldRecalculate"_s, u"mnu_FieldReorder"_s,
                            u"mnu_TableViewData"_s};
    for (const QString& name : names)
        commands::add(name, [&ran, name](const DragItem&) { ran.append(name); });
    start();
    window->mnu_ColumnReorder_Click();
    window->mnu_FieldRecalculate_Click();
    window->mnu_FieldReorder_Click();
    window->mnu_TableViewData_Click();
    EXPECT_EQ(ran, names);
    for (const QString& name : names)
        commands::add(name, {});
}

TEST_F(ContextMenu, AFileDatasourceHasTheMenuOfADatasource)
{
    start();
    CNode* source = window->nodes().add(nullptr, u"FDSN"_s, u"/x/y.dsn"_s, u"y"_s, u"DSN Ghost"_s);
    ASSERT_TRUE(source);
    EXPECT_EQ(menuOf(source->Key), QStringList{u"mnu_DSNConnect"_s});
}
