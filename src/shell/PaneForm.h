#pragma once

#include "Form.h"

class QLabel;
class QVBoxLayout;

/// What all panes have in common: the title band, the description below it, the corner picture of the web style, and a
/// body that a pane fills. Loading one applies the style and the debug word (see modGUI::PaneFormLoad).
class PaneForm : public Form
{
public:
    explicit PaneForm(const QString& name, QWidget* parent = nullptr);

    QLabel* lblTitle() const { return m_title; }
    QLabel* lblDescription() const { return m_description; }
    QLabel* imgCorner() const { return m_corner; }
    /// The layout of the body below title and description.
    QVBoxLayout* body() const { return m_body; }

    /// The web look is a bright page with the corner picture and the description, the classic one a plain surface of
    /// the buttons' colour.
    void setWebLook(bool web);

    /// The key of the tree's node whose row or rows the pane shows, of the collection for a row that is being added;
    /// empty for a pane that shows nothing of a catalog.
    virtual QString shownNode() const { return {}; }

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void followPalette();

    QLabel* m_title;
    QLabel* m_description;
    QLabel* m_corner;
    QVBoxLayout* m_body;
    bool m_web = true;
};
