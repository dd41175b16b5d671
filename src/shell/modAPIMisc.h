#pragma once

#include <QString>

class QComboBox;

namespace modAPIMisc
{

/// Type-ahead in a combo box with an entry line: takes the first item that begins with what stands left of the
/// selection and the key, whatever its case, and marks the part that was not typed. Without such an item everything
/// stays. Returns whether the key is used up, which is so for the characters from 32 to 128.
bool ComboKeyPress(QComboBox& combo, const QString& key);

} // namespace modAPIMisc
