#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPoint>
#include <QString>

class TreeView;

/// A drag within a tree, from the move that began it to the drop or the end: shows the picture at the pointer and
/// scrolls while the pointer rests near the upper or the lower edge.
class TreeDrag : public QObject
{
public:
    explicit TreeDrag(TreeView& view);
    ~TreeDrag() override;

    bool isActive() const { return m_isActive; }
    /// Whether the drag has ended while its button is still down: what the pointer does is nobody's until the release.
    bool isSpent() const { return m_isHeld && !m_isActive; }
    void begin(QPoint position);
    void end();
    /// Notes that the button is up again.
    void letGo() { m_isHeld = false; }

    const QString& picture() const { return m_picture; }
    /// The image key of the picture; empty for none. It may change at any time.
    void setPicture(const QString& image);

    /// Notes where the pointer is.
    void moveTo(QPoint position);
    /// Tells the tree's handlers where the pointer is. Without a drag nothing happens.
    void reportPlace();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void showPicture();
    int stepAt(QPoint position) const;

    TreeView& m_view;
    QString m_picture;
    QPoint m_position;
    QBasicTimer m_scrolling;
    bool m_isActive = false;
    bool m_isHeld = false;
};
