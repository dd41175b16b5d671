#pragma once

#include "PaneForm.h"

/// The pane that shows at start and whenever nothing else is current. Below its text it says how to begin; on a machine
/// without a datasource of the family, where to set one up.
class frmWelcome : public PaneForm
{
public:
    explicit frmWelcome(QWidget* parent = nullptr);

    void Display();

private:
    void Form_Load();

    QWidget* m_hints;
    QWidget* m_noDatasources;
};
