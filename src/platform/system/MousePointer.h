#pragma once

/// The main window's mouse pointer, by the numbers that the forms use.
namespace mousepointer {

inline constexpr int Default = 0;
inline constexpr int Wait = 11;

int current();
void set(int pointer);

} // namespace mousepointer
