#include "ctlTextLookup.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

ctlTextLookup::ctlTextLookup(const QString& name, QWidget* parent)
    : QWidget(parent), m_txt(new QLineEdit(this)), m_cmd(new QToolButton(this)), m_border(new QFrame(this))
{
    setObjectName(name);
    m_txt->setObjectName(u"txt"_s);
    m_cmd->setObjectName(u"cmd"_s);
    m_border->setObjectName(u"imgBorder"_s);
    m_border->setForegroundRole(QPalette::Highlight);
    m_border->lower();
    m_cmd->setText(u"…"_s);
    m_cmd->setFocusPolicy(Qt::NoFocus);
    m_cmd->setAccessibleName(tr("Look up"));
    m_cmd->setToolTip(tr("Look up (F4)"));
    setFocusProxy(m_txt);
    m_txt->installEventFilter(this);
    connect(m_txt, &QLineEdit::textChanged, this, &ctlTextLookup::Change);
    connect(m_cmd, &QToolButton::clicked, this, &ctlTextLookup::Click);
    setAppearance(1);
}

QString ctlTextLookup::Text() const
{
    return m_txt->text();
}

void ctlTextLookup::setText(const QString& text)
{
    m_txt->setText(text);
}

bool ctlTextLookup::TextEnabled() const
{
    return m_txt->isEnabledTo(this);
}

void ctlTextLookup::setTextEnabled(bool enabled)
{
    m_txt->setEnabled(enabled);
}

bool ctlTextLookup::ButtonEnabled() const
{
    return m_cmd->isEnabledTo(this);
}

void ctlTextLookup::setButtonEnabled(bool enabled)
{
    m_cmd->setEnabled(enabled);
}

bool ctlTextLookup::Locked() const
{
    return m_txt->isReadOnly();
}

void ctlTextLookup::setLocked(bool locked)
{
    m_txt->setReadOnly(locked);
}

QString ctlTextLookup::Caption() const
{
    return m_cmd->text();
}

void ctlTextLookup::setCaption(const QString& caption)
{
    m_cmd->setText(caption);
}

int ctlTextLookup::Appearance() const
{
    return m_border->frameShape() == QFrame::NoFrame ? 0 : 1;
}

void ctlTextLookup::setAppearance(int appearance)
{
    m_border->setFrameShape(appearance == 0 ? QFrame::NoFrame : QFrame::Box);
    m_txt->setFrame(false);
    arrange();
}

QColor ctlTextLookup::BackColor() const
{
    return m_txt->palette().color(QPalette::Base);
}

void ctlTextLookup::setBackColor(const QColor& colour)
{
    QPalette palette = m_txt->palette();
    palette.setColor(QPalette::Base, colour);
    m_txt->setPalette(palette);
}

QColor ctlTextLookup::ForeColor() const
{
    return m_txt->palette().color(QPalette::Text);
}

void ctlTextLookup::setForeColor(const QColor& colour)
{
    QPalette palette = m_txt->palette();
    palette.setColor(QPalette::Text, colour);
    m_txt->setPalette(palette);
}

int ctlTextLookup::MaxLength() const
{
    constexpr int unlimited = 32767;
    return m_txt->maxLength() == unlimited ? 0 : m_txt->maxLength();
}

void ctlTextLookup::setMaxLength(int length)
{
    constexpr int unlimited = 32767;
    m_txt->setMaxLength(length == 0 ? unlimited : length);
}

QFont ctlTextLookup::Font() const
{
    return m_txt->font();
}

void ctlTextLookup::setFont(const QFont& font)
{
    m_txt->setFont(font);
}

int ctlTextLookup::SelStart() const
{
    return m_txt->hasSelectedText() ? m_txt->selectionStart() : m_txt->cursorPosition();
}

void ctlTextLookup::setSelStart(int start)
{
    m_txt->deselect();
    m_txt->setCursorPosition(start);
}

int ctlTextLookup::SelLength() const
{
    return static_cast<int>(m_txt->selectedText().size());
}

void ctlTextLookup::setSelLength(int length)
{
    m_txt->setSelection(SelStart(), length);
}

bool ctlTextLookup::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_txt || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_F4 || (key->key() == Qt::Key_Down && key->modifiers() == Qt::AltModifier)) {
        m_cmd->click();
        return true;
    }
    key->ignore();
    emit KeyPress(key);
    return key->isAccepted();
}

void ctlTextLookup::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void ctlTextLookup::arrange()
{
    const int frame = Appearance() == 0 ? 0 : 1;
    const QRect inner = rect().adjusted(frame, frame, -frame, -frame);
    const int button = std::min(inner.width() / 2, std::max(20, inner.height()));
    m_border->setGeometry(rect());
    m_txt->setGeometry(inner.adjusted(0, 0, -button, 0));
    m_cmd->setGeometry(inner.adjusted(inner.width() - button, 0, 0, 0));
}
