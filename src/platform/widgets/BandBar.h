#pragma once

#include "ToolBar.h"

#include <vector>

class BandLayout;

/// A bar of bands, each with one tool bar; bands are numbered from 1. They stand in a row, which wraps when it is too
/// narrow for all, with a separator between neighbours; a hidden band takes no room.
class BandBar : public QWidget
{
    Q_OBJECT

public:
    explicit BandBar(const QString& name, QWidget* parent = nullptr);
    ~BandBar() override;

    /// Adds the next band and returns its number. The bar owns the tool bar from here on.
    int AddBand(ToolBar* toolBar);
    int Bands() const;
    /// Raises 9 for a number that no band has, as all that follow do.
    ToolBar* Child(int band) const;
    bool BandVisible(int band) const;
    void setBandVisible(int band, bool visible);
    /// The least width of a band in twips, 15 to a pixel; a band is never narrower than its buttons.
    void setBandWidth(int band, int twips);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    BandLayout* m_layout;
    std::vector<ToolBar*> m_bands;
};
