#pragma once

/// The name of a form's routine, as "frmFile.Display". It lives as long as the program, as call stacks want it.
const char* routineName(const char* form, const char* operation);
