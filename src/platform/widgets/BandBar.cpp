#include "BandBar.h"

#include "BandLayout.h"
#include "RuntimeError.h"
#include "Twips.h"

#include <QPainter>
#include <QStyleOption>

BandBar::BandBar(const QString& name, QWidget* parent) : QWidget(parent), m_layout(new BandLayout(this))
{
    setObjectName(name);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

BandBar::~BandBar() = default;

int BandBar::AddBand(ToolBar* toolBar)
{
    m_layout->addWidget(toolBar);
    m_bands.push_back(toolBar);
    return Bands();
}

int BandBar::Bands() const
{
    return static_cast<int>(m_bands.size());
}

ToolBar* BandBar::Child(int band) const
{
    if (band < 1 || band > Bands())
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return m_bands[static_cast<std::size_t>(band) - 1];
}

bool BandBar::BandVisible(int band) const
{
    return !Child(band)->isHidden();
}

void BandBar::setBandVisible(int band, bool visible)
{
    Child(band)->setVisible(visible);
}

void BandBar::setBandWidth(int band, int twips)
{
    ToolBar* toolBar = Child(band);
    toolBar->setMinimumWidth(qMax(toPixels(twips), toolBar->layout()->minimumSize().width()));
}

void BandBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    option.state |= QStyle::State_Horizontal;
    for (const ToolBar* toolBar : m_bands) {
        const QRect band = QStyle::visualRect(layoutDirection(), rect(), toolBar->geometry());
        if (toolBar->isHidden() || band.left() < BandLayout::gap)
            continue;
        const QRect before(band.left() - BandLayout::gap, band.top(), BandLayout::gap, band.height());
        option.rect = QStyle::visualRect(layoutDirection(), rect(), before).adjusted(0, 4, 0, -4);
        style()->drawPrimitive(QStyle::PE_IndicatorToolBarSeparator, &option, &painter, this);
    }
}
