#pragma once

#include "Findings.h"

#include <QAbstractTableModel>

/// The findings of a run as rows: line, severity, type and description, with a picture of the severity. Findings that
/// have been added show from the next `publish` on, so that many come in one insertion.
class FindingsModel final : public QAbstractTableModel
{
public:
    explicit FindingsModel(const Findings& findings, QObject* parent = nullptr);

    /// Shows what has been added since.
    void publish();
    /// Shows what is there now, also if some has gone.
    void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    const Findings& m_findings;
    int m_shown = 0;
};

/// The beginning of a text of which no one could read the whole: a line of a file that is none has no limit.
QString beginningOf(const QString& text);
