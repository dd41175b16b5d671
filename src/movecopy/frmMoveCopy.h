#pragma once

#include "DialogForm.h"
#include "DragMode.h"

class QLabel;

/// The question whether a drop moves or copies. It comes up where it was left.
class frmMoveCopy : public DialogForm
{
public:
    frmMoveCopy();

    /// Asks and returns Move, Copy, or Stop for "Cancel" and for a dialog that is closed otherwise. The prompt is plain
    /// text.
    static DragMode Query(const QString& prompt);

private:
    QPushButton* addAnswer(const QString& name, const QString& caption);
    bool isPressed(const QString& button) const;
    QPoint position(QPoint centred) const override;
    void unloading() override;

    QLabel* m_prompt;
};
