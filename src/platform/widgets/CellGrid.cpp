#include "CellGrid.h"

#include "CellGridModel.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// How far an editor reaches over the right edge of its cell, in pixels.
constexpr int editorSurplus = 2;

/// Distances in device-independent pixels.
constexpr int textMargin = 6;
constexpr int narrowestColumn = 44;
constexpr int widestColumn = 320;
/// Rows that count for the widths of the columns while the grid has no height yet.
constexpr int usualRows = 40;
/// As much of a text as can show in a cell or be read in a tool tip, in UTF-16 units; what is drawn is shaped as a
/// whole.
constexpr qsizetype longestShown = 2048;

QColor mixed(const QColor& a, const QColor& b, double shareOfB)
{
    const auto part = [shareOfB](float x, float y) { return x + (y - x) * static_cast<float>(shareOfB); };
    return QColor::fromRgbF(part(a.redF(), b.redF()), part(a.greenF(), b.greenF()), part(a.blueF(), b.blueF()));
}

/// The beginning of a text that is very long, with an ellipsis.
QString beginning(QStringView text)
{
    if (text.size() <= longestShown)
        return text.toString();
    const bool splits = text.at(longestShown - 1).isHighSurrogate();
    return text.first(splits ? longestShown - 1 : longestShown).toString() + u'…';
}

/// Draws cells: faint lines, a tint for the row of the current cell and a frame around that cell.
class CellPainter final : public QStyledItemDelegate
{
public:
    explicit CellPainter(CellGrid& grid) : QStyledItemDelegate(&grid), m_grid(grid) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QPalette& colours = m_grid.palette();
        const QColor base = colours.color(QPalette::Base);
        const QColor highlight = colours.color(QPalette::Highlight);
        const QRect& cell = option.rect;
        if (index.row() == m_grid.Row())
            painter->fillRect(cell, mixed(base, highlight, 0.09));

        painter->setPen(mixed(base, colours.color(QPalette::Text), 0.14));
        painter->drawLine(cell.bottomLeft(), cell.bottomRight());
        painter->drawLine(cell.topRight(), cell.bottomRight());

        const QRect room = cell.adjusted(textMargin, 0, -textMargin, 0);
        const QString text = shown(index);
        const Qt::Alignment alignment = static_cast<const CellGridModel&>(*index.model()).alignment(index.column());
        painter->setPen(colours.color(QPalette::Text));
        painter->drawText(room, static_cast<int>(alignment) | Qt::TextSingleLine,
                          option.fontMetrics.elidedText(text, Qt::ElideRight, room.width()));

        if (index == m_grid.currentIndex()) {
            const bool active = m_grid.hasFocus();
            painter->setPen(QPen(active ? highlight : mixed(base, highlight, 0.5), active ? 2 : 1));
            const int inset = active ? 1 : 0;
            painter->drawRect(cell.adjusted(inset, inset, -1, -1));
        }
    }

    /// A text of several lines shows in one.
    static QString shown(const QModelIndex& index)
    {
        QString text = beginning(static_cast<const CellGridModel&>(*index.model()).text(index.row(), index.column()));
        return text.replace('\n'_L1, u'↵');
    }

private:
    CellGrid& m_grid;
};

/// Draws headings flat, with their texts over those of the cells.
class Headings final : public QHeaderView
{
public:
    explicit Headings(CellGrid& grid) : QHeaderView(Qt::Horizontal, &grid) {}

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override
    {
        const QPalette& colours = palette();
        const QColor window = colours.color(QPalette::Window);
        const QColor text = colours.color(QPalette::WindowText);
        painter->fillRect(rect, mixed(window, text, 0.03));
        painter->setPen(mixed(window, text, 0.18));
        painter->drawLine(rect.bottomLeft(), rect.bottomRight());
        painter->drawLine(rect.topRight(), rect.bottomRight());
        const auto& cells = static_cast<const CellGridModel&>(*model());
        const QRect room = rect.adjusted(textMargin, 0, -textMargin, 0);
        painter->setPen(text);
        painter->drawText(room, static_cast<int>(cells.alignment(section)) | Qt::TextSingleLine,
                          fontMetrics().elidedText(cells.heading(section), Qt::ElideRight, room.width()));
    }
};

bool movesCurrentCell(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    default:
        return false;
    }
}

} // namespace

CellGrid::CellGrid(const QString& name, QWidget* parent) : QTableView(parent), m_model(new CellGridModel(this))
{
    setObjectName(name);
    setHorizontalHeader(new Headings(*this));
    setModel(m_model);
    setItemDelegate(new CellPainter(*this));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setFrameShape(QFrame::StyledPanel);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setMinimumSectionSize(narrowestColumn / 2);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setSectionsClickable(false);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    followFont();
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &CellGrid::placeEditor);
    connect(m_model, &QAbstractItemModel::modelAboutToBeReset, this, [this] { layOver(nullptr); });
}

CellGrid::~CellGrid() = default;

// Cells --------------------------------------------------------------------------------------------------------------

int CellGrid::Rows() const
{
    return m_model->rowCount();
}

int CellGrid::Cols() const
{
    return m_model->columnCount();
}

const QString& CellGrid::Heading(int column) const
{
    return m_model->heading(column);
}

QString CellGrid::TextMatrix(int row, int column) const
{
    return m_model->text(row, column).toString();
}

void CellGrid::setTextMatrix(int row, int column, const QString& text)
{
    m_model->setText(row, column, text);
}

void CellGrid::AddItem(const QStringList& cells)
{
    m_model->addRow(cells);
}

void CellGrid::Clear()
{
    announceAfter([this] {
        m_model->begin({});
        m_model->end();
    });
}

void CellGrid::select(int row, int column)
{
    announceAfter([&] {
        const QModelIndex cell = m_model->index(row, column);
        if (!cell.isValid())
            return;
        setCurrentIndex(cell);
        scrollTo(cell);
    });
}

CellGrid::Filling::Filling(CellGrid& grid, const QString& formatString)
    : Filling(grid, formatString.isEmpty() ? QStringList() : formatString.split('|'_L1))
{
}

CellGrid::Filling::Filling(CellGrid& grid, const QStringList& headings) : m_grid(grid)
{
    m_grid.m_model->begin(headings);
}

CellGrid::Filling::~Filling()
{
    m_grid.m_model->end();
}

void CellGrid::Filling::add(QStringView text)
{
    m_grid.m_model->append(text);
}

// Sizes --------------------------------------------------------------------------------------------------------------

void CellGrid::setRoom(int column, const QStringList& texts, int extra)
{
    if (m_rooms.size() <= static_cast<std::size_t>(column))
        m_rooms.resize(static_cast<std::size_t>(column) + 1);
    m_rooms[static_cast<std::size_t>(column)] = {texts, extra};
}

int CellGrid::widthOf(int column) const
{
    const QFontMetrics metrics = fontMetrics();
    int width = 0;
    int extra = 0;
    if (static_cast<std::size_t>(column) < m_rooms.size()) {
        const Room& room = m_rooms[static_cast<std::size_t>(column)];
        for (const QString& text : room.texts)
            width = std::max(width, metrics.horizontalAdvance(text));
        extra = room.extra;
    }
    const int first = std::max(0, rowAt(0));
    const int showing = std::max(usualRows, viewport()->height() / verticalHeader()->defaultSectionSize() + 1);
    for (int row = first; row < std::min(Rows(), first + showing); ++row)
        width = std::max(width, metrics.horizontalAdvance(beginning(m_model->text(row, column))));
    width = std::min(width + extra, widestColumn);
    return 2 * textMargin + 2 + std::max({narrowestColumn, width, metrics.horizontalAdvance(Heading(column))});
}

void CellGrid::sizeColumns()
{
    for (int column = 0; column < Cols(); ++column)
        setColumnWidth(column, widthOf(column));
}

void CellGrid::setNewRowMark(const QString& mark)
{
    m_model->setNewRowMark(mark);
    verticalHeader()->setVisible(!mark.isEmpty());
}

void CellGrid::followFont()
{
    const int height = std::max(24, fontMetrics().height() + 8);
    verticalHeader()->setDefaultSectionSize(height);
    horizontalHeader()->setMinimumHeight(height);
}

void CellGrid::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        followFont();
}

// The editor ---------------------------------------------------------------------------------------------------------

void CellGrid::layOver(QWidget* editor)
{
    m_editor = editor;
    m_edited = editor ? QPersistentModelIndex(currentIndex()) : QPersistentModelIndex();
    placeEditor();
}

void CellGrid::showEditor()
{
    if (m_editor && m_edited.isValid())
        scrollTo(m_edited);
}

void CellGrid::placeEditor()
{
    if (m_editor && m_edited.isValid())
        m_editor->setGeometry(visualRect(m_edited).adjusted(0, 0, editorSurplus, 0));
}

void CellGrid::updateGeometries()
{
    QTableView::updateGeometries();
    placeEditor();
}

// Events -------------------------------------------------------------------------------------------------------------

/// The view finishes what it does with an event before anybody learns that the current cell is another one.
template <typename Work>
void CellGrid::announceAfter(Work work)
{
    const QPointer<CellGrid> alive = this;
    {
        ++m_busy;
        const auto done = qScopeGuard([this] { --m_busy; });
        work();
    }
    if (!alive || m_busy > 0 || !std::exchange(m_moved, false))
        return;
    emit RowColChange();
}

void CellGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    // The tint of the row goes with the current cell.
    viewport()->update();
    m_moved = true;
}

void CellGrid::focusInEvent(QFocusEvent* event)
{
    announceAfter([&] { QTableView::focusInEvent(event); });
    viewport()->update();
    emit GotFocus();
}

void CellGrid::focusOutEvent(QFocusEvent* event)
{
    QTableView::focusOutEvent(event);
    viewport()->update();
}

void CellGrid::keyPressEvent(QKeyEvent* event)
{
    const bool moves = movesCurrentCell(*event) || event->matches(QKeySequence::Copy);
    const bool leadsOut =
        Row() == Rows() - 1 && (event->key() == Qt::Key_Down || (event->key() == Qt::Key_Tab && Col() == Cols() - 1));
    if (!moves || leadsOut) {
        event->setAccepted(!moves);
        emit KeyPress(event);
    }
    if (moves && !(leadsOut && event->isAccepted()))
        announceAfter([&] { QTableView::keyPressEvent(event); });
}

void CellGrid::mousePressEvent(QMouseEvent* event)
{
    const bool beside = event->button() == Qt::LeftButton && !indexAt(event->position().toPoint()).isValid();
    announceAfter([&] { QTableView::mousePressEvent(event); });
    if (beside)
        emit ClickBeside();
}

/// A drag over the cells would make each of them the current one.
void CellGrid::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() == Qt::NoButton)
        QTableView::mouseMoveEvent(event);
}

void CellGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex cell = indexAt(event->position().toPoint());
    announceAfter([&] { QTableView::mouseDoubleClickEvent(event); });
    if (event->button() == Qt::LeftButton && cell.isValid() && cell == currentIndex())
        emit DblClick();
}

bool CellGrid::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        // A text that is cut shows whole, as far as it can be read there.
        const auto& help = *static_cast<QHelpEvent*>(event);
        const QModelIndex cell = indexAt(help.pos());
        const QString text = cell.isValid() ? beginning(m_model->text(cell.row(), cell.column())) : QString();
        const int room = visualRect(cell).width() - 2 * textMargin;
        const bool cut = cell.isValid() && fontMetrics().horizontalAdvance(CellPainter::shown(cell)) > room;
        QToolTip::showText(help.globalPos(), cut ? Qt::convertFromPlainText(text) : QString(), viewport(),
                           visualRect(cell));
        return true;
    }
    return QTableView::viewportEvent(event);
}
