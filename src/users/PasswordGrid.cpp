#include "PasswordGrid.h"

#include "Boxes.h"
#include "modString.h"

using namespace Qt::StringLiterals;

namespace
{

QString shownPassword(const QString& stored)
{
    return stored.isEmpty() ? QString() : u"**********"_s;
}

} // namespace

PasswordGrid::PasswordGrid(const Kind& kind, std::vector<GridColumn> columns, const QString& passwordColumn,
                           QWidget* parent)
    : GridPane(kind, std::move(columns), parent), m_column(passwordColumn)
{
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
    if (column == m_column && !isPasswordTyped())
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
