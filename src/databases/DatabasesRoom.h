#pragma once

/// Registers the panes and commands of databases, tables and columns with the shell.
void registerDatabasesRoom();
