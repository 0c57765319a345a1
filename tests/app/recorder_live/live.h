#pragma once

// The recorder as people run it, with libinput and udev, on devices that umockdev plays.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "core/files/store.h"
#include "core/foundation/descriptor.h"
#include "tests/app/recorder_live/testbed.h"

namespace tappora {

namespace fs = std::filesystem;
using tapcore::Tally;

inline const MockDevice keyboard{.number = 5, .name = "A keyboard"};
inline const MockDevice mouse{.number = 6, .name = "A mouse", .isMouse = true};

/// A recorder that runs as a program of its own, until a signal.
class Program {
  public:
    /// Standard output goes to `other` instead, when one is given.
    explicit Program(std::vector<std::string> arguments, int other = -1) {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) < 0) throw std::runtime_error("no pipe");
        output_ = tapcore::Descriptor(ends[0]);
        const tapcore::Descriptor input(ends[1]);
        process_ = ::fork();
        if (process_ == 0) run(std::move(arguments), other < 0 ? input.get() : other, input.get());
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        if (process_ > 0) stop(SIGKILL);
    }

    /// Reads what it prints, on either stream, until it prints `text`; false when it does not in half a
    /// minute.
    bool prints(const std::string& text) {
        for (std::size_t seen = 0; (seen = printed.find(text)) == std::string::npos;) {
            pollfd waiting{.fd = output_.get(), .events = POLLIN, .revents = 0};
            char buffer[4096];
            if (::poll(&waiting, 1, 30'000) <= 0) return false;
            const ssize_t got = ::read(output_.get(), buffer, sizeof buffer);
            if (got <= 0) return false;
            printed.append(buffer, static_cast<std::size_t>(got));
        }
        printed.erase(0, printed.find(text) + text.size());
        return true;
    }

    void stopReading() { output_ = {}; }
    void signal(int number) const { ::kill(process_, number); }

    /// Ends it, and gives its exit status, or -1 when it did not exit.
    int stop(int number = SIGTERM) {
        signal(number);
        return end();
    }
    int end() {
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    bool hasEnded() const {
        siginfo_t ended{};
        return ::waitid(P_PID, static_cast<id_t>(process_), &ended, WEXITED | WNOHANG | WNOWAIT) < 0 ||
               ended.si_pid != 0;
    }

    std::string printed;

  private:
    [[noreturn]] static void run(std::vector<std::string> arguments, int output, int errors) {
        arguments.insert(arguments.begin(), "tappora-record");
        std::vector<char*> pointers;
        for (std::string& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        ::dup2(output, STDOUT_FILENO);
        ::dup2(errors, STDERR_FILENO);
        ::execv(PROGRAMS "/tappora-record", pointers.data());
        ::_exit(127);
    }

    pid_t process_ = -1;
    tapcore::Descriptor output_;
};

/// A pipe of so many bytes that nobody reads.
class Pipe {
  public:
    explicit Pipe(int size) {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) < 0) throw std::runtime_error("no pipe");
        reader_ = tapcore::Descriptor(ends[0]);
        writer_ = tapcore::Descriptor(ends[1]);
        capacity_ = ::fcntl(ends[1], F_SETPIPE_SZ, size);
    }
    int writer() const { return writer_.get(); }

    /// Waits for the next line in it, and says whether another like it will do; false when none comes, since
    /// the writer has ended or half a minute has passed.
    bool takesMore(const Program& writer) const {
        const int before = seen_;
        for (int waits = 0; (seen_ = size()) == before; ++waits) {
            if (waits == 30'000 || writer.hasEnded()) return false;
            ::poll(nullptr, 0, 1);
        }
        return seen_ + (seen_ - before) <= capacity_;
    }
    void empty() const {
        std::string bytes(static_cast<std::size_t>(size()), '\0');
        EXPECT_EQ(::read(reader_.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        seen_ = 0;
    }

  private:
    int size() const {
        int bytes = 0;
        ::ioctl(reader_.get(), FIONREAD, &bytes);
        return bytes;
    }

    tapcore::Descriptor reader_;
    tapcore::Descriptor writer_;
    int capacity_ = 0;
    mutable int seen_ = 0;
};

class Live : public testing::Test {
  protected:
    fs::path folder = fs::path(testing::TempDir()) / ("live-" + std::to_string(::getpid()));
    fs::path share = folder.string() + "-share";
    Testbed bed;

    Live() {
        fs::create_directories(folder);
        fs::create_directories(fs::path(testing::TempDir()) / "run");
        ::setenv("XDG_RUNTIME_DIR", (fs::path(testing::TempDir()) / "run").c_str(), 1);
        ::setenv("XDG_DATA_HOME", share.c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", share.c_str(), 1);
    }
    ~Live() override {
        fs::remove_all(folder);
        fs::remove_all(share);
    }

    std::vector<std::string> watching() const { return {"--watch", "--folder", folder.string()}; }

    /// All that was counted, on whatever day the test runs.
    Tally counted() const {
        const tapcore::Store store(folder, tapcore::FileFormat::org);
        Tally sum;
        for (const auto& day : store.days()) sum.merge(store.read(day).tally);
        return sum;
    }
};

}  // namespace tappora
