#include "PasswordGrid.h"

#include "Boxes.h"
#include "Passwords.h"
#include "Privileges.h"
#include "modString.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

QString maskedColumn(const std::vector<GridColumn>& columns)
{
    return std::find_if(columns.begin(), columns.end(), [](const GridColumn& column) { return column.isMasked; })->name;
}

} // namespace

GridColumn passwordColumn(const QString& name)
{
    return {.name = name, .isMasked = true, .shown = &passwords::shown};
}

PasswordGrid::PasswordGrid(const Kind& kind, std::vector<GridColumn> columns, QWidget* parent)
    : GridPane(kind, std::move(columns), parent), m_column(maskedColumn(allColumns()))
{
}

bool PasswordGrid::isPasswordTyped() const
{
    return !modString::Trim(typed(m_column).value_or(QString())).isEmpty();
}

QString PasswordGrid::quotedPassword() const
{
    return isPasswordTyped() ? modDatabase::SQLQuote(*typed(m_column)) : QString();
}

QString PasswordGrid::passwordAssignment() const
{
    return isPasswordTyped() ? privileges::passwordAssignment(m_column, quotedPassword()) : QString();
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
    setText(m_column, isPasswordTyped() ? passwords::mask() : QString());
}
