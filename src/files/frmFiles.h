#pragma once

#include "GridPane.h"

/// The grid of all file definitions of a datasource, rows of TW_FILE. A file that gets another name here leaves its
/// fields, and the tables that map it, under the old one.
class frmFiles : public GridPane
{
    Q_OBJECT

public:
    explicit frmFiles(QWidget* parent = nullptr);

private:
    QString title() const override;
    QString selectStatement() const override;
    QString nodeKey() const override;
    bool isLocked(const QString& column) override;
    void lookUp(const QString& column) override;
    QString validate() override;
    void replaceRow() override;
    void updateRow() override;
};
