#pragma once

#include <QString>
#include <QWidget>

#include <vector>

class QToolButton;

/// A button of a tool bar, found by its key. The tag is free text of its owner.
class ToolButton
{
public:
    const QString& Key() const;
    const QString& Tag() const;
    void setTag(const QString& tag);
    bool Enabled() const;
    void setEnabled(bool enabled);
    QString ToolTipText() const;
    void setToolTipText(const QString& text);
    /// The icon of an image key (see Icons).
    void setImage(const QString& imageKey);
    /// Clicks it as the mouse does, if it is enabled.
    void press();
    QToolButton* widget() const;
};

/// A flat tool bar with keyed buttons and a tag.
class ToolBar : public QWidget
{
    Q_OBJECT

public:
    /// The name is the object name, as "tbrMain".
    explicit ToolBar(const QString& name, QWidget* parent = nullptr);
    ~ToolBar() override;

    const QString& Tag() const;
    void setTag(const QString& tag);

    ToolButton& Add(const QString& key, const QString& toolTip);
    void AddSeparator();
    /// Raises 5 for an unknown key (the tool bar's own failed look-up).
    ToolButton& Button(const QString& key) const;
    ToolButton* find(const QString& key) const;
    const std::vector<ToolButton*>& Buttons() const;

signals:
    void ButtonClick(ToolButton& button);
};

/// A bar of bands, each with one tool bar; bands are numbered from 1.
class BandBar : public QWidget
{
    Q_OBJECT

public:
    explicit BandBar(const QString& name, QWidget* parent = nullptr);
    ~BandBar() override;

    /// Adds the next band and returns its number.
    int AddBand(ToolBar* toolBar);
    int Bands() const;
    ToolBar* Child(int band) const;
    bool BandVisible(int band) const;
    void setBandVisible(int band, bool visible);
    /// The width of a band in twips, 15 to a pixel; a band is never narrower than its buttons.
    void setBandWidth(int band, int twips);
};
