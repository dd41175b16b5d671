#pragma once

#include <QString>

/// Writes a text in UTF-8 in the place of whatever the file held. Nothing of the former file is lost when it fails.
/// Raises the run-time error of the failure.
void writeTextFile(const QString& path, const QString& text);
