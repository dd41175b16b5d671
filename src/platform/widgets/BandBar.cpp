#include "BandBar.h"

#include "BandLayout.h"
#include "RuntimeError.h"

namespace
{

constexpr int twipsPerPixel = 15;

} // namespace

BandBar::BandBar(const QString& name, QWidget* parent) : QWidget(parent), m_layout(new BandLayout(this))
{
    setObjectName(name);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
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
    toolBar->setMinimumWidth(qMax(twips / twipsPerPixel, toolBar->layout()->minimumSize().width()));
}
