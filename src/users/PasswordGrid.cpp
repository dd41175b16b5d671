#include "PasswordGrid.h"

#include "Boxes.h"
#include "CellGrid.h"
#include "modString.h"

#include <QEvent>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace
{

QString shownPassword(const QString& stored)
{
    return stored.isEmpty() ? QString() : u"**********"_s;
}

/// Empties an entry when what it watches is taken away, so that no password is held where nobody sees it.
class Forgetting final : public QObject
{
public:
    explicit Forgetting(QLineEdit& entry) : QObject(&entry), m_entry(entry) {}

private:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::HideToParent)
            m_entry.setText({});
        return false;
    }

    QLineEdit& m_entry;
};

} // namespace

PasswordGrid::PasswordGrid(const Kind& kind, std::vector<GridColumn> columns, const QString& passwordColumn,
                           QWidget* parent)
    : GridPane(kind, std::move(columns), parent), m_column(passwordColumn)
{
    auto* entry = grd().findChild<QLineEdit*>(u"txtCell"_s);
    auto* forgetting = new Forgetting(*entry);
    entry->installEventFilter(forgetting);
    // When another pane comes up, a cell that is being edited is dropped.
    installEventFilter(forgetting);
}

GridColumn PasswordGrid::passwordColumn(const QString& name)
{
    return {.name = name, .isMasked = true, .shown = &shownPassword};
}

bool PasswordGrid::isPasswordTyped() const
{
    return !modString::Trim(typed(m_column).value_or(QString())).isEmpty();
}

QString PasswordGrid::quotedPassword() const
{
    return isPasswordTyped() ? modDatabase::SQLQuote(*typed(m_column)) : QString();
}

/// Asterisks stand for a password, and blanks are none.
void PasswordGrid::cellChanged(const QString& column)
{
    if (column != m_column || isPasswordTyped())
        return;
    dropTyped(m_column);
    setText(m_column, loaded(m_column));
}

void PasswordGrid::warnOfLostPassword()
{
    const bool isRenamed = !isNewRow() && text(u"USER_NAME"_s) != loaded(u"USER_NAME"_s);
    if (!isRenamed || isPasswordTyped())
        return;
    boxes::inform(u"User Name has changed - password will be set to blank"_s);
    requireLoaded();
}

void PasswordGrid::showStoredPassword()
{
    setText(m_column, shownPassword(quotedPassword()));
}
