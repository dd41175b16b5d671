#include "FormatBuilder.h"

#include "Outside.h"
#include "Routine.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// A format is always shorter than this.
constexpr qsizetype lengthLimit = 255;

const std::vector<FormatBuilder::Language::Button> separators{
    {u"Underscore"_s, u"_"_s},  {u"Semi-Collon"_s, u";"_s}, {u"Hyphen"_s, u"-"_s},
    {u"Full Stop"_s, u"."_s},   {u"Comma"_s, u","_s},       {u"Forward Slash"_s, u"/"_s},
    {u"Back Slash"_s, u"\\"_s}, {u"Collon"_s, u":"_s},      {u" (Space)"_s, u" "_s},
};

/// The number of code units of the last character of a text that is not empty.
qsizetype lastCharacter(const QString& text)
{
    const qsizetype length = text.size();
    const bool isPair = length >= 2 && text.at(length - 1).isLowSurrogate() && text.at(length - 2).isHighSurrogate();
    return isPair ? 2 : 1;
}

QLineEdit* textToRead(const QString& name, QWidget* parent)
{
    auto* text = new QLineEdit(parent);
    text->setObjectName(name);
    text->setReadOnly(true);
    text->setMinimumWidth(240);
    return text;
}

QLabel* promptOf(const QString& prompt, QWidget* control)
{
    auto* label = new QLabel(prompt, control->parentWidget());
    label->setBuddy(control);
    control->setAccessibleName(QString(prompt).remove(u'&').remove(u':'));
    return label;
}

} // namespace

QString FormatBuilder::makeExample(const Language& language, const QString& format, const QDateTime& moment)
{
    QString example;
    for (qsizetype at = 0; at < format.size();) {
        const QStringView rest = QStringView(format).sliced(at);
        const auto token = std::find_if(language.tokens.begin(), language.tokens.end(),
                                        [&](const Language::Token& known) { return rest.startsWith(known.text); });
        if (token == language.tokens.end()) {
            example += format.at(at++);
        } else {
            example += token->example(moment);
            at += token->text.size();
        }
    }
    return example;
}

QString FormatBuilder::withoutLast(const Language& language, const QString& format)
{
    for (const Language::Token& token : language.tokens) {
        if (format.endsWith(token.text))
            return format.chopped(token.text.size());
    }
    if (format.isEmpty())
        return format;
    const qsizetype last = lastCharacter(format);
    return last < format.size() ? format.chopped(last) : format;
}

FormatBuilder::FormatBuilder(const Language& language, const Names& names)
    : DialogForm(names.form), m_language(language), m_cmdCompRoutine(names.cmdComp), m_cmdDeleteRoutine(names.cmdDelete)
{
    setWindowTitle(names.title);
    body()->addWidget(buildFormat());
    body()->addSpacing(8);
    body()->addWidget(buildComponents(names.group), 0, Qt::AlignTop);

    QPushButton* ok = addButton(u"cmdOK"_s, tr("OK"));
    QPushButton* cancel = addButton(u"cmdCancel"_s, tr("Cancel"));
    setDefaultButton(ok);
    setCancelButton(cancel);
    connect(ok, &QPushButton::clicked, this, [this] {
        m_accepted = true;
        hide();
    });
    connect(cancel, &QPushButton::clicked, this, &QWidget::hide);
}

QWidget* FormatBuilder::buildFormat()
{
    auto* part = new QWidget(this);
    m_formatLabel = textToRead(u"lblFormat"_s, part);
    m_exampleLabel = textToRead(u"lblExample"_s, part);
    auto* remove = new QPushButton(tr("&Delete"), part);
    remove->setObjectName(u"cmdDelete"_s);
    remove->setMinimumWidth(80);
    remove->setToolTip(tr("Delete the last component"));
    connect(remove, &QPushButton::clicked, this, &FormatBuilder::cmdDelete_Click);

    auto* grid = new QGridLayout(part);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(1, 1);
    grid->addWidget(promptOf(tr("&Format:"), m_formatLabel), 0, 0);
    grid->addWidget(m_formatLabel, 0, 1);
    grid->addWidget(remove, 0, 2);
    grid->addWidget(promptOf(tr("&Example:"), m_exampleLabel), 1, 0);
    grid->addWidget(m_exampleLabel, 1, 1);
    return part;
}

QWidget* FormatBuilder::buildComponents(const QString& group)
{
    auto* part = new QWidget(this);
    auto* tokens = new QGroupBox(group, part);
    auto* others = new QGroupBox(tr("Separators"), part);
    const int rows = static_cast<int>(m_language.buttons.size());
    addComponents(*tokens, m_language.buttons, rows);
    addComponents(*others, separators, rows);

    auto* row = new QHBoxLayout(part);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(16);
    row->addWidget(tokens);
    row->addWidget(others, 1);
    return part;
}

void FormatBuilder::addComponents(QGroupBox& group, const std::vector<Language::Button>& buttons, int rows)
{
    auto* grid = new QGridLayout(&group);
    grid->setContentsMargins(16, 8, 16, 16);
    grid->setSpacing(8);
    // Row by row, so that the order of reading is that of the buttons.
    const int count = static_cast<int>(buttons.size());
    const int columns = (count + rows - 1) / rows;
    for (int place = 0; place < count; ++place) {
        const Language::Button& component = buttons[static_cast<std::size_t>(place)];
        auto* button = new QPushButton(component.caption, &group);
        button->setObjectName(u"cmdComp_%1"_s.arg(m_components++));
        button->setAccessibleName(component.caption.trimmed());
        connect(button, &QPushButton::clicked, this, [this, token = component.token] { cmdComp_Click(token); });
        grid->addWidget(button, place / columns, place % columns);
    }
    int widest = 0;
    for (const auto* button : group.findChildren<QPushButton*>())
        widest = std::max(widest, button->sizeHint().width());
    for (int column = 0; column < columns; ++column) {
        grid->setColumnMinimumWidth(column, widest);
        grid->setColumnStretch(column, 1);
    }
}

QString FormatBuilder::build(const QString& format)
{
    const forms::Running running(*this);
    const QPointer<FormatBuilder> alive = this;
    m_accepted = false;
    show(format);
    if (auto* first = findChild<QPushButton*>(u"cmdComp_0"_s))
        first->setFocus();
    ask();
    return alive && m_accepted ? m_format : format;
}

void FormatBuilder::cmdComp_Click(const QString& token)
{
    Routine routine(m_cmdCompRoutine);
    routine.run([&] {
        if (m_format.size() + token.size() < lengthLimit)
            show(m_format + token);
    });
}

void FormatBuilder::cmdDelete_Click()
{
    Routine routine(m_cmdDeleteRoutine);
    routine.run([&] { show(withoutLast(m_language, m_format)); });
}

void FormatBuilder::show(const QString& format)
{
    m_format = format;
    m_formatLabel->setText(format);
    m_exampleLabel->setText(makeExample(m_language, format, Outside::instance().now()));
}
