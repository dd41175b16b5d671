#include "FindingsModel.h"

#include "Icons.h"

#include <QIcon>
#include <QTextDocument>

#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array severities{"ERR", "WRN", "XXX"};
constexpr std::array headings{"Line", "Severity", "Type", "Description"};

} // namespace

FindingsModel::FindingsModel(const Findings& findings, QObject* parent)
    : QAbstractTableModel(parent), m_findings(findings)
{
}

void FindingsModel::publish()
{
    const int count = static_cast<int>(m_findings.all().size());
    if (count <= m_shown)
        return;
    beginInsertRows({}, m_shown, count - 1);
    m_shown = count;
    endInsertRows();
}

void FindingsModel::refresh()
{
    beginResetModel();
    m_shown = static_cast<int>(m_findings.all().size());
    endResetModel();
}

int FindingsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_shown;
}

int FindingsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(headings.size());
}

QVariant FindingsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || static_cast<std::size_t>(index.row()) >= m_findings.all().size())
        return {};
    const Finding& finding = m_findings.all()[static_cast<std::size_t>(index.row())];
    if (role == Qt::DecorationRole && index.column() == 0)
        return Icons::icon(finding.severity == Finding::Severity::Warning ? u"Warning"_s : u"Error"_s);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    switch (index.column()) {
    case 0:
        return finding.line;
    case 1:
        return QLatin1StringView(severities[static_cast<std::size_t>(finding.severity)]);
    case 2:
        return finding.type;
    default:
        // A tool tip would take the text for markup where it looks like that.
        return role == Qt::ToolTipRole ? Qt::convertFromPlainText(beginningOf(finding.description))
                                       : beginningOf(finding.description);
    }
}

QVariant FindingsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return QString::fromLatin1(headings[static_cast<std::size_t>(section)]);
}

QString beginningOf(const QString& text)
{
    constexpr qsizetype most = 2000;
    return text.size() <= most ? text : text.left(most) + u'\u2026';
}
