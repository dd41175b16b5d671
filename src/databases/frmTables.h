#pragma once

#include "GridPane.h"

/// The tables of a database in a grid. Unlike the pane of a table it renames the row alone: columns and privileges stay
/// under the former name.
class frmTables : public GridPane
{
    Q_OBJECT

public:
    explicit frmTables(QWidget* parent = nullptr);

private:
    QString title() const override;
    QString selectStatement() const override;
    QString nodeKey() const override;
    std::optional<Owner> owner() const override;
    void populateLists() override;
    bool isReadOnly() const override;
    void lookUp(const QString& column) override;
    QString validate() override;
    void replaceRow() override;
    void updateRow() override;

    void countColumns();
    void buildCriteria();
    const QString& database() const { return keys().at(1); }
};
