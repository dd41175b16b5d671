#pragma once

#include "MoveCopyFixture.h"

#include "modDragAndDrop.h"

#include <QApplication>

/// A user who drags in the tree. The other catalog can be furnished with something to drop upon.
class DragAndDrop : public MoveCopyTest
{
protected:
    /// What the target gets: database DEPOT with table PARTS, column WEIGHT and privileges of the user GUARD, and file
    /// LEDGER with field TOTAL.
    void furnish() const;
    /// Opens the tree down to a node that is to be pressed or dropped upon.
    void show(const QString& nodeKey)
    {
        const qsizetype last = nodeKey.lastIndexOf(':', -2);
        expandTo(nodeKey.left(last + 1));
        ASSERT_NE(find(nodeKey), nullptr) << nodeKey.toStdString();
    }
    /// Takes hold of a node and moves the pointer until it drags.
    void grab(const QString& nodeKey)
    {
        press(nodeKey);
        const QPoint place = textPosition(nodeKey);
        move(place + QPoint(QApplication::startDragDistance() + 1, 0), Qt::LeftButton);
        EXPECT_TRUE(tree().IsDragging());
    }
    void moveOver(const QString& nodeKey) { move(textPosition(nodeKey), Qt::LeftButton); }
    void dragTo(const QString& from, const QString& to)
    {
        grab(from);
        moveOver(to);
        release(textPosition(to));
    }
    /// Leaves the flag of the drop as a drag that was over a good place has left it.
    void allowDrop() const
    {
        modDragAndDrop::DoDragOver(&tree(), {}, {});
        ASSERT_TRUE(modDragAndDrop::dropAllowed());
    }
    TreeView& tree() const { return window->tvwExplorer(); }
    QString there(const QStringList& steps = {}) const { return keyBelow(other, steps); }
};
