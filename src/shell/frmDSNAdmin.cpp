#include "frmDSNAdmin.h"

#include "Application.h"
#include "Boxes.h"
#include "CMouseSleeper.h"
#include "Icons.h"
#include "Installer.h"
#include "PictureLabel.h"
#include "Routine.h"
#include "frmDSNEdit.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;
using dao::Installer::Datasource;
using dao::Installer::Scope;

namespace
{

QString valueOf(const Datasource& source, const QString& key)
{
    for (const dao::Installer::Key& candidate : source.Keys) {
        if (candidate.Name.compare(key, Qt::CaseInsensitive) == 0)
            return candidate.Value;
    }
    return {};
}

void complain(const QString& reason)
{
    boxes::show({reason, boxes::Icon::Exclamation, boxes::Buttons::Ok, application::title()});
}

/// The window of the datasources. A failure of the installer shows in a box; the files are then as they were.
class frmDSNAdmin : public QDialog
{
public:
    explicit frmDSNAdmin(QWidget* owner);

    /// Reads the files anew; the datasource of that name and scope is selected, or else the first one. What the user
    /// has been told already is not said again.
    void fetch(const QString& selected = {}, Scope where = Scope::User, const QString& told = {});

protected:
    /// Delete on the list removes.
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLayout* buildList();
    QWidget* buildWarning();
    QWidget* buildFiles();
    QPushButton* addButton(QVBoxLayout& column, const QString& name, const QString& caption,
                           void (frmDSNAdmin::*clicked)());
    void enableButtons();
    const Datasource* selected() const;

    void cmdAdd_Click();
    void cmdChange_Click();
    void cmdRemove_Click();
    void cmdTest_Click();

    QTreeWidget* m_list;
    QPushButton* m_change;
    QPushButton* m_remove;
    QPushButton* m_test;
    QWidget* m_warning;
    std::vector<Datasource> m_sources;
};

frmDSNAdmin::frmDSNAdmin(QWidget* owner) : QDialog(owner)
{
    setObjectName(u"frmDSNAdmin"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Datasource Administrator"));

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(16, 16, 16, 16);
    rows->setSpacing(16);
    rows->addLayout(buildList(), 1);
    rows->addWidget(buildWarning());
    rows->addWidget(buildFiles());

    auto* hint = new QLabel(tr("The explorer shows changes after Refresh Datasources."), this);
    hint->setObjectName(u"lblHint"_s);
    hint->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setObjectName(u"cmdClose"_s);
    buttons->button(QDialogButtonBox::Close)->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmDSNAdmin::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(hint, 1);
    bottom->addWidget(buttons);
    rows->addLayout(bottom);
    resize(720, 480);
}

QLayout* frmDSNAdmin::buildList()
{
    m_list = new QTreeWidget(this);
    m_list->setObjectName(u"lvw"_s);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setIconSize({16, 16});
    m_list->setHeaderLabels({tr("Name"), tr("Available to"), tr("Catalog file"), tr("Description")});
    m_list->header()->resizeSection(0, 152);
    m_list->header()->resizeSection(1, 96);
    m_list->header()->resizeSection(2, 192);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &frmDSNAdmin::enableButtons);
    connect(m_list, &QTreeWidget::itemActivated, this, &frmDSNAdmin::cmdChange_Click);

    auto* prompt = new QLabel(tr("&Datasources of the driver %1:").arg(dao::familyDriver), this);
    prompt->setBuddy(m_list);
    m_list->setAccessibleName(prompt->text().remove(u'&'));

    auto* column = new QVBoxLayout;
    column->setSpacing(8);
    addButton(*column, u"cmdAdd"_s, tr("&Add..."), &frmDSNAdmin::cmdAdd_Click);
    m_change = addButton(*column, u"cmdChange"_s, tr("&Change..."), &frmDSNAdmin::cmdChange_Click);
    m_remove = addButton(*column, u"cmdRemove"_s, tr("&Remove"), &frmDSNAdmin::cmdRemove_Click);
    m_test = addButton(*column, u"cmdTest"_s, tr("&Test"), &frmDSNAdmin::cmdTest_Click);
    column->addStretch(1);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(8);
    grid->addWidget(prompt, 0, 0);
    grid->addWidget(m_list, 1, 0);
    grid->addLayout(column, 1, 1);
    return grid;
}

QPushButton* frmDSNAdmin::addButton(QVBoxLayout& column, const QString& name, const QString& caption,
                                    void (frmDSNAdmin::*clicked)())
{
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, clicked);
    column.addWidget(button);
    return button;
}

QWidget* frmDSNAdmin::buildWarning()
{
    m_warning = new QWidget(this);
    m_warning->setObjectName(u"fraNoDriver"_s);
    auto* row = new QHBoxLayout(m_warning);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    auto* text = new QLabel(tr("The driver %1 is not registered on this machine. Until it is, its datasources can't be "
                               "connected.")
                                .arg(dao::familyDriver),
                            m_warning);
    text->setWordWrap(true);
    row->addWidget(new PictureLabel(u"Warning"_s, {16, 16}, m_warning), 0, Qt::AlignTop);
    row->addWidget(text, 1);
    return m_warning;
}

QWidget* frmDSNAdmin::buildFiles()
{
    const dao::Installer::IniFiles files = dao::Installer::iniFiles();
    auto* group = new QGroupBox(tr("Files in use"), this);
    auto* form = new QFormLayout(group);
    form->setContentsMargins(16, 8, 16, 16);
    form->setHorizontalSpacing(16);
    form->setVerticalSpacing(8);
    const auto add = [&](const QString& prompt, const QString& name, const QString& path) {
        auto* label = new QLabel(path, group);
        label->setObjectName(name);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        label->setToolTip(path);
        form->addRow(prompt, label);
    };
    add(tr("This user:"), u"lblUserFile"_s, files.UserDatasources);
    add(tr("All users:"), u"lblSystemFile"_s, files.SystemDatasources);
    add(tr("Drivers:"), u"lblDriversFile"_s, files.Drivers);
    return group;
}

void frmDSNAdmin::fetch(const QString& selected, Scope where, const QString& told)
{
    Routine routine("frmDSNAdmin.fetch");
    routine.run([&] {
        m_sources.clear();
        m_list->clear();
        QStringList complaints;
        m_sources = dao::Installer::datasources(dao::familyDriver, &complaints);
        const auto drivers = dao::Installer::drivers();
        m_warning->setVisible(std::none_of(drivers.begin(), drivers.end(),
                                           [](const auto& driver) { return driver.Name == dao::familyDriver; }));
        for (const QString& complaint : std::as_const(complaints)) {
            if (complaint != told)
                complain(complaint);
        }
        QTreeWidgetItem* current = nullptr;
        for (const Datasource& source : m_sources) {
            const QString who = source.Where == Scope::User ? tr("This user") : tr("All users");
            auto* item = new QTreeWidgetItem(
                m_list, {source.Name, who, valueOf(source, u"Catalog"_s), valueOf(source, u"Description"_s)});
            item->setIcon(0, Icons::icon(u"Datasource"_s));
            for (int column : {2, 3})
                item->setToolTip(column, item->text(column));
            if (!current || (source.Name == selected && source.Where == where))
                current = item;
        }
        m_list->setCurrentItem(current);
        enableButtons();
    });
}

const Datasource* frmDSNAdmin::selected() const
{
    const QList<QTreeWidgetItem*> items = m_list->selectedItems();
    const int row = items.isEmpty() ? -1 : m_list->indexOfTopLevelItem(items.front());
    return row < 0 ? nullptr : &m_sources.at(static_cast<std::size_t>(row));
}

void frmDSNAdmin::enableButtons()
{
    for (QPushButton* button : {m_change, m_remove, m_test})
        button->setEnabled(selected() != nullptr);
}

void frmDSNAdmin::cmdAdd_Click()
{
    Routine routine("frmDSNAdmin.cmdAdd_Click");
    routine.run([&] {
        auto* dialog = new frmDSNEdit(this, std::nullopt, [this](const frmDSNEdit::Entry& entry) {
            dao::Installer::addDatasource(entry.Where, entry.Name, dao::familyDriver, entry.Keys);
            fetch(entry.Name, entry.Where);
        });
        dialog->open();
    });
}

void frmDSNAdmin::cmdChange_Click()
{
    Routine routine("frmDSNAdmin.cmdChange_Click");
    routine.run([&] {
        const Datasource* source = selected();
        if (!source)
            return;
        auto* dialog = new frmDSNEdit(this, *source, [this, former = source->Name](const frmDSNEdit::Entry& entry) {
            dao::Installer::changeDatasource(entry.Where, former, entry.Keys,
                                             entry.Name == former ? QString() : entry.Name);
            fetch(entry.Name, entry.Where);
        });
        dialog->open();
    });
}

void frmDSNAdmin::cmdRemove_Click()
{
    Routine routine("frmDSNAdmin.cmdRemove_Click");
    routine.run([&] {
        if (!selected())
            return;
        const Datasource source = *selected();
        if (!boxes::ask(tr("Are you sure you want to remove the datasource '%1'?\nIts catalog stays where it is.")
                            .arg(source.Name)))
            return;
        const int row = m_list->currentIndex().row();
        QString told;
        try {
            dao::Installer::removeDatasource(source.Where, source.Name);
        } catch (const RuntimeError& error) {
            told = error.description();
            complain(told);
        }
        fetch({}, Scope::User, told);
        if (m_list->topLevelItemCount() > 0)
            m_list->setCurrentItem(m_list->topLevelItem(std::min(row, m_list->topLevelItemCount() - 1)));
    });
}

void frmDSNAdmin::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete && focusWidget() == m_list)
        cmdRemove_Click();
    else
        QDialog::keyPressEvent(event);
}

void frmDSNAdmin::cmdTest_Click()
{
    Routine routine("frmDSNAdmin.cmdTest_Click");
    routine.run([&] {
        if (!selected())
            return;
        dao::Installer::Trial trial;
        {
            const CMouseSleeper sleeper;
            trial = dao::Installer::tryDatasource(selected()->Name);
        }
        if (trial.Connected)
            boxes::inform(trial.Text);
        else
            complain(u"Failed to connect for the following reason:\n"_s + trial.Text);
    });
}

} // namespace

void showDatasourceWindow(QWidget* owner)
{
    static QPointer<frmDSNAdmin> window;
    if (!window) {
        window = new frmDSNAdmin(owner);
        window->fetch();
    }
    window->show();
    window->raise();
    window->activateWindow();
}
