#pragma once

/// Registers the panes and commands of file definitions with the shell.
void registerFilesRoom();
