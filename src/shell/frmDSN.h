#pragma once

#include "PaneForm.h"

class QGroupBox;

/// The pane of a datasource: whether it is connected, and what the driver manager knows of it. It sends no statement.
class frmDSN : public PaneForm
{
public:
    explicit frmDSN(QWidget* parent = nullptr);

    void Display(const QString& name);

private:
    void Form_Load();
    void showFacts(const QString& name);
    void setFact(QLabel& fact, const QString& text);

    QGroupBox* m_facts;
    QLabel* m_name;
    QLabel* m_driver;
    QLabel* m_remarks;
    QLabel* m_catalog;
    QLabel* m_file;
};
