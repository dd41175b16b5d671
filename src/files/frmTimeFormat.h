#pragma once

#include "FormatBuilder.h"
#include "Outside.h"

/// Builds the format of a time field: "hh", "mm", "ss" and separators. Formats may hold "cc", hundredths, too.
class frmTimeFormat : public FormatBuilder
{
public:
    frmTimeFormat();

    /// Lets the user build on a format. Returns the given one after anything but "OK".
    static QString GetFormat(const QString& current);
    /// What a format gives at a moment. Hundredths are always "00".
    static QString MakeExample(const QString& format, const QDateTime& moment = Outside::instance().now());
};
