#pragma once

#include <QStringList>

/// A screen reader that listens for as long as it lives. One lives at a time, within the life of the application
/// object.
class ScreenReader
{
public:
    ScreenReader();
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    /// What it has heard since the last asking: a text that was inserted as "+text", one that was removed as "-text",
    /// the value of a control as "=text", any other event as its number.
    static QStringList takeHeard();
};
