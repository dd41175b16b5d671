#include "DragHandlers.h"

#include <utility>

namespace drags
{

namespace
{

Handlers& current()
{
    static Handlers all;
    return all;
}

} // namespace

void setHandlers(Handlers handlers)
{
    current() = std::move(handlers);
}

const Handlers& handlers()
{
    return current();
}

} // namespace drags
