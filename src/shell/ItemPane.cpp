#include "ItemPane.h"

#include "Boxes.h"
#include "CConnections.h"
#include "Conversions.h"
#include "DropDown.h"
#include "Events.h"
#include "GridPane.h"
#include "Recordset.h"
#include "Routine.h"
#include "RoutineNames.h"
#include "ToolBar.h"
#include "UpDown.h"
#include "mdiMain.h"
#include "modBoundControls.h"
#include "modGUI.h"
#include "modString.h"

#include <QCheckBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

const QString texts = u"txtProperty"_s;
const QString lists = u"cboDropdown"_s;
const QString checks = u"chkProperty"_s;

ItemPane& pane(Form& form)
{
    return static_cast<ItemPane&>(form);
}

} // namespace

ItemPane::ItemPane(const Kind& kind, std::vector<Property> properties, QWidget* parent)
    : ActionPane(kind.form, kind.toolBar, parent), m_kind(kind), m_sheet(new PropertySheet(std::move(properties), this))
{
    connect(m_sheet, &PropertySheet::TextChanged, this, &ItemPane::txtProperty_Change);
    connect(m_sheet, &PropertySheet::ListChanged, this, &ItemPane::takeChoice);
    connect(m_sheet, &PropertySheet::FlagClicked, this, &ItemPane::chkProperty_Click);
    connect(m_sheet, &PropertySheet::ButtonClicked, this, &ItemPane::clickButton);

    body()->addWidget(m_sheet);
    makeActions();
    m_sheet->addActions({cmdAction(), cmdCancel()});
    body()->addStretch(1);

    Routine routine(this->routine("Form_Load"));
    routine.run([&] { modGUI::PaneFormLoad(*this); });
}

ItemPane::~ItemPane() = default;

panes::Operations ItemPane::operations(int keyParts)
{
    panes::Operations all;
    all.Display = {keyParts, [](Form& form, const QStringList& keys) { pane(form).Display(keys); }};
    all.AddNew = {keyParts - 1, [](Form& form, const QStringList& keys) { pane(form).AddNew(keys); }};
    all.Edit = {keyParts, [](Form& form, const QStringList& keys) { pane(form).Edit(keys); }};
    all.Delete = {keyParts, [](Form& form, const QStringList& keys) { pane(form).Delete(keys); }};
    return all;
}

const char* ItemPane::routine(const char* operation) const
{
    return routineName(m_kind.form, operation);
}

dao::Database& ItemPane::db() const
{
    return *m_connection->db();
}

ItemPane::State ItemPane::state() const
{
    const QString tag = toolBar().Button(u"OK"_s).Tag();
    if (tag.endsWith(" Add"_L1))
        return State::Add;
    if (tag.endsWith(" Edit"_L1))
        return State::Edit;
    return tag.endsWith(" Delete"_L1) ? State::Delete : State::Display;
}

// Commands -----------------------------------------------------------------------------------------------------------

bool ItemPane::connectTo(const QString& datasource)
{
    CConnection* connection = CConnections::instance().Item(datasource);
    if (!connection)
        return false;
    m_connection = connection;
    if (m_fields.isEmpty()) {
        m_fields = modDatabase::FetchFieldInfo(db(), QLatin1String(m_kind.table));
        if (m_fields.isEmpty())
            return false;
        m_sheet->setColumns(m_fields);
    }
    return true;
}

bool ItemPane::Display(const QStringList& keys)
{
    bool shown = false;
    Routine routine(this->routine("Display"));
    routine.run([&] {
        if (!connectTo(keys.front()))
            return;
        m_owners = keys.first(keys.size() - 1);
        m_name = keys.back();
        m_loadedName = m_name;
        lblTitle()->setText(title(State::Display));
        blank();
        EnableEdit(false);
        // Before the row is read: a row that was not must not be what a former state's "OK" acts upon.
        enterState(State::Display, {});
        {
            const auto row = db().OpenRecordset(selectStatement());
            if (!row->Eof())
                fill(*row);
        }
        displayed();
        m_keyChanged = false;
        enterState(State::Display, {});
        shown = true;
    });
    return shown;
}

void ItemPane::AddNew(const QStringList& owners)
{
    Routine routine(this->routine("AddNew"));
    routine.run([&] {
        if (!connectTo(owners.front()))
            return;
        m_owners = owners;
        m_name.clear();
        m_loadedName.clear();
        lblTitle()->setText(title(State::Add));
        PopulateCombos();
        blank();
        EnableEdit(true);
        m_keyChanged = false;
        adding();
        enterState(State::Add, u"&Add"_s);
        setFocusTo(QLatin1String(m_kind.firstColumn ? m_kind.firstColumn : m_kind.nameColumn));
    });
}

void ItemPane::Edit(const QStringList& keys)
{
    Routine routine(this->routine("Edit"));
    routine.run([&] {
        if (!Display(keys) || isProtected())
            return;
        PopulateCombos();
        lblTitle()->setText(title(State::Edit));
        EnableEdit(true);
        editing();
        enterState(State::Edit, u"&Update"_s);
        setFocusTo(QLatin1String(m_kind.firstColumn ? m_kind.firstColumn : m_kind.nameColumn));
    });
}

void ItemPane::Delete(const QStringList& keys)
{
    Routine routine(this->routine("Delete"));
    routine.run([&] {
        if (!Display(keys))
            return;
        lblTitle()->setText(title(State::Delete));
        enterState(State::Delete, u"&Delete"_s);
        const bool goes = confirmsDelete();
        requireLoaded();
        if (goes)
            press(u"OK"_s);
    });
}

void ItemPane::tbr_ButtonClick(ToolButton& button)
{
    const forms::Running running(*this);
    Routine routine(stackedRoutine("tbr_ButtonClick"), this->routine("tbr_ButtonClick"));
    routine.run([&] {
        if (m_owners.isEmpty())
            return;
        const QString& key = button.Key();
        const QString tag = toolBar().Tag();
        if (key == "Up1"_L1) {
            up();
        } else if (key == tag + " Add"_L1) {
            AddNew(m_owners);
        } else if (key == tag + " Edit"_L1) {
            Edit(keys());
        } else if (key == tag + " Delete"_L1) {
            if (mayDelete())
                Delete(keys());
        } else if (key == "OK"_L1) {
            ok();
        } else if (key == "Cancel"_L1) {
            cancel(state());
        } else if (key == "Undo"_L1) {
            undo(state());
            requireLoaded();
            button.setEnabled(false);
        } else {
            toolBarClicked(key);
        }
    });
}

void ItemPane::up()
{
    const QString collection = CalcParentKey();
    showCollection();
    events::yield();
    requireLoaded();
    mdiMain& window = mdiMain::instance();
    if (TreeNode* node = window.tvwExplorer().Nodes().find(collection))
        node->setSelected(true);
    auto* grid = dynamic_cast<GridPane*>(window.currentPane());
    if (m_kind.upFocusesGrid && grid)
        grid->takeFocus();
    else
        window.tvwExplorer().setFocus();
}

void ItemPane::ok()
{
    // The tree yields while a change is followed up there, and a second click can arrive.
    if (m_confirming)
        return;
    const QScopedValueRollback confirming(m_confirming, true);
    switch (state()) {
    case State::Add:
        okAdd();
        break;
    case State::Edit:
        okEdit();
        break;
    case State::Delete:
        deleteRow();
        break;
    case State::Display:
        break;
    }
}

void ItemPane::okAdd()
{
    if (!ValidateFields())
        return;
    insertRow();
    m_name = text(QLatin1String(m_kind.nameColumn));
    const QStringList owners = m_owners;
    followInsert();
    requireLoaded();
    AddNew(owners);
}

void ItemPane::okEdit()
{
    if (!mayUpdate() || !ValidateFields())
        return;
    m_name = text(QLatin1String(m_kind.nameColumn));
    if (m_keyChanged)
        carryKey();
    updateRow();
    // The tree yields, and the pane may show another row by then.
    const QStringList row = keys();
    const QString from = m_loadedName;
    if (m_name != from)
        renameNodes(from, row.back());
    if (keys() == row)
        followUpdate();
    requireLoaded();
    Display(row);
}

/// A new row belongs to what the pane was opened for, whatever an Undo has blanked.
void ItemPane::insertRow()
{
    auto owner = m_owners.cbegin() + 1;
    for (const Property& property : m_sheet->properties()) {
        if (property.isKey && property.isFixed)
            setText(QLatin1String(property.column), *owner++);
    }
    Controls bound;
    for (const Control& control : m_sheet->controls()) {
        if (control.Name == texts)
            bound.push_back(control);
    }
    std::stable_sort(bound.begin(), bound.end(), [](const Control& a, const Control& b) { return a.Index < b.Index; });
    std::vector<modDatabase::TaggedValue> values;
    for (const Control& control : bound)
        values.push_back({control.Tag, control.Value()});
    db().Execute(modDatabase::MakeInsert(values, m_fields, QLatin1String(m_kind.table)));
}

bool ItemPane::confirmsDelete()
{
    return boxes::ask(QLatin1String(m_kind.deleteQuestion));
}

void ItemPane::renameNodes(const QString& from, const QString& to)
{
    renameNode(parentKey() + QLatin1String(m_kind.nodeType) + '='_L1, from, to);
}

void ItemPane::renameNode(const QString& beginning, const QString& from, const QString& to)
{
    mdiMain& window = mdiMain::instance();
    CNodes& nodes = window.nodes();
    const QString formerKey = beginning + from + ':'_L1;
    const QString key = beginning + to + ':'_L1;
    CNode* node = nodes.find(formerKey);
    if (!node)
        return;
    if (window.tvwExplorer().Nodes().find(key)) {
        // It stood for a row that somebody has removed meanwhile: the level is out of date.
        window.tvwExplorer_Expand(CNodes::treeNode(*node)->Parent());
        requireLoaded();
        return;
    }
    nodes.ChangeKey(formerKey, key);
    node->setNodeData(to);
    if (TreeNode* shown = CNodes::treeNode(*node))
        shown->setText(to);
}

/// A level that shows gets the row's node at its end; one that is empty is read anew.
void ItemPane::followInsert()
{
    mdiMain& window = mdiMain::instance();
    const QString key = CalcNodeKey();
    if (TreeNode* parent = window.tvwExplorer().Nodes().find(CalcParentKey())) {
        const bool isShown = window.tvwExplorer().Nodes().find(key) != nullptr;
        if (parent->Child() && !isShown) {
            CNodes& nodes = window.nodes();
            const CNode* added =
                nodes.add(parent, QLatin1String(m_kind.nodeType), m_name, m_name, QLatin1String(m_kind.nodeImage));
            if (added && m_kind.nodeOpens)
                nodes.addPlaceholder(*CNodes::treeNode(*added));
        } else {
            window.tvwExplorer_Expand(parent);
        }
    }
    modGUI::ExpandToNode(key);
}

void ItemPane::followUpdate()
{
    modGUI::ExpandToNode(CalcNodeKey());
}

void ItemPane::rereadCollection()
{
    TreeView& tree = mdiMain::instance().tvwExplorer();
    const QString key = CalcNodeKey();
    const TreeNode* selected = tree.SelectedItem();
    const bool wasSelected = selected && selected->Key() == key;
    rereadNode(CalcParentKey());
    if (TreeNode* node = wasSelected ? tree.Nodes().find(key) : nullptr)
        node->setSelected(true);
}

void ItemPane::rereadNode(const QString& key)
{
    const TreeNodeRef node = mdiMain::instance().tvwExplorer().Nodes().find(key);
    if (!node)
        return;
    if (!node->Child()) {
        // A level that was empty has no expander that could be moved.
        mdiMain::instance().tvwExplorer_Expand(node.get());
    } else {
        node->setExpanded(false);
        if (node)
            node->setExpanded(true);
    }
    requireLoaded();
}

void ItemPane::removeNode()
{
    CNodes& nodes = mdiMain::instance().nodes();
    if (const CNode* node = nodes.find(CalcNodeKey()))
        nodes.Remove(*node);
}

void ItemPane::showCollection(const QStringList& owners)
{
    mdiMain::instance().PaneDisplay(QLatin1String(m_kind.collection), owners);
    requireLoaded();
}

void ItemPane::undo(State state)
{
    if (state == State::Add)
        blank();
    else if (state == State::Delete)
        EnableEdit(false);
    else
        startAgain(state);
}

void ItemPane::cancel(State)
{
    if (m_name.isEmpty())
        showCollection();
    else
        Display(keys());
}

// Controls -----------------------------------------------------------------------------------------------------------

void ItemPane::PopulateCombos()
{
    Routine routine(this->routine("PopulateCombos"));
    routine.run([&] { populateLists(); });
}

bool ItemPane::ValidateFields()
{
    bool valid = false;
    Routine routine(stackedRoutine("ValidateFields"), this->routine("ValidateFields"));
    routine.run([&] { valid = validate(); });
    requireLoaded();
    return valid;
}

void ItemPane::EnableEdit(bool enabled)
{
    Routine routine(this->routine("EnableEdit"));
    routine.run([&] { enableEntries(enabled); });
}

void ItemPane::enableEntries(bool enabled)
{
    for (const QString& prototype : {texts, lists, checks, u"spnUpDn"_s})
        modBoundControls::EnableControls(m_sheet->controls(), prototype, enabled);
    for (const Property& property : m_sheet->properties()) {
        if (property.isFixed)
            enable(QLatin1String(property.column), false);
    }
}

void ItemPane::fill(const dao::Recordset& row)
{
    modBoundControls::PopulateFields(m_sheet->controls(), texts, row);
}

void ItemPane::blank()
{
    // Lists and check boxes first: they change the texts behind them.
    modBoundControls::SetControls(m_sheet->controls(), lists, {});
    modBoundControls::SetControls(m_sheet->controls(), checks, u"0"_s);
    modBoundControls::SetControls(m_sheet->controls(), texts, {});
}

void ItemPane::enterState(State state, const QString& actionCaption)
{
    ToolBar& bar = toolBar();
    switch (state) {
    case State::Display:
        modGUI::SetToolbarState(bar, isProtected() ? 1 : 0);
        break;
    case State::Add:
        modGUI::SetToolbarState(bar, 1, bar.Tag() + " Add"_L1);
        break;
    case State::Edit:
        modGUI::SetToolbarState(bar, 1, bar.Tag() + " Edit"_L1);
        break;
    case State::Delete:
        modGUI::SetToolbarState(bar, 1, bar.Tag() + " Delete"_L1);
        break;
    }
    showActions(state != State::Display, actionCaption);
}

void ItemPane::txtProperty_Change(const QString& column)
{
    Routine routine(this->routine("txtProperty_Change"));
    routine.run([&] {
        if (ToolButton* undo = toolBar().find(u"Undo"_s))
            undo->setEnabled(true);
        textChanged(column);
        if (makesKeyChanged(column))
            m_keyChanged = true;
        cmdAction()->setEnabled(true);
    });
}

void ItemPane::takeChoice(const QString& column)
{
    Routine routine(this->routine(m_kind.listRoutine));
    routine.run([&] { listChanged(column); });
}

void ItemPane::chkProperty_Click(const QString& column)
{
    Routine routine(this->routine("chkProperty_Click"));
    routine.run(
        [&] { setText(column, static_cast<QCheckBox&>(m_sheet->entry(column)).isChecked() ? u"1"_s : u"0"_s); });
}

void ItemPane::textChanged(const QString& column)
{
    const EntryKind kind = property(column).kind;
    if (kind == EntryKind::List)
        m_sheet->list(column).select(text(column));
    else if (kind == EntryKind::Flag)
        static_cast<QCheckBox&>(m_sheet->entry(column)).setChecked(text(column) == "1"_L1);
}

const Property& ItemPane::property(const QString& column) const
{
    const auto& all = m_sheet->properties();
    return *std::find_if(all.begin(), all.end(),
                         [&](const Property& property) { return QLatin1String(property.column) == column; });
}

QString ItemPane::shownNode() const
{
    if (m_owners.isEmpty())
        return {};
    if (m_name.isEmpty())
        return parentKey();
    // A change of the name that broke off may have left the node under the former one.
    const QString key = nodeKey(m_name);
    const bool isThere = mdiMain::instance().tvwExplorer().Nodes().find(key);
    return isThere || m_loadedName.isEmpty() ? key : nodeKey(m_loadedName);
}

void ItemPane::listChanged(const QString& column)
{
    setText(column, m_sheet->list(column).currentText());
}

void ItemPane::clickButton(const QString& name)
{
    const forms::Running running(*this);
    Routine routine(this->routine((name + "_Click"_L1).toLatin1().constData()));
    routine.run([&] { buttonClicked(name); });
}

bool ItemPane::isBlank(const QString& column) const
{
    return modString::Trim(text(column)).isEmpty();
}

void ItemPane::enable(const QString& column, bool enabled)
{
    m_sheet->text(column).Widget->setEnabled(enabled);
    m_sheet->entry(column).setEnabled(enabled);
}

void ItemPane::setFocusTo(const QString& column)
{
    QWidget& entry = m_sheet->entry(column);
    if (entry.isVisible() && entry.isEnabled())
        entry.setFocus();
}

bool ItemPane::refuse(const QString& message, const QString& column, const QString& boxTitle)
{
    if (boxTitle.isEmpty())
        boxes::inform(message);
    else
        boxes::show({.prompt = message, .icon = boxes::Icon::Information, .title = boxTitle});
    if (!isUnloaded())
        setFocusTo(column);
    return false;
}

bool ItemPane::finds(const QString& statement) const
{
    return !db().OpenRecordset(statement)->Eof();
}

bool ItemPane::isWithin(const QString& column, int spinner) const
{
    const UpDown& limits = m_sheet->spinner(spinner);
    const QString entered = text(column);
    // Numbers go into a statement as they are: what would end it there could change every row.
    if (modDatabase::endsStatement(entered))
        return false;
    const double number = conversions::Val(entered);
    return number >= limits.Min() && number <= limits.Max();
}
