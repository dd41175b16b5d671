#include "PropertySheet.h"

#include "DropDown.h"
#include "Icons.h"
#include "PropertyEntry.h"
#include "RuntimeError.h"
#include "UpDown.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr int unit = 8;
/// The widths of entries in device-independent pixels.
constexpr int entryWidth = 45 * unit;
constexpr int numberWidth = 13 * unit;
constexpr int listWidth = 26 * unit;
constexpr int memoHeight = 10 * unit;

QString nameWith(const char* name, const QString& part)
{
    return QLatin1String(name) + '_'_L1 + part;
}

/// A prompt as a screen reader speaks it.
QString spoken(QString prompt)
{
    prompt.remove('&'_L1);
    return prompt.endsWith(':'_L1) ? prompt.chopped(1) : prompt;
}

/// The word of a flag, which is as good as its box for the mouse.
class FlagWord final : public QLabel
{
public:
    using QLabel::QLabel;

private:
    void mousePressEvent(QMouseEvent* event) override
    {
        QLabel::mousePressEvent(event);
        event->setAccepted(event->button() == Qt::LeftButton);
        if (event->isAccepted() && buddy()->isEnabled())
            buddy()->setFocus(Qt::MouseFocusReason);
    }

    void mouseReleaseEvent(QMouseEvent* event) override
    {
        QLabel::mouseReleaseEvent(event);
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
            static_cast<QCheckBox*>(buddy())->click();
    }
};

} // namespace

PropertySheet::PropertySheet(std::vector<Property> properties, QWidget* parent)
    : QWidget(parent), m_properties(std::move(properties)), m_rows(new QGridLayout(this))
{
    m_rows->setContentsMargins(0, unit, 0, unit);
    m_rows->setHorizontalSpacing(2 * unit);
    m_rows->setVerticalSpacing(unit);
    m_rows->setColumnStretch(1, 1);
    for (const Property& property : m_properties)
        addRow(property);
    m_texts.BindControls(m_controls, u"txtProperty"_s);
    followPalette();
}

PropertySheet::~PropertySheet() = default;

void PropertySheet::addRow(const Property& property)
{
    const int row = m_rows->rowCount();
    auto* line = new QHBoxLayout;
    line->setSpacing(unit / 2);
    QLabel* prompt = promptOf(property, *makeEntry(property, *line));
    if (property.kind == EntryKind::Flag) {
        addFlag(property, *line, prompt);
        return;
    }
    m_flags = nullptr;
    if (prompt) {
        const bool isTall = property.kind == EntryKind::Memo;
        m_rows->addWidget(prompt, row, 0, isTall ? Qt::AlignTop : Qt::AlignVCenter);
    }
    if (property.button.name) {
        auto* button = new QPushButton(this);
        button->setObjectName(QLatin1String(property.button.name));
        button->setIcon(Icons::icon(QLatin1String(property.button.image)));
        button->setToolTip(QLatin1String(property.button.toolTip));
        button->setAccessibleName(
            QLatin1String(*property.button.toolTip ? property.button.toolTip : property.button.image));
        button->setFixedWidth(4 * unit);
        line->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, button] { emit ButtonClicked(button->objectName()); });
    }
    if (property.limits.text) {
        auto* limits = new QLabel(QLatin1String(property.limits.text), this);
        limits->setForegroundRole(QPalette::PlaceholderText);
        if (property.limits.label >= 0)
            addControl("lblMinMax", property.limits.label, {}, limits);
        line->addSpacing(unit / 2);
        line->addWidget(limits);
    }
    line->addStretch(1);
    m_rows->addLayout(line, row, 1);
}

QLabel* PropertySheet::promptOf(const Property& property, QWidget& entry)
{
    m_entries.insert(&entry == m_confirmation ? m_confirmation->objectName() : QLatin1String(property.column), &entry);
    const QString prompt = QLatin1String(property.prompt);
    entry.setToolTip(QLatin1String(property.toolTip));
    entry.setAccessibleName(spoken(prompt));
    if (prompt.isEmpty())
        return nullptr;
    const bool isFlag = property.kind == EntryKind::Flag;
    QLabel* label = isFlag ? new FlagWord(prompt, this) : new QLabel(prompt, this);
    label->setBuddy(&entry);
    label->setToolTip(entry.toolTip());
    return label;
}

/// Flags that follow each other share a line, or a block of a few columns.
void PropertySheet::addFlag(const Property& property, QHBoxLayout& line, QLabel* prompt)
{
    if (!m_flags) {
        const auto first = m_properties.cbegin() + (&property - m_properties.data());
        const auto end =
            std::find_if(first, m_properties.cend(), [](const Property& next) { return next.kind != EntryKind::Flag; });
        m_flagColumns = end - first > 4 ? 3 : 4;
        m_flags = new QGridLayout;
        m_flags->setHorizontalSpacing(3 * unit);
        m_flags->setVerticalSpacing(unit / 2);
        m_rows->addLayout(m_flags, m_rows->rowCount(), 1, Qt::AlignLeft);
    }
    if (prompt)
        line.addWidget(prompt);
    line.addStretch(1);
    const int place = m_flags->count();
    m_flags->addLayout(&line, place / m_flagColumns, place % m_flagColumns);
}

QWidget* PropertySheet::makeEntry(const Property& property, QHBoxLayout& row)
{
    const QString column = QLatin1String(property.column);
    if (property.kind == EntryKind::Confirmation) {
        m_confirmation = makeConfirmation(property);
        row.addWidget(m_confirmation);
        return m_confirmation;
    }
    const bool isMirrored = property.kind == EntryKind::List || property.kind == EntryKind::Flag;
    QWidget* text = makeText(property, isMirrored || property.kind == EntryKind::Hidden);

    if (property.kind == EntryKind::List) {
        auto* list = new DropDown(this);
        for (const char* item : property.items)
            list->addItem(QLatin1String(item));
        list->setCurrentIndex(-1);
        list->setFixedWidth(listWidth);
        addControl("cboDropdown", property.index, column, list);
        connect(list, &DropDown::Change, this, [this, column] { emit ListChanged(column); });
        row.addWidget(list);
        row.addWidget(text);
        return list;
    }
    if (property.kind == EntryKind::Flag) {
        auto* check = new QCheckBox(this);
        addControl("chkProperty", property.index, column, check);
        connect(check, &QCheckBox::toggled, this, [this, column] { emit FlagClicked(column); });
        row.addWidget(check);
        row.addWidget(text);
        return check;
    }
    row.addWidget(text);
    if (property.limits.spinner >= 0) {
        auto* arrows = new UpDown(qobject_cast<QLineEdit*>(text), this);
        arrows->setRange(property.limits.minimum, property.limits.maximum);
        addControl("spnUpDn", property.limits.spinner, {}, arrows);
        row.addWidget(arrows);
    }
    return text;
}

QWidget* PropertySheet::makeText(const Property& property, bool hidden)
{
    const QString column = QLatin1String(property.column);
    QWidget* made = nullptr;
    if (property.kind == EntryKind::Memo) {
        auto* memo = new PropertyMemo(this);
        memo->setFixedSize(entryWidth, memoHeight);
        connect(memo, &QPlainTextEdit::textChanged, this, [this, column] { emit TextChanged(column); });
        made = memo;
    } else {
        auto* edit = new PropertyEdit(this);
        const bool isNumber = property.kind == EntryKind::Number;
        edit->setFixedWidth(hidden || isNumber ? numberWidth : entryWidth);
        if (isNumber)
            edit->setAlignment(Qt::AlignRight);
        if (property.kind == EntryKind::Password)
            edit->setEchoMode(QLineEdit::Password);
        edit->setReadOnly(hidden);
        connect(edit, &QLineEdit::textChanged, this, [this, column] { emit TextChanged(column); });
        made = edit;
    }
    made->setHidden(hidden);
    addControl("txtProperty", property.index, column, made);
    return made;
}

PropertyEdit* PropertySheet::makeConfirmation(const Property& property)
{
    auto* edit = new PropertyEdit(this);
    edit->setObjectName(u"txtConfirm"_s);
    edit->setFixedWidth(entryWidth);
    edit->setEchoMode(QLineEdit::Password);
    m_confirmed = QLatin1String(property.column);
    return edit;
}

void PropertySheet::addControl(const char* name, int index, const QString& tag, QWidget* widget)
{
    widget->setObjectName(nameWith(name, tag.isEmpty() ? QString::number(index) : tag));
    m_controls.push_back({QLatin1String(name), index, tag, widget});
}

/// What is locked is there to be read: its text is as dark as any other, and only its ground is dim.
void PropertySheet::followPalette()
{
    QPalette readable = QGuiApplication::palette();
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::ButtonText})
        readable.setColor(QPalette::Disabled, role, readable.color(QPalette::Active, role));
    for (const Control& control : m_controls) {
        if (!control.Tag.isEmpty())
            control.Widget->setPalette(readable);
    }
    if (m_confirmation)
        m_confirmation->setPalette(readable);
}

void PropertySheet::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        followPalette();
    QWidget::changeEvent(event);
}

void PropertySheet::addActions(const std::vector<QWidget*>& buttons)
{
    auto* line = new QHBoxLayout;
    line->setSpacing(unit);
    line->setContentsMargins(0, unit, 0, 0);
    for (QWidget* button : buttons)
        line->addWidget(button);
    line->addStretch(1);
    m_rows->addLayout(line, m_rows->rowCount(), 1);
    // What the buttons leave free when they are hidden is below them, so that nothing moves.
    m_rows->setRowStretch(m_rows->rowCount(), 1);
}

DropDown& PropertySheet::list(const QString& column) const
{
    if (auto* found = qobject_cast<DropDown*>(m_entries.value(column)))
        return *found;
    throw RuntimeError(ErrorNumber::FailedCall);
}

UpDown& PropertySheet::spinner(int index) const
{
    if (auto* found = findChild<UpDown*>(nameWith("spnUpDn", QString::number(index))))
        return *found;
    throw RuntimeError(ErrorNumber::FailedCall);
}

QLabel& PropertySheet::minMax(int index) const
{
    if (auto* found = findChild<QLabel*>(nameWith("lblMinMax", QString::number(index))))
        return *found;
    throw RuntimeError(ErrorNumber::FailedCall);
}

QPushButton& PropertySheet::button(const QString& name) const
{
    if (auto* found = findChild<QPushButton*>(name))
        return *found;
    throw RuntimeError(ErrorNumber::FailedCall);
}

QWidget& PropertySheet::entry(const QString& column) const
{
    if (QWidget* found = m_entries.value(column))
        return *found;
    throw RuntimeError(ErrorNumber::FailedCall);
}

void PropertySheet::setColumns(const modDatabase::FieldInfos& columns)
{
    for (const CCtrl& bound : m_texts) {
        if (auto* edit = qobject_cast<PropertyEdit*>(bound.Ctl.Widget))
            edit->setColumn(columns.Item(bound.Key));
        else if (auto* memo = qobject_cast<PropertyMemo*>(bound.Ctl.Widget))
            memo->setColumn(columns.Item(bound.Key));
    }
    if (m_confirmation)
        m_confirmation->setColumn(columns.Item(m_confirmed));
}
