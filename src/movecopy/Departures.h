#pragma once

#include <QSet>
#include <QString>

/// For as long as one lives: the objects whose rows the routines of a drop take away, be it from where they were or
/// where another one takes their place. There is one at a time.
class Departures
{
public:
    Departures();
    ~Departures();
    Departures(const Departures&) = delete;
    Departures& operator=(const Departures&) = delete;

    /// Notes an object by the key of its node. Without effect while none lives.
    static void note(const QString& node);

    /// Whether a node, or something that it hangs under, has gone.
    bool took(const QString& node) const;

private:
    QSet<QString> m_nodes;
};
