#pragma once

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tappora {

/// A program on a pseudo-terminal of its own, which sees what a terminal would be sent.
class PseudoTerminal {
  public:
    using Variables = std::map<std::string, std::string>;

    PseudoTerminal(std::vector<std::string> arguments, const Variables& environment, unsigned short lines,
                   unsigned short columns) {
        std::vector<char*> pointers;
        for (std::string& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        winsize size{lines, columns, 0, 0};
        process_ = forkpty(&terminal_, nullptr, nullptr, &size);
        if (process_ != 0) return;
        ::signal(SIGINT, SIG_DFL);  // ignored, where the tests run in the background of a script
        for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            wait();
        }
        hangUp();
    }

    void type(std::string_view keys) const {
        while (!keys.empty()) {
            const ssize_t written = write(terminal_, keys.data(), keys.size());
            if (written <= 0) return;
            keys.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    void resize(unsigned short lines, unsigned short columns) const {
        const winsize size{lines, columns, 0, 0};
        ioctl(terminal_, TIOCSWINSZ, &size);
    }
    void signal(int number) const { kill(process_, number); }
    /// Takes the terminal away.
    void hangUp() {
        if (terminal_ >= 0) close(terminal_);
        terminal_ = -1;
    }

    /// Whether a text comes, after what was seen before, within a minute.
    bool shows(std::string_view text) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (std::chrono::steady_clock::now() < deadline) {
            const std::size_t found = seen_.find(text, from_);
            if (found != std::string::npos) {
                from_ = found + text.size();
                return true;
            }
            if (!readSome(100) && hasEnded_) return false;
        }
        return false;
    }
    /// Waits at most so many milliseconds for something to be shown; whether something was.
    bool readSome(int milliseconds) {
        pollfd source{terminal_, POLLIN, 0};
        if (poll(&source, 1, milliseconds) <= 0) return false;
        char bytes[4096];
        const ssize_t size = read(terminal_, bytes, sizeof bytes);
        hasEnded_ = size <= 0;
        if (size > 0) seen_.append(bytes, static_cast<std::size_t>(size));
        return size > 0;
    }
    const std::string& seen() const { return seen_; }

    /// Whether the terminal echoes, hands over whole lines and knows Ctrl-C, as a shell wants it.
    bool isOrdinary() const {
        termios settings{};
        tcgetattr(terminal_, &settings);
        return (settings.c_lflag & ECHO) != 0 && (settings.c_lflag & ICANON) != 0 &&
               settings.c_cc[VINTR] == '\x03';
    }

    /// The exit status, once the program has ended; -1 when a signal ended it.
    int wait() {
        while (terminal_ >= 0 && !hasEnded_) readSome(60'000);
        int status = 0;
        waitpid(process_, &status, 0);
        process_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    pid_t process_ = -1;
    int terminal_ = -1;
    std::string seen_;
    std::size_t from_ = 0;
    bool hasEnded_ = false;
};

}  // namespace tappora
