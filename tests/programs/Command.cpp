#include "Command.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// An unnamed file that holds a text, at its beginning.
int FileWith(const std::string& text)
{
    char name[] = "/tmp/tarnwick-input-XXXXXX";
    const int file = ::mkstemp(name);
    if (file < 0 || ::write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("no temporary file");
    ::unlink(name);
    ::lseek(file, 0, SEEK_SET);
    return file;
}

[[noreturn]] void BecomeProgram(const std::vector<std::string>& words, int input, int output)
{
#ifdef TARNWICK_PRELOAD
    ::setenv("LD_PRELOAD", TARNWICK_PRELOAD, 1);
    ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
#endif
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(output, STDERR_FILENO);
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
}

} // namespace

CommandOutput RunCommand(const std::vector<std::string>& words, const std::string& input)
{
    std::array<int, 2> output{};
    if (::pipe(output.data()) != 0)
        throw std::runtime_error("no pipe");
    const int given = FileWith(input);
    const pid_t child = ::fork();
    if (child == 0)
        BecomeProgram(words, given, output[1]);
    ::close(given);
    ::close(output[1]);
    CommandOutput result;
    std::array<char, 4096> piece{};
    for (ssize_t got = 0; (got = ::read(output[0], piece.data(), piece.size())) > 0;)
        result.text.append(piece.data(), static_cast<std::size_t>(got));
    ::close(output[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

CommandOutput RunIsql(const std::string& datasource, const std::string& statements)
{
    return RunCommand({"isql", datasource, "-b", "-x0x7C"}, statements);
}
