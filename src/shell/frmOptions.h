#pragma once

#include "PaneForm.h"

#include <array>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QPushButton;
class QRadioButton;

/// The pane of the user's options: what the tree shows and how panes look and open.
class frmOptions : public PaneForm
{
public:
    explicit frmOptions(QWidget* parent = nullptr);

    /// Turns OK off until a control changes. What was changed and not saved still shows.
    void Display();

protected:
    /// Enter is "OK" and Escape "Cancel", wherever the focus is in the pane.
    void keyPressEvent(QKeyEvent* event) override;

private:
    QGroupBox* buildCatalogOptions();
    QGroupBox* buildDisplayOptions();
    void alignPrompts(std::initializer_list<QGroupBox*> groups);
    void Form_Load();
    void loadSettings();
    void chkSysTable_Click();
    void optFieldOrder_Click();
    void changed();
    void cmdOK_Click();
    void cmdCancel_Click();

    QCheckBox* m_sysTable;
    QLabel* m_warningPicture;
    QLabel* m_warning;
    QLabel* m_sysTableNote;
    QWidget* m_fieldOrderFrame;
    std::array<QRadioButton*, 2> m_fieldOrder;
    QComboBox* m_items;
    QCheckBox* m_win98;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
    bool m_loadedSysTable = false;
    bool m_loadedWin98 = false;
};
