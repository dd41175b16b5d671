#pragma once

#include "GridPane.h"

/// The databases of a datasource in a grid. Unlike the pane of a database it renames the row alone: tables, columns and
/// privileges stay under the former name.
class frmDatabases : public GridPane
{
    Q_OBJECT

public:
    explicit frmDatabases(QWidget* parent = nullptr);

protected:
    QStringList itemsOf(const GridColumn& column) const override;
    QString newRowValue(const GridColumn& column) const override;

private:
    QString title() const override;
    QString selectStatement() const override;
    QString nodeKey() const override;
    void populateLists() override;
    bool isLocked(const QString& column) override;
    QString validate() override;
    void replaceRow() override;
    void updateRow() override;
};
