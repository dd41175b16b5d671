#pragma once

/// Registers the grids of files and of fields with the shell.
void registerFileGrids();
