#pragma once

#include "DialogForm.h"

class QLabel;

/// A dialog that asks: the picture of a question, and beside it a prompt of plain text that is wrapped where it gets
/// wide.
class QuestionForm : public DialogForm
{
protected:
    explicit QuestionForm(const QString& name);

    /// Shows another prompt, and gives the dialog the size that it needs.
    void setPrompt(const QString& prompt);

private:
    QLabel* m_prompt;
};
