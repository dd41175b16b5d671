#pragma once

#include "QuestionForm.h"

#include <cstdint>

/// The question of a loop over many items: no, yes, or yes to all that are left.
class frmYesToAll : public QuestionForm
{
public:
    frmYesToAll();

    /// Asks and returns 0 for "No", 1 for "Yes", 2 for "Yes to All". Closing the dialog otherwise counts as 0. The
    /// prompt is plain text.
    static std::int32_t GetAnswer(const QString& prompt);

private:
    void addAnswer(const QString& name, const QString& caption, std::int32_t answer);

    std::int32_t m_answer = 0;
};
