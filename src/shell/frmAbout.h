#pragma once

#include "PaneForm.h"
#include "ToolbarPane.h"

class LinkLabel;
class QGridLayout;

/// The pane about the program: version, whom to turn to, and a way to the system's own information program.
class frmAbout : public PaneForm, public ToolbarPane
{
public:
    explicit frmAbout(QWidget* parent = nullptr);

    void Display();
    /// "WWW" and "EMail" click their links, "Information" calls DisplaySystemInfo.
    void tbr_ButtonClick(ToolButton& button) override;
    /// Starts the system's information program; nothing happens on a system that names none.
    void DisplaySystemInfo();

private:
    QWidget* buildHeader();
    QWidget* buildDetails();
    QWidget* buildContacts();
    void Form_Load();
    void lblTitle_Change();
    void lblEMail_Click();
    void lblWWW_Click();

    QLabel* m_logo;
    QLabel* m_name;
    QLabel* m_appTitle;
    QLabel* m_appVersion;
    QLabel* m_appBuild;
    LinkLabel* m_eMail;
    LinkLabel* m_www;
};
