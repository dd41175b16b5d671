#pragma once

#include <QString>
#include <QStringView>

class CLOCDTs;
class CsvColumns;

/// What was assumed of a line that is short of its last columns: the type and the text of the warning. Both are empty
/// for a line that was not short.
struct Assumption {
    QString type;
    QString warning;
};

/// Fills in what a FIELD line of 6 columns, a DB line of 5, a TABLE line of 7 and a COLUMN line of 10 or 11 leave out:
/// a field's attributes come from its type, a display name from the name, and a column is an ordinary one.
Assumption fillIn(QStringView id, CsvColumns& columns, const CLOCDTs& types);
