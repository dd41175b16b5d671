#pragma once

/// Registers the handlers of drag and drop, and the commands that copy, with the shell.
void registerMoveCopyRoom();
