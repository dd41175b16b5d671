#pragma once

#include "GridPane.h"
#include "LocalTypeLimits.h"

/// The grid of the fields of one file, rows of TW_FIELD. A field that gets another name here leaves the columns that
/// map it under the old one. The fields of a reserved file are only shown.
class frmFields : public GridPane
{
    Q_OBJECT

public:
    explicit frmFields(QWidget* parent = nullptr);

    /// The number of a kind of encryption by its name.
    static int ToEncrypted(const QString& text);

private:
    QString title() const override;
    QString selectStatement() const override;
    QString nodeKey() const override;
    std::optional<Owner> owner() const override;
    void populateLists() override;
    bool isReadOnly() const override;
    bool isLocked(const QString& column) override;
    void cellChanged(const QString& column) override;
    void lookUp(const QString& column) override;
    QString validate() override;
    void replaceRow() override;
    void updateRow() override;

    const QString& file() const { return keys().at(1); }
    QString quotedFile() const { return modDatabase::SQLQuote(file()); }
    LocalTypeLimits limitsOf(const QString& localTypeName) const;
    void FetchTypeInfo(const QString& localTypeName);
    void buildFormat();
    QString encrypted() const;
    void findNextNumber();
    void sumOffset();
};
