#pragma once

#include <QString>

class QPrinter;

/// Documents on paper.
namespace printing
{

/// Prints a title, larger and bold, and a body in the normal font, over as many pages as it takes. Raises 482 when the
/// printer takes no document.
void print(QPrinter& printer, const QString& title, const QString& body);

/// The same on the default printer. Raises 482 when there is none.
void printOnDefault(const QString& title, const QString& body);

} // namespace printing
