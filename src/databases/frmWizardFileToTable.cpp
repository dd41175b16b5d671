#include "frmWizardFileToTable.h"

#include "Application.h"
#include "Boxes.h"
#include "CConnections.h"
#include "CMouseSleeper.h"
#include "ColumnOfField.h"
#include "DatasourceFamily.h"
#include "Definitions.h"
#include "DropDown.h"
#include "Events.h"
#include "PropertyEntry.h"
#include "Recordset.h"
#include "Routine.h"
#include "Settings.h"
#include "mdiMain.h"
#include "modGUI.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using definitions::quotedText;

namespace
{

constexpr int unit = 8;

const QString section = u"frmWizard"_s;

void showBox(const QString& message, boxes::Icon icon)
{
    boxes::show({.prompt = message, .icon = icon, .title = application::title()});
}

void fillList(QListWidget& list, dao::Database& db, const QString& statement)
{
    for (const auto rows = db.OpenRecordset(statement); !rows->Eof(); rows->MoveNext())
        list.addItem(rows->View(0).toString());
}

void selectItem(QListWidget& list, const QString& text)
{
    const QList<QListWidgetItem*> found = list.findItems(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (!found.isEmpty())
        list.setCurrentItem(found.first());
}

QString selectedItem(const QListWidget& list)
{
    const QList<QListWidgetItem*> selected = list.selectedItems();
    return selected.isEmpty() ? QString() : selected.first()->text();
}

bool showsSystemTables()
{
    return settings::getNumber(u"Options"_s, u"SysTables"_s, 0) != 0;
}

} // namespace

// The pages ----------------------------------------------------------------------------------------------------------

frmWizardFileToTable::frmWizardFileToTable() : DialogForm(u"frmWizardFileToTable"_s)
{
    buildWelcome();
    buildFilePage();
    buildDatabasePage();
    buildPropertiesPage();
    buildButtons();
    resize(560, 420);
    setCurrentPage(0);
}

/// Returns the layout of what the page shows below its heading.
QVBoxLayout* frmWizardFileToTable::addPage(int index, const QString& heading, const QString& instruction)
{
    auto* page = new QWidget(this);
    page->setObjectName(u"picPage_%1"_s.arg(index));
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(unit);
    auto* title = new QLabel(heading, page);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    rows->addWidget(title);
    if (!instruction.isEmpty())
        rows->addWidget(new QLabel(instruction, page));
    body()->addWidget(page, 1);
    page->hide();
    m_pages.at(static_cast<std::size_t>(index)) = page;
    return rows;
}

void frmWizardFileToTable::buildWelcome()
{
    QVBoxLayout* page = addPage(0, u"File to Table Wizard"_s, {});
    auto* welcome = new QLabel;
    welcome->setObjectName(u"lblWelcome"_s);
    welcome->setWordWrap(true);
    welcome->setText(u"This Wizard will guide you through the proccess of creating a new Table based upon an Existing "
                     "File Specification.  Use the Back and Next buttons below to progress.  Once the wizard has "
                     "collected all the information it requires, you can click on the Finish button to create your "
                     "Table."_s);
    page->addWidget(welcome);
    page->addStretch(1);
}

void frmWizardFileToTable::buildFilePage()
{
    QVBoxLayout* page =
        addPage(1, u"Step 1 - Selecting a File"_s, u"Please select the file you wish to convert to a table"_s);
    m_datasource = new DropDown;
    m_datasource->setObjectName(u"cboFileDatasource"_s);
    m_datasource->setAccessibleName(u"Datasource"_s);
    // Lists that could not be read are asked for again by choosing the same datasource once more.
    connect(m_datasource, &DropDown::activated, this, &frmWizardFileToTable::cboFileDatasource_Click);
    m_files = new QListWidget;
    m_files->setObjectName(u"lstFile"_s);
    m_files->setAccessibleName(u"File"_s);
    m_files->setUniformItemSizes(true);
    // A click on the file that is selected already proposes its name again.
    connect(m_files, &QListWidget::itemSelectionChanged, this, &frmWizardFileToTable::lstFile_Click);
    connect(m_files, &QListWidget::itemClicked, this, &frmWizardFileToTable::lstFile_Click);
    auto* datasource = new QLabel(u"Data&source:"_s);
    datasource->setBuddy(m_datasource);
    auto* file = new QLabel(u"Fil&e:"_s);
    file->setBuddy(m_files);
    auto* grid = new QGridLayout;
    grid->setSpacing(unit);
    grid->setColumnStretch(1, 1);
    grid->addWidget(datasource, 0, 0);
    grid->addWidget(m_datasource, 0, 1);
    grid->addWidget(file, 1, 0, Qt::AlignTop);
    grid->addWidget(m_files, 1, 1);
    page->addLayout(grid, 1);
    m_pages.at(1)->setFocusProxy(m_files);
}

void frmWizardFileToTable::buildDatabasePage()
{
    QVBoxLayout* page =
        addPage(2, u"Step 2 - Selecting the Database"_s, u"Please select the Database to create the new Table in"_s);
    m_databases = new QListWidget;
    m_databases->setObjectName(u"lstDB"_s);
    m_databases->setAccessibleName(u"Database"_s);
    m_databases->setUniformItemSizes(true);
    auto* prompt = new QLabel(u"&Database:"_s);
    prompt->setBuddy(m_databases);
    page->addWidget(prompt);
    page->addWidget(m_databases, 1);
    m_pages.at(2)->setFocusProxy(m_databases);
}

void frmWizardFileToTable::buildPropertiesPage()
{
    QVBoxLayout* page = addPage(3, u"Step 3 - Properties of the new table"_s,
                                u"Please select the properties you require for your new table"_s);
    auto* grid = new QGridLayout;
    grid->setSpacing(unit);
    grid->setColumnStretch(1, 1);
    page->addLayout(grid);
    page->addStretch(1);
    const auto add = [&](const QString& tag, const QString& prompt) {
        auto* entry = new PropertyEdit;
        // Names are filtered as they are typed. How wide the columns are is for the driver to know.
        entry->setColumn({.Name = tag, .Type = dao::dbText, .Size = entry->maxLength()});
        entry->setObjectName("txtProperty_"_L1 + tag);
        entry->setAccessibleName(QString(prompt).remove('&'_L1).remove(':'_L1));
        auto* label = new QLabel(prompt);
        label->setBuddy(entry);
        const int row = grid->rowCount();
        grid->addWidget(label, row, 0);
        grid->addWidget(entry, row, 1);
        return entry;
    };
    m_table = add(u"TABLE_NAME"_s, u"&Table Name:"_s);
    m_displayName = add(u"DISPLAY_NAME"_s, u"D&isplay Name:"_s);
    m_specification = add(u"FILE_SPECIFICATION"_s, u"Fi&le Specification:"_s);
    m_remarks = add(u"REMARKS"_s, u"Remarks:"_s);
    m_pages.at(3)->setFocusProxy(m_table);
}

void frmWizardFileToTable::buildButtons()
{
    m_previous = addButton(u"cmdPrevious"_s, u"< &Previous"_s);
    m_next = addButton(u"cmdNext"_s, u"&Next >"_s);
    m_finish = addButton(u"cmdFinish"_s, u"&Finish"_s);
    QPushButton* cancel = addButton(u"cmdCancel"_s, u"Cancel"_s);
    setCancelButton(cancel);
    connect(m_previous, &QPushButton::clicked, this, [this] { setCurrentPage(m_page - 1); });
    connect(m_next, &QPushButton::clicked, this, [this] { setCurrentPage(m_page + 1); });
    connect(m_finish, &QPushButton::clicked, this, &frmWizardFileToTable::cmdFinish_Click);
    connect(cancel, &QPushButton::clicked, this, [this] { forms::unload(name()); });
}

void frmWizardFileToTable::setCurrentPage(int page)
{
    const int shown = qBound(0, page, pageCount - 1);
    m_pages.at(static_cast<std::size_t>(m_page))->hide();
    m_page = shown;
    m_pages.at(static_cast<std::size_t>(shown))->show();
    setWindowTitle(u"Page %1 of %2"_s.arg(shown + 1).arg(pageCount));
    const bool isLast = shown == pageCount - 1;
    m_previous->setEnabled(shown > 0);
    m_next->setEnabled(!isLast);
    // The page that was left has passed the focus on to a button, which Enter would press from now on.
    if (shown > 0)
        m_pages.at(static_cast<std::size_t>(shown))->setFocus();
    setDefaultButton(isLast ? m_finish : m_next);
}

QPoint frmWizardFileToTable::position(QPoint centred) const
{
    return storedPosition(section, centred);
}

void frmWizardFileToTable::unloading()
{
    storePosition(section);
}

// Selecting ----------------------------------------------------------------------------------------------------------

void frmWizardFileToTable::Display(const QString& datasource, const QString& database, const QString& file)
{
    Routine routine("frmWizardFileToTable.Display");
    routine.run([&] {
        auto& form = get<frmWizardFileToTable>(u"frmWizardFileToTable"_s);
        const forms::Running running(form);
        form.preselect(datasource, database, file);
        form.setCurrentPage(0);
        form.ask();
    });
}

void frmWizardFileToTable::Unattended(const QString& datasource, const QString& file, const QString&,
                                      const QString& database)
{
    Routine routine("frmWizardFileToTable.Unattended");
    routine.run([&] {
        auto& form = get<frmWizardFileToTable>(u"frmWizardFileToTable"_s);
        const forms::Running running(form);
        form.preselect(datasource, database, file);
        form.cmdFinish_Click();
        forms::unload(form.name());
    });
}

void frmWizardFileToTable::preselect(const QString& datasource, const QString& database, const QString& file)
{
    FetchDatasourceList(*m_datasource);
    if (!datasource.isEmpty()) {
        m_datasource->select(datasource);
        cboFileDatasource_Click();
    }
    if (!file.isEmpty())
        selectItem(*m_files, file);
    if (!database.isEmpty())
        selectItem(*m_databases, database);
}

/// All of the family, connected or not.
void frmWizardFileToTable::FetchDatasourceList(DropDown& list)
{
    Routine routine("frmWizardFileToTable.FetchDatasourceList");
    routine.run([&] {
        QStringList names;
        for (const dao::DataSource& source : dao::familyDataSources())
            names.append(source.Name);
        list.refill(names);
    });
}

CConnection* frmWizardFileToTable::connection() const
{
    return CConnections::instance().find(m_datasource->currentText());
}

void frmWizardFileToTable::cboFileDatasource_Click()
{
    Routine routine("frmWizardFileToTable.cboFileDatasource_Click");
    routine.run([&] {
        FetchFileList(*m_files);
        FetchDBList(*m_databases);
    });
}

void frmWizardFileToTable::FetchFileList(QListWidget& list)
{
    Routine routine("frmWizardFileToTable.FetchFileList");
    routine.run([&] {
        list.clear();
        if (const CConnection* from = connection())
            fillList(list, *from->db(),
                     "SELECT FILE_NAME FROM TW_FILE "_L1 +
                         (showsSystemTables() ? QString() : QString("WHERE "_L1 + definitions::isUserFile() + ' '_L1)) +
                         "ORDER BY FILE_NAME ASC"_L1);
    });
}

void frmWizardFileToTable::FetchDBList(QListWidget& list)
{
    Routine routine("frmWizardFileToTable.FetchDBList");
    routine.run([&] {
        list.clear();
        if (const CConnection* from = connection())
            fillList(list, *from->db(),
                     "SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME "_L1 +
                         (showsSystemTables() ? ""_L1 : "WHERE DATABASE_NAME <> 'TW'"_L1));
    });
}

QString frmWizardFileToTable::file() const
{
    return selectedItem(*m_files);
}

QString frmWizardFileToTable::database() const
{
    return selectedItem(*m_databases);
}

void frmWizardFileToTable::lstFile_Click()
{
    Routine routine("frmWizardFileToTable.lstFile_Click");
    routine.run([&] {
        if (!file().isEmpty())
            m_table->setText(file().toUpper());
    });
}

// Finishing ----------------------------------------------------------------------------------------------------------

bool frmWizardFileToTable::fail(int page, QWidget& control, const QString& message)
{
    setCurrentPage(page);
    control.setFocus();
    boxes::inform(message);
    return false;
}

bool frmWizardFileToTable::ValidatePage(int page)
{
    switch (page) {
    case 1:
        return !file().isEmpty() || fail(page, *m_files, u"Please select a file to convert"_s);
    case 2:
        return !database().isEmpty() || fail(page, *m_databases, u"Please select a database to create the table in."_s);
    case 3:
        if (!definitions::isDisplayName(m_displayName->text(), m_table->text()))
            return fail(page, *m_displayName, u"Display Name must match the Table Name, but may be mixed case."_s);
        return !m_specification->text().isEmpty() ||
               fail(page, *m_specification, u"Please enter a File Specification for this Table."_s);
    default:
        return true;
    }
}

void frmWizardFileToTable::cmdFinish_Click()
{
    const forms::Running running(*this);
    const CMouseSleeper sleeper;
    bool made = false;
    Routine routine("frmWizardFileToTable.cmdFinish_Click");
    routine.run([&] { made = finish(); });
    if (made) {
        // The tree yields while it opens, and the wizard has nothing more to take.
        setEnabled(false);
        showTables();
        forms::unload(name());
    }
    mdiMain::instance().Status(u"Ready"_s);
}

bool frmWizardFileToTable::finish()
{
    for (int page = 0; page < pageCount; ++page) {
        if (!ValidatePage(page))
            return false;
    }
    const CConnection* to = connection();
    if (!to)
        return false;
    dao::Database& db = *to->db();
    const auto counted =
        db.OpenRecordset("SELECT COUNT (*) AS COLUMN_COUNT FROM TW_FIELD WHERE FILE_NAME = "_L1 + quotedText(file()));
    const std::int32_t count = counted->Eof() ? 0 : counted->Fields().Item(u"COLUMN_COUNT"_s).Value().Long();
    if (count == 0) {
        showBox("File '"_L1 + file() + "' does not contain any Fields!"_L1, boxes::Icon::Exclamation);
        return false;
    }
    if (!db.OpenRecordset("SELECT TABLE_NAME FROM TW_TABLE WHERE "_L1 +
                          definitions::ofTable(database(), m_table->text()))
             ->Eof()) {
        showBox("Database '"_L1 + database() + "' already contains a Table called '"_L1 + m_table->text() + '\''_L1,
                boxes::Icon::None);
        setCurrentPage(pageCount - 1);
        m_table->setFocus();
        return false;
    }
    db.Execute("INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
               "NUMBER_COLUMNS, REMARKS, DISPLAY_NAME) VALUES ("_L1 +
               quotedText(database()) + ", "_L1 + quotedText(m_table->text()) + ", 'TABLE', "_L1 + quotedText(file()) +
               ", "_L1 + quotedText(m_specification->text()) + ", "_L1 + QString::number(count) + ", "_L1 +
               quotedText(m_remarks->text()) + ", "_L1 + quotedText(m_displayName->text()) + " )"_L1);
    insertColumns(db);
    boxes::inform(u"Table Created"_s);
    return true;
}

/// The table is made, and the wizard ends, whether it can be shown or not: what fails in the tree or in the pane ends
/// in their own routines.
void frmWizardFileToTable::showTables()
{
    const QString datasource = m_datasource->currentText();
    const QString target = database();
    modGUI::ExpandToNode("DSN="_L1 + datasource + ":DB="_L1 + datasource + ":db="_L1 + target + ":TA="_L1 + target +
                         ':'_L1);
    mdiMain::instance().PaneDisplay(u"frmTables"_s, {datasource, target});
}

void frmWizardFileToTable::insertColumns(dao::Database& db)
{
    const events::LongRoutine pace;
    for (const auto fields = db.OpenRecordset("SELECT * FROM TW_FIELD WHERE FILE_NAME = "_L1 + quotedText(file()) +
                                              " ORDER BY FIELD_NUMBER ASC"_L1);
         !fields->Eof(); fields->MoveNext()) {
        const QString field = fields->Fields().Item(u"FIELD_NAME"_s).Value().Text();
        const QString localType = fields->Fields().Item(u"LOCAL_TYPE_NAME"_s).Value().Text();
        mdiMain::instance().Status("Processing File '"_L1 + file() + "', Field '"_L1 + field + '\''_L1);
        const auto local =
            db.OpenRecordset("SELECT * FROM TW_LOCDT WHERE LOCAL_TYPE_NAME = "_L1 + quotedText(localType));
        if (local->Eof()) {
            showBox("Unable to find information about the Local Data Type '"_L1 + localType + "'\nused in File '"_L1 +
                        file() + ", Field '"_L1 + field + ".\nThis datatype is not supported in Datasource '"_L1 +
                        m_datasource->currentText() + "' and the Field has been skipped."_L1,
                    boxes::Icon::None);
            continue;
        }
        const QString sqlType = local->Fields().Item(u"SQL_TYPE_NAME"_s).Value().Text();
        const auto type = db.OpenRecordset("SELECT * FROM TW_SQLDT WHERE SQL_TYPE_NAME = "_L1 + quotedText(sqlType));
        db.Execute(columnoffield::insertion(database(), m_table->text(), *fields, sqlType, *type));
    }
}
