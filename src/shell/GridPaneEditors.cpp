#include "CellGrid.h"
#include "GridPane.h"
#include "KeyFilter.h"
#include "PropertyEntry.h"
#include "Routine.h"
#include "ctlTextLookup.h"
#include "modAPIMisc.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

void sendTo(QObject* receiver, const QKeyEvent& event)
{
    QKeyEvent copy(event.type(), event.key(), event.modifiers(), event.text(), event.isAutoRepeat(),
                   static_cast<quint16>(event.count()));
    QCoreApplication::sendEvent(receiver, &copy);
}

} // namespace

void GridPane::buildEditors()
{
    m_text = new PropertyEdit(m_grid->viewport());
    m_text->setObjectName(u"txtCell"_s);
    m_text->installEventFilter(this);

    m_combo = new QComboBox(m_grid->viewport());
    m_combo->setObjectName(u"cboCell"_s);
    m_combo->setEditable(true);
    m_combo->setCompleter(nullptr);
    m_combo->setInsertPolicy(QComboBox::NoInsert);
    m_combo->setMinimumContentsLength(1);
    m_combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_combo->installEventFilter(this);
    connect(m_combo, &QComboBox::activated, this, [this] { m_chosen = true; });

    m_lookUp = new ctlTextLookup(u"ctlLUCell"_s, m_grid->viewport());
    connect(m_lookUp, &ctlTextLookup::Click, this, &GridPane::ctlLUCell_Click);
    connect(m_lookUp, &ctlTextLookup::KeyPress, this,
            [this](QKeyEvent* event) { event->setAccepted(Cell_Keypress(*event)); });

    // Texts stay where they stand in the cell.
    m_text->setTextMargins(3, 0, 3, 0);
    m_lookUp->txt()->setTextMargins(3, 0, 0, 0);
    m_combo->lineEdit()->setTextMargins(2, 0, 0, 0);

    for (QLineEdit* edit : {static_cast<QLineEdit*>(m_text), m_lookUp->txt()})
        connect(edit, &QLineEdit::textEdited, this, [this, edit] { txtCell_Change(*edit); });
    for (QWidget* editor :
         {static_cast<QWidget*>(m_text), static_cast<QWidget*>(m_combo), static_cast<QWidget*>(m_lookUp)})
        editor->hide();
}

// Entering -----------------------------------------------------------------------------------------------------------

void GridPane::EnterCell()
{
    const forms::Running running(*this);
    Routine routine(this->routine("EnterCell"));
    routine.run([&] {
        const int row = m_grid->Row();
        if (m_readOnly || row < 0)
            return;
        if (m_editor && row == m_row && m_grid->Col() == m_column)
            return;
        takeCell();
        if (row != m_row)
            enterRow(row);
        m_column = m_grid->Col();
        if (!isLocked(column().name))
            openEditor();
    });
}

void GridPane::openEditor()
{
    m_field = m_fields.Item(column().name);
    m_chosen = false;
    switch (column().editor) {
    case CellEditor::Text:
        m_editor = m_text;
        m_text->setColumn(m_field);
        m_text->setEchoMode(column().isMasked ? QLineEdit::Password : QLineEdit::Normal);
        break;
    case CellEditor::Combo:
        m_editor = m_combo;
        m_combo->clear();
        m_combo->addItems(itemsOf(column()));
        break;
    case CellEditor::LookUp:
        m_editor = m_lookUp;
        break;
    }
    m_editorStart = column().isMasked ? typed(column().name).value_or(QString()) : text(column().name);
    setEditorText(m_editorStart);
    // An entry cannot hold every text whole; what it cuts is no change.
    m_editorStart = lineEdit()->text();

    const QString& heading = m_grid->Heading(m_column);
    m_editor->setAccessibleName(heading);
    lineEdit()->setAccessibleName(heading);
    lineEdit()->setAlignment(m_field.isText() ? Qt::AlignLeft : Qt::AlignRight);
    m_grid->showCurrent();
    m_grid->layOver(m_editor);
    m_editor->show();
    m_editor->raise();
    m_editor->setFocus();
    lineEdit()->end(false);
    // Typing replaces the choice of a list; the caret stands at the end all the same.
    if (m_editor == m_combo)
        lineEdit()->selectAll();
}

void GridPane::closeEditor()
{
    QWidget* const editor = std::exchange(m_editor, nullptr);
    if (!editor)
        return;
    m_editorStart.clear();
    m_grid->layOver(nullptr);
    if (editor->hasFocus() || lineEditOf(*editor).hasFocus())
        m_grid->setFocus();
    editor->hide();
    // The undo of the next cell must not bring a password back.
    m_text->setText({});
}

QLineEdit& GridPane::lineEditOf(const QWidget& editor) const
{
    if (&editor == m_combo)
        return *m_combo->lineEdit();
    return &editor == m_lookUp ? *m_lookUp->txt() : *m_text;
}

QLineEdit* GridPane::lineEdit() const
{
    return &lineEditOf(*m_editor);
}

void GridPane::setEditorText(const QString& text)
{
    if (m_editor == m_combo)
        m_combo->setCurrentIndex(m_combo->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive));
    lineEdit()->setText(text);
}

/// The text of the editor. A list gives an entry of its own, in whatever case it was typed, or nothing; what is neither
/// leaves the cell as it was.
QString GridPane::editorText() const
{
    const QString text = lineEdit()->text();
    if (m_editor != m_combo || text.isEmpty() || text == m_editorStart)
        return text;
    int found = m_combo->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    if (found < 0)
        found = m_combo->findText(text, Qt::MatchFixedString);
    return found < 0 ? m_editorStart : m_combo->itemText(found);
}

QString GridPane::lookedUp() const
{
    return m_editor ? lineEdit()->text() : QString();
}

void GridPane::setLookedUp(const QString& text)
{
    if (!m_editor)
        return;
    setEditorText(text);
    txtCell_Change(*lineEdit());
}

void GridPane::txtCell_Change(QLineEdit& edit)
{
    modGUI::cutToColumn(edit, m_field);
}

void GridPane::ctlLUCell_Click()
{
    const forms::Running running(*this);
    Routine routine(this->routine("ctlLUCell_Click"));
    routine.run([&] {
        if (m_editor != m_lookUp)
            return;
        lookUp(column().name);
        requireLoaded();
        if (m_editor)
            m_editor->setFocus();
    });
}

// Keys ---------------------------------------------------------------------------------------------------------------

void GridPane::grd_KeyPress(QKeyEvent& event)
{
    const forms::Running running(*this);
    Routine routine(this->routine("grd_KeyPress"));
    routine.run([&] {
        switch (event.key()) {
        case Qt::Key_Escape:
            return;
        case Qt::Key_Down:
            event.setAccepted(goBelow(m_grid->Col()));
            return;
        case Qt::Key_Tab:
            event.setAccepted(goBelow(0));
            return;
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
            EnterCell();
            if (m_editor)
                lineEdit()->clear();
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_F2:
            EnterCell();
            return;
        default:
            break;
        }
        if (!modGUI::typesCharacter(event) && !event.matches(QKeySequence::Paste))
            return;
        EnterCell();
        if (m_editor)
            sendTo(m_editor == m_combo ? static_cast<QObject*>(m_combo) : lineEdit(), event);
    });
}

/// Behind the last row: a row that has been added makes room for the next one; one that is refused keeps the cell.
/// Returns whether the last row was one to be added.
bool GridPane::goBelow(int column)
{
    if (m_row != m_grid->Row() || !isNewRow() || !isRowChanged())
        return false;
    if (leave(Leave::Row))
        m_grid->select(m_grid->Rows() - 1, column);
    return true;
}

/// The focus coming to the grid ends an edit. In a window that is not the active one it does not come.
void GridPane::endEdit()
{
    m_grid->setFocus();
    LeaveCell();
}

bool GridPane::Cell_Keypress(QKeyEvent& event)
{
    if (!m_editor)
        return false;
    const forms::Running running(*this);
    bool usedUp = true;
    Routine routine(this->routine("Cell_Keypress"));
    routine.run([&] {
        switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            endEdit();
            return;
        case Qt::Key_Escape:
            closeEditor();
            return;
        case Qt::Key_Up:
        case Qt::Key_Down:
            if (m_editor == m_combo) {
                usedUp = false;
                return;
            }
            [[fallthrough]];
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            endEdit();
            sendTo(m_grid, event);
            return;
        default:
            break;
        }
        m_grid->showEditor();
        usedUp = modGUI::typesCharacter(event);
        if (!usedUp)
            return;
        if (m_editor == m_combo) {
            usedUp = modAPIMisc::ComboKeyPress(*m_combo, event.text());
            return;
        }
        QLineEdit& edit = *lineEdit();
        const QString passed = modGUI::ControlKeyPress(EntryState::of(edit), event.text(), m_field);
        if (!passed.isEmpty())
            edit.insert(passed);
    });
    return usedUp;
}

bool GridPane::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_text && watched != m_combo)
        return PaneForm::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        return Cell_Keypress(*static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::Wheel && watched == m_combo) {
        // The wheel scrolls the grid and leaves the choice alone.
        QCoreApplication::sendEvent(m_grid->viewport(), event);
        return true;
    }
    return PaneForm::eventFilter(watched, event);
}
