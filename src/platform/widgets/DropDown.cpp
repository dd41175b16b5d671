#include "DropDown.h"

#include <QScopedValueRollback>
#include <QWheelEvent>

#include <utility>

DropDown::DropDown(QWidget* parent) : QComboBox(parent)
{
    // The wheel gives the focus to what it is turned over otherwise.
    setFocusPolicy(Qt::StrongFocus);
    // The base tells of a list that stays without a selection, too.
    connect(this, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (std::exchange(m_index, index) != index && !m_refilling)
            emit Change();
    });
}

void DropDown::refill(const QStringList& items)
{
    const QString former = currentText();
    {
        const QScopedValueRollback refilling(m_refilling, true);
        clear();
        addItems(items);
        select(former);
    }
    if (currentText() != former)
        emit Change();
}

void DropDown::select(const QString& text)
{
    setCurrentIndex(findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
}

void DropDown::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}
