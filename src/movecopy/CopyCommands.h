#pragma once

/// Brings the Copy commands of databases, tables and files along.
void registerCopyCommands();
