#include "Commands.h"

#include <QHash>

namespace commands
{

namespace
{

QHash<QString, Command>& registry()
{
    static QHash<QString, Command> all;
    return all;
}

} // namespace

void add(const QString& menuItem, Command command)
{
    registry().insert(menuItem, std::move(command));
}

void run(const QString& menuItem, const DragItem& item)
{
    if (const Command command = registry().value(menuItem))
        command(item);
}

} // namespace commands
