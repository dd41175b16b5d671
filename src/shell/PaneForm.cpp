#include "PaneForm.h"

#include "PictureLabel.h"
#include "modGUI.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOptionFocusRect>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// All distances in a pane are multiples of this, in device-independent pixels.
constexpr int unit = 8;

QColor mixed(const QColor& a, const QColor& b, double shareOfB)
{
    const auto part = [shareOfB](float x, float y) { return x + (y - x) * static_cast<float>(shareOfB); };
    return QColor::fromRgbF(part(a.redF(), b.redF()), part(a.greenF(), b.greenF()), part(a.blueF(), b.blueF()));
}

/// The title on its band: the window's colour with a breath of the highlight. A title that is too long is cut with an
/// ellipsis and shows whole as a tool tip; text() is always the whole one.
class TitleBand : public QLabel
{
public:
    explicit TitleBand(QWidget* parent) : QLabel(parent)
    {
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        followFont();
    }

    QSize sizeHint() const override { return {titleMetrics().horizontalAdvance(text()) + 4 * unit, height()}; }
    QSize minimumSizeHint() const override { return {8 * unit, height()}; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QPalette& colours = palette();
        const QColor window = colours.color(QPalette::Window);
        const QColor highlight = colours.color(QPalette::Highlight);
        painter.fillRect(rect(), mixed(window, highlight, 0.14));
        painter.fillRect(0, rect().bottom(), width(), 1, mixed(window, highlight, 0.45));
        painter.fillRect(0, 0, unit / 2, height(), highlight);
        painter.setFont(titleFont());
        painter.setPen(colours.color(QPalette::WindowText));
        painter.drawText(textRect(), Qt::AlignVCenter | Qt::AlignLeading, shownText());
    }

    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
            followFont();
        if (event->type() == QEvent::ToolTip && shownText() != text()) {
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
            return true;
        }
        return QLabel::event(event);
    }

private:
    QFont titleFont() const
    {
        QFont larger = font();
        larger.setPointSizeF(larger.pointSizeF() * 1.3);
        larger.setWeight(QFont::DemiBold);
        return larger;
    }
    QFontMetrics titleMetrics() const { return QFontMetrics(titleFont(), this); }
    QRect textRect() const { return rect().adjusted(2 * unit, 0, -2 * unit, 0); }
    QString shownText() const { return titleMetrics().elidedText(text(), Qt::ElideRight, textRect().width()); }

    void followFont()
    {
        const int wanted = titleMetrics().height() + 2 * unit;
        setFixedHeight((wanted + unit - 1) / unit * unit);
    }
};

/// The text below the title; an empty one takes no room.
class Description : public QLabel
{
public:
    explicit Description(QWidget* parent) : QLabel(parent)
    {
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
    }

    QSize sizeHint() const override { return text().isEmpty() ? QSize(0, 0) : QLabel::sizeHint(); }
    QSize minimumSizeHint() const override { return text().isEmpty() ? QSize(0, 0) : QLabel::minimumSizeHint(); }
    int heightForWidth(int width) const override { return text().isEmpty() ? 0 : QLabel::heightForWidth(width); }
};

/// The place of the description. It is as high as its text as long as the body has all the room that it asks for;
/// beyond that it has what the body leaves, a third of the pane at least, and the text scrolls in it. It comes and goes
/// with the text.
class DescriptionArea final : public QScrollArea
{
public:
    /// The row is the one of the pane's layout that takes the area.
    DescriptionArea(QLabel& text, QWidget& body, QBoxLayout& row, QWidget& pane)
        : QScrollArea(&pane), m_text(text), m_body(body), m_row(row), m_pane(pane)
    {
        setFrameShape(NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setAccessibleName(PaneForm::tr("Description"));
        setWidgetResizable(true);
        setWidget(&text);
        text.setAutoFillBackground(false);
        viewport()->setAutoFillBackground(false);
        row.addWidget(this);
        body.installEventFilter(this);
        pane.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == &m_text && event->type() == QEvent::ShowToParent)
            show();
        if (watched == &m_text && event->type() == QEvent::HideToParent)
            hide();
        // At once, or what stands below would move as soon as it shows.
        if (watched == &m_pane && event->type() == QEvent::Show)
            fit();
        if (watched != &m_text && (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest))
            fitLater();
        return QScrollArea::eventFilter(watched, event);
    }

    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::LayoutRequest)
            fit();
        if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
            fitLater();
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            viewport()->update();
        return QScrollArea::event(event);
    }

    void paintEvent(QPaintEvent*) override
    {
        if (!hasFocus())
            return;
        QStyleOptionFocusRect frame;
        frame.initFrom(viewport());
        QPainter painter(viewport());
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
    }

private:
    /// The pane is amid its own layout.
    void fitLater() { QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest)); }

    void fit()
    {
        const int width = m_pane.width() - 4 * unit;
        const int widest = m_text.minimumSizeHint().width();
        const int wanted = m_text.heightForWidth(std::max(width, widest));
        const auto barBelow = [&](int room) {
            return wanted > 0 && widest > room ? horizontalScrollBar()->sizeHint().height() : 0;
        };
        const int left = m_pane.height() - y() - m_body.sizeHint().height();
        const int room = std::max(left, m_pane.height() / 3) - unit;
        const bool scrolls = wanted + barBelow(width) > room;
        const int bar = barBelow(scrolls ? width - verticalScrollBar()->sizeHint().width() : width);
        const int line = m_text.fontMetrics().lineSpacing();
        verticalScrollBar()->setSingleStep(line);
        setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
        if (!scrolls && hasFocus())
            focusNextChild();
        // Bars as needed would stay on when the area grows with its text.
        setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
        setHorizontalScrollBarPolicy(bar > 0 ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
        // The last line that shows is a whole one.
        const int height = bar + (scrolls ? std::max((room - bar) / line, 1) * line : wanted);
        m_row.setContentsMargins(2 * unit, 0, 2 * unit, height > 0 && !isHidden() ? unit : 0);
        if (height == maximumHeight())
            return;
        setFixedHeight(height);
        // At once: the pane would be painted as it was before otherwise.
        m_pane.layout()->invalidate();
        m_pane.layout()->activate();
    }

    QLabel& m_text;
    QWidget& m_body;
    QBoxLayout& m_row;
    QWidget& m_pane;
};

} // namespace

PaneForm::PaneForm(const QString& name, QWidget* parent)
    : Form(name, parent), m_title(new TitleBand(this)), m_description(new Description(this)),
      m_corner(new PictureLabel(u"Blue Corner"_s, {0, 0}, this)), m_body(new QVBoxLayout)
{
    setAutoFillBackground(true);
    m_title->setObjectName(u"lblTitle"_s);
    m_description->setObjectName(u"lblDescription"_s);
    m_corner->setObjectName(u"imgCorner"_s);
    m_corner->hide();
    m_corner->lower();

    // A pane that is taller or wider than its place scrolls; the corner picture behind it stays.
    auto* page = new QScrollArea(this);
    page->setFocusPolicy(Qt::NoFocus);
    page->setFrameShape(QFrame::NoFrame);
    page->setWidgetResizable(true);
    auto* content = new QWidget(page);
    page->setWidget(content);
    content->setAutoFillBackground(false);
    page->viewport()->setAutoFillBackground(false);
    content->setLayout(m_body);
    m_body->setContentsMargins(2 * unit, 0, 2 * unit, 2 * unit);
    m_body->setSpacing(unit);

    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addWidget(m_title);
    whole->addSpacing(2 * unit);
    auto* describing = new QHBoxLayout;
    whole->addLayout(describing);
    new DescriptionArea(*m_description, *content, *describing, *this);
    whole->addWidget(page, 1);
}

void PaneForm::setWebLook(bool web)
{
    m_web = web;
    m_corner->setVisible(web);
    m_description->setVisible(web);
    followPalette();
}

void PaneForm::followPalette()
{
    // Dark palettes fill entries darker than windows; on a page of that colour their frames would be lost.
    const bool baseIsBrighter =
        palette().color(QPalette::Base).lightness() >= palette().color(QPalette::Window).lightness();
    const QPalette::ColorRole page = baseIsBrighter ? QPalette::Base : QPalette::Window;
    const QPalette::ColorRole wanted = m_web ? page : QPalette::Button;
    if (backgroundRole() != wanted)
        setBackgroundRole(wanted);
}

void PaneForm::changeEvent(QEvent* event)
{
    Form::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        followPalette();
}

void PaneForm::resizeEvent(QResizeEvent* event)
{
    Form::resizeEvent(event);
    modGUI::PaneFormResize(*this);
}
