#pragma once

#include <QString>
#include <QWidget>

#include <memory>
#include <vector>

class QToolButton;
class ToolBar;

/// A button of a tool bar, found by its key. The tag is free text of its owner.
class ToolButton
{
public:
    ToolButton(const ToolButton&) = delete;
    ToolButton& operator=(const ToolButton&) = delete;

    const QString& Key() const { return m_key; }
    const QString& Tag() const { return m_tag; }
    void setTag(const QString& tag) { m_tag = tag; }
    bool Enabled() const;
    void setEnabled(bool enabled);
    /// Whether the button shows when its bar does.
    bool Visible() const;
    void setVisible(bool visible);
    QString ToolTipText() const;
    /// The tool tip is the button's accessible name too; without one that is the key.
    void setToolTipText(const QString& text);
    /// The icon of an image key (see Icons).
    void setImage(const QString& imageKey);
    /// Clicks it as the mouse does, if it is enabled.
    void press();
    QToolButton* widget() const { return m_widget; }

private:
    friend class ToolBar;
    ToolButton(QString key, QToolButton* widget);

    QString m_key;
    QString m_tag;
    QToolButton* m_widget;
};

/// A flat tool bar with keyed buttons and a tag. The object name of a button is that of the bar, "_" and the button's
/// key with "_" for each space: "tbrFile_File_Add".
class ToolBar : public QWidget
{
    Q_OBJECT

public:
    /// The name is the object name, as "tbrMain".
    explicit ToolBar(const QString& name, QWidget* parent = nullptr);
    ~ToolBar() override;

    const QString& Tag() const { return m_tag; }
    void setTag(const QString& tag) { m_tag = tag; }

    /// Adds a button at the end, with the picture of its key. Raises 457 for a key that is already there.
    ToolButton& Add(const QString& key, const QString& toolTip);
    void AddSeparator();
    /// Raises 5 for an unknown key (the tool bar's own failed look-up).
    ToolButton& Button(const QString& key) const;
    ToolButton* find(const QString& key) const;
    /// In the order in which they were added.
    const std::vector<ToolButton*>& Buttons() const { return m_order; }

signals:
    void ButtonClick(ToolButton& button);

private:
    QString m_tag;
    std::vector<std::unique_ptr<ToolButton>> m_buttons;
    std::vector<ToolButton*> m_order;
};
