#include "DropDown.h"

#include <QScopedValueRollback>

DropDown::DropDown(QWidget* parent) : QComboBox(parent)
{
    connect(this, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_refilling)
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
