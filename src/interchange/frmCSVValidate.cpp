#include "frmCSVValidate.h"

#include "Boxes.h"
#include "CConnections.h"
#include "CMouseSleeper.h"
#include "CatalogNames.h"
#include "CsvColumns.h"
#include "Database.h"
#include "Events.h"
#include "FindingsModel.h"
#include "LineImporter.h"
#include "LineReader.h"
#include "LineValidator.h"
#include "NodeTypes.h"
#include "ReservedFiles.h"
#include "Routine.h"
#include "modGUI.h"
#include "modString.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;
using modString::Pluralise;

namespace
{

const QString formName = u"frmCSVValidate"_s;
const QString start = u"&Start"_s;
const QString stop = u"&Stop"_s;
const QString restart = u"&Restart"_s;

/// The part of a path from its last separator on.
QString fromLastSeparator(const QString& path)
{
    return path.mid(std::max<qsizetype>(0, std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'))));
}

/// "3 errors" for 3 and "error".
QString counted(int count, const QString& word)
{
    return QString::number(count) + Pluralise(u' ' + word, count);
}

/// A line as a box can show it.
QString printable(const QString& line)
{
    QString shown = beginningOf(line);
    std::replace_if(
        shown.begin(), shown.end(), [](QChar c) { return c < u' ' && c != u'\t'; }, QChar(QChar::ReplacementCharacter));
    return shown;
}

} // namespace

frmCSVValidate::frmCSVValidate() : DialogForm(formName), m_findings([this] { cmdAction_Click(); })
{
    build();
    m_action = addButton(u"cmdAction"_s, start);
    m_cancel = addButton(u"cmdCancel"_s, tr("Cancel"));
    setDefaultButton(m_action);
    setCancelButton(m_cancel);
    connect(m_action, &QPushButton::clicked, this, &frmCSVValidate::cmdAction_Click);
    connect(m_cancel, &QPushButton::clicked, this, &frmCSVValidate::cmdCancel_Click);
    connect(m_list, &QTreeView::doubleClicked, this, &frmCSVValidate::lvwErr_DblClick);
    resize(720, 480);
}

void frmCSVValidate::build()
{
    m_status = new QLabel(this);
    m_status->setObjectName(u"lblStatus"_s);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(u"pbrProgress"_s);
    m_progress->setTextVisible(false);
    m_progress->setAccessibleName(tr("Progress"));

    m_model = new FindingsModel(m_findings, this);
    m_list = new QTreeView(this);
    m_list->setObjectName(u"lvwErr"_s);
    m_list->setAccessibleName(tr("Findings"));
    m_list->setToolTip(tr("Double click a row to see its line"));
    m_list->setModel(m_model);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setExpandsOnDoubleClick(false);
    const QFontMetrics metrics = fontMetrics();
    m_list->setColumnWidth(0, metrics.horizontalAdvance(u"0000000"_s) + 48);
    m_list->setColumnWidth(1, metrics.horizontalAdvance(u"Severity"_s) + 32);
    m_list->setColumnWidth(2, metrics.horizontalAdvance(u"COLUMN"_s) + 32);

    body()->addWidget(m_status);
    body()->addWidget(m_progress);
    body()->addWidget(m_list, 1);
}

bool frmCSVValidate::Validate(const QString& connection, const QString& fileName)
{
    Routine routine("frmCSVValidate.Validate");
    routine.run([&] {
        CConnection* open = CConnections::instance().Item(connection);
        if (!open)
            return;
        auto& form = get<frmCSVValidate>(formName);
        const forms::Running running(form);
        form.m_connection = open;
        form.m_datasource = connection;
        form.m_fileName = fileName;
        form.setWindowTitle(u'"' + fromLastSeparator(fileName) + "\" - Validating..."_L1);
        form.m_status->setText(u"Click Start to begin Validation Stage (Stage 1 of 2)"_s);
        form.m_progress->setValue(0);
        form.m_action->setText(start);
        form.m_action->setEnabled(true);
        form.m_cancel->setEnabled(true);
        form.m_action->setFocus();
        form.ask();
    });
    return false;
}

void frmCSVValidate::cmdAction_Click()
{
    if (m_action->text() == stop) {
        m_stop = true;
        showHalted();
        return;
    }
    const forms::Running running(*this);
    // The run that a click has stopped still goes to its end when the next click comes.
    if (m_isRunning)
        return;
    const QScopedValueRollback isRunning(m_isRunning, true);
    Routine routine("frmCSVValidate.cmdAction_Click");
    routine.additional([this] { return m_line > 0 ? "Line "_L1 + QString::number(m_line) : u"None"_s; });
    m_line = 0;
    const bool ended = routine.run([this] { run(); });
    if (!ended && !isUnloaded()) {
        showHalted();
        m_action->setEnabled(true);
        m_cancel->setEnabled(true);
        m_model->publish();
        // What was imported stays, and an open tree must show it.
        if (m_importing)
            modGUI::ExpandToNode(nodetypes::datasourceKey(m_datasource));
    }
    m_importing = false;
}

void frmCSVValidate::showHalted()
{
    m_action->setText(restart);
    m_progress->setValue(0);
    if (m_importing && m_line > 1)
        m_status->setText(tr("Import halted at Line %1 of %2 - What was imported before stays in the catalog")
                              .arg(m_line)
                              .arg(m_lines));
    else
        m_status->setText(u"Validation halted - Click Restart to try again"_s);
}

void frmCSVValidate::cmdCancel_Click()
{
    m_stop = true;
    forms::unload(name());
}

void frmCSVValidate::run()
{
    CatalogNames names;
    m_findings.clear();
    m_model->refresh();
    const CMouseSleeper sleeper;
    const events::LongRoutine pace(events::Input::Taken);
    readCatalog(names);
    m_stop = false;
    m_action->setText(stop);
    m_action->setEnabled(true);
    m_progress->setValue(0);
    const int lines = countLines();
    if (m_stop)
        return;
    if (lines == 0) {
        m_action->setText(restart);
        boxes::inform(u"The CSV is empty"_s);
        return;
    }
    validateLines(names, lines);
    if (!isUnloaded() && isAccepted())
        importLines(lines);
}

void frmCSVValidate::readCatalog(CatalogNames& names)
{
    names.ReadCurrentCatalog(*m_connection->db(), [this](const char* kind, QStringView name) {
        if (!events::frameDue())
            return;
        m_status->setText("Reading current catalog "_L1 + QLatin1StringView(kind) + " '"_L1 + name.toString() + u'\'');
        m_status->repaint();
    });
}

int frmCSVValidate::countLines()
{
    LineReader reader(m_fileName);
    int lines = 0;
    while (!m_stop && reader.next()) {
        ++lines;
        events::yield();
    }
    return lines;
}

void frmCSVValidate::validateLines(CatalogNames& names, int lines)
{
    LineValidator validator(*m_connection, names, m_findings);
    LineReader reader(m_fileName);
    m_progress->setMaximum(lines);
    m_what = "Validating";
    m_lines = lines;
    for (m_line = 1; !m_stop && reader.next(); ++m_line) {
        advance();
        validator.validate(m_line, reader.text());
        events::yield();
    }
    endStage();
}

bool frmCSVValidate::isAccepted()
{
    const int errors = m_findings.errors();
    const int warnings = m_findings.warnings();
    if (errors > 0) {
        m_status->setText(
            counted(errors, u"error"_s) + (warnings > 0 ? " and "_L1 + counted(warnings, u"warning"_s) : QString()) +
            " found.  Correct the "_L1 + Pluralise(u"problem"_s, errors) + " and click Restart to retry."_L1);
        m_action->setText(restart);
        return false;
    }
    // A stop keeps Restart: lines that no one has validated are neither asked about nor imported.
    if (m_stop)
        return false;
    if (warnings == 0)
        return true;
    m_status->setText("Validated with "_L1 + counted(warnings, u"warning"_s));
    m_action->setText(restart);
    if (!boxes::ask("This CSV has no errors, but has "_L1 + counted(warnings, u"warning"_s) +
                    ".\nDo you wish to import it?"_L1))
        return false;
    m_findings.acceptWarnings();
    return true;
}

void frmCSVValidate::importLines(int lines)
{
    m_importing = true;
    m_cancel->setEnabled(false);
    m_action->setEnabled(false);
    m_progress->setValue(0);
    {
        LineImporter importer(*m_connection, m_findings);
        LineReader reader(m_fileName);
        m_what = "Importing";
        m_lines = lines;
        for (m_line = 1; !m_stop && reader.next(); ++m_line) {
            advance();
            importer.ImportLine(m_line, reader.text());
            events::yield();
        }
    }
    endStage();
    if (!m_stop)
        boxes::inform(u"CSV Successfully imported."_s);
    forms::unload(name());
    modGUI::ExpandToNode(nodetypes::datasourceKey(m_datasource));
}

void frmCSVValidate::advance()
{
    if (events::frameDue())
        showProgress();
}

void frmCSVValidate::showProgress()
{
    m_status->setText(QLatin1StringView(m_what) + " Line "_L1 + QString::number(m_line) + " of "_L1 +
                      QString::number(m_lines));
    m_progress->setValue(std::min(m_line, m_lines));
    m_model->publish();
}

/// Shows what the last frame did not.
void frmCSVValidate::endStage()
{
    --m_line;
    if (!m_stop && m_line > 0)
        showProgress();
    m_line = 0;
    m_model->publish();
}

void frmCSVValidate::lvwErr_DblClick(const QModelIndex& index)
{
    const forms::Running running(*this);
    Routine routine("frmCSVValidate.lvwErr_DblClick");
    routine.run([&] {
        const int wanted = m_model->index(index.row(), 0).data().toInt();
        LineReader reader(m_fileName);
        int line = 0;
        while (line < wanted && reader.next())
            ++line;
        const QString number = QString::number(wanted);
        boxes::inform(line == wanted ? "Line "_L1 + number + ":\n"_L1 + printable(maskedLine(reader.text()))
                                     : "The file has no line "_L1 + number + " any more."_L1);
    });
}

void frmCSVValidate::closeEvent(QCloseEvent* event)
{
    // Nothing stops the second stage.
    if (m_importing)
        event->ignore();
    else
        DialogForm::closeEvent(event);
}

void frmCSVValidate::RemoveAll()
{
    const QLatin1StringView ofUsers(reservedfiles::userFiles);
    QString sql = u"None"_s;
    Routine routine("frmCSVValidate.RemoveAll");
    routine.additional([&] { return sql; });
    const auto remove = [&](const char* status, const QString& statement) {
        m_status->setText(QLatin1StringView(status));
        sql = statement;
        m_connection->db()->Execute(sql);
    };
    routine.run([&] {
        remove("Removing Files", "DELETE FROM TW_FILE WHERE "_L1 + ofUsers);
        remove("Removing Fields", "DELETE FROM TW_FIELD WHERE "_L1 + ofUsers);
        remove("Removing Databases", u"DELETE FROM TW_DB WHERE DATABASE_NAME <>'TW'"_s);
        remove("Removing Tables", u"DELETE FROM TW_TABLE WHERE DATABASE_NAME <>'TW'"_s);
        remove("Removing Columns", u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME <>'TW'"_s);
        remove("Removing Database Privileges", u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME <>'TW' "_s);
        remove("Removing Table Privileges", u"DELETE FROM TW_TBLPRV WHERE DATABASE_NAME <>'TW' "_s);
        remove("Removing Users", u"DELETE FROM TW_USER WHERE USER_NAME <> 'ADMIN'"_s);
    });
}
