#pragma once

/// Registers the shell's own panes: datasource, welcome, options and about.
void registerShellPanes();
