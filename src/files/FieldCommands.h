#pragma once

/// Brings the menu commands on all fields of a file: the dialog of their order, and the calculation of their offsets.
void registerFieldCommands();
