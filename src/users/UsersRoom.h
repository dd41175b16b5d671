#pragma once

/// Registers the panes of users and of their privileges with the shell.
void registerUsersRoom();
