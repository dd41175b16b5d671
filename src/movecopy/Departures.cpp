#include "Departures.h"

namespace
{

Departures* current = nullptr;

}

Departures::Departures()
{
    // A drop runs to its end before another one can begin.
    Q_ASSERT(!current);
    current = this;
}

Departures::~Departures()
{
    current = nullptr;
}

void Departures::note(const QString& node)
{
    if (current)
        current->m_nodes.insert(node);
}

bool Departures::took(const QString& node) const
{
    // A key begins with the keys of all that the node hangs under.
    for (qsizetype end = node.indexOf(u':'); end >= 0; end = node.indexOf(u':', end + 1)) {
        if (m_nodes.contains(node.left(end + 1)))
            return true;
    }
    return false;
}
