#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/file_io.h"
#include "tests/support/temporary_folder.h"

namespace tappora {

/// A program at work, with files for its three streams and no environment but the one given.
class RunningProgram {
  public:
    RunningProgram(const std::string& program, const std::vector<std::string>& arguments,
                   const std::map<std::string, std::string>& environment, std::string_view input = "") {
        streams_.put("in", input);
        streams_.put("out", "");
        streams_.put("error", "");
        child_ = ::fork();
        if (child_ == 0) become(program, arguments, environment);
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    pid_t id() const { return child_; }
    std::string output() const { return streams_.text("out"); }
    std::string errors() const { return streams_.text("error"); }

    /// Its exit status, once it has ended; -1 for the end by a signal.
    int wait() {
        int status = 0;
        ::waitpid(child_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    [[noreturn]] void become(const std::string& program, std::vector<std::string> arguments,
                             const std::map<std::string, std::string>& environment) const {
        ::signal(SIGINT, SIG_DFL);  // ignored, where the tests run in the background of a script
        ::dup2(::open((streams_ / "in").c_str(), O_RDONLY), STDIN_FILENO);
        ::dup2(::open((streams_ / "out").c_str(), O_WRONLY | O_APPEND), STDOUT_FILENO);
        ::dup2(::open((streams_ / "error").c_str(), O_WRONLY | O_APPEND), STDERR_FILENO);
        std::vector<std::string> settings;
        for (const auto& [name, value] : environment) settings.push_back(name + "=" + value);
        arguments.insert(arguments.begin(), program);
        ::execve(program.c_str(), pointers(arguments).data(), pointers(settings).data());
        ::_exit(127);
    }

    static std::vector<char*> pointers(std::vector<std::string>& texts) {
        std::vector<char*> all;
        for (std::string& text : texts) all.push_back(text.data());
        all.push_back(nullptr);
        return all;
    }

    tapcore::TemporaryFolder streams_;
    pid_t child_ = -1;
};

}  // namespace tappora
