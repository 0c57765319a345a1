#include "app/common/system/child_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include "app/common/program.h"
#include "core/foundation/descriptor.h"

extern char** environ;

namespace tappora {
namespace {

/// Where the streams of the started program lead.
class Streams {
  public:
    Streams() { ::posix_spawn_file_actions_init(&actions_); }
    Streams(const Streams&) = delete;
    Streams& operator=(const Streams&) = delete;
    ~Streams() { ::posix_spawn_file_actions_destroy(&actions_); }

    void leadTo(int output) {
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions_, output, STDERR_FILENO);
    }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

/// The process, or 0 when the program is not found.
pid_t started(const std::vector<std::string>& commandLine, const Streams& streams) {
    std::vector<std::string> words = commandLine;
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t process = 0;
    std::fflush(stdout);
    const int error =
        ::posix_spawnp(&process, arguments.front(), streams.get(), nullptr, arguments.data(), environ);
    if (error == ENOENT) return 0;
    if (error != 0) throw Failure(commandLine.front(), std::generic_category().message(error));
    return process;
}

int endOf(pid_t process) {
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) continue;
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

std::string readToEnd(int file) {
    std::string text;
    std::array<char, 4096> part;
    for (;;) {
        const ssize_t size = ::read(file, part.data(), part.size());
        if (size < 0 && errno == EINTR) continue;
        if (size <= 0) return text;
        text.append(part.data(), static_cast<std::size_t>(size));
    }
}

ProgramEnd notFound(const std::string& program) { return {127, program + ": not found"}; }

}  // namespace

ProgramEnd runProgram(const std::vector<std::string>& commandLine) {
    const pid_t process = started(commandLine, Streams());
    return process == 0 ? notFound(commandLine.front()) : ProgramEnd{endOf(process), ""};
}

ProgramEnd outputOf(const std::vector<std::string>& commandLine) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw Failure(commandLine.front(), std::generic_category().message(errno));
    const tapcore::Descriptor reading(ends[0]);
    tapcore::Descriptor writing(ends[1]);
    Streams streams;
    streams.leadTo(writing.get());
    const pid_t process = started(commandLine, streams);
    writing = tapcore::Descriptor();
    if (process == 0) return notFound(commandLine.front());
    std::string output = readToEnd(reading.get());
    return {endOf(process), std::move(output)};
}

std::string shellWord(std::string_view text) {
    const bool isPlain = !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view("/._-@:=+,").find(c) != std::string_view::npos;
    });
    if (isPlain) return std::string(text);
    std::string word = "'";
    for (const char c : text) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}

}  // namespace tappora
