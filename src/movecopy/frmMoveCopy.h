#pragma once

#include "DragMode.h"
#include "QuestionForm.h"

/// The question whether a drop moves or copies. It comes up where it was left.
class frmMoveCopy : public QuestionForm
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
};
