#pragma once

#include "FormatBuilder.h"
#include "Outside.h"

/// Builds the format of a date field: "YY", "YYYY", "MM", "MMM", "DD" and separators.
class frmDateFormat : public FormatBuilder
{
public:
    frmDateFormat();

    /// Lets the user build on a format. Returns the given one after anything but "OK".
    static QString GetFormat(const QString& current);
    /// What a format gives at a moment; the names of months are those of the user's locale.
    static QString MakeExample(const QString& format, const QDateTime& moment = Outside::instance().now());
};
