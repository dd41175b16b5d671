#pragma once

#include <string>
#include <vector>

struct CommandOutput {
    int exitCode = -1;
    std::string text; ///< what it wrote, to either stream
};

/// Runs a program with a text as its input, to its end. Programs that load the driver get the sanitizer's library first
/// when the driver is built with it.
CommandOutput RunCommand(const std::vector<std::string>& words, const std::string& input);

/// Runs statements, a line each, by isql, and has it write the rows alone: a line each, with `|` between the cells.
CommandOutput RunIsql(const std::string& datasource, const std::string& statements);
