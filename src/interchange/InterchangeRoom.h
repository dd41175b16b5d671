#pragma once

/// Registers the panes that write a catalog to a CSV file and read one back with the shell.
void registerInterchangeRoom();
