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
#include <optional>
#include <string>
#include <vector>

#include "app/common/folder/practice_lock.h"
#include "core/files/store.h"
#include "core/foundation/descriptor.h"
#include "core/foundation/file_io.h"
#include "core/foundation/file_lock.h"
#include "core/widget/widget_snapshot.h"
#include "tests/app/recorder_live/testbed.h"
#include "tests/support/environment.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Tally;
using tapcore::WidgetSnapshot;

const MockDevice keyboard{.number = 5, .name = "A keyboard"};
const MockDevice mouse{.number = 6, .name = "A mouse", .isMouse = true};

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

TEST_F(Live, CountsAKeyboardAndAMouseUntilItIsTerminated) {
    bed.plug(keyboard);
    bed.plug(mouse);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard (/dev/input/event5)")) << recorder.printed;
    ASSERT_TRUE(recorder.prints("listening to A mouse (/dev/input/event6)")) << recorder.printed;
    bed.send(keyboard, {{EV_KEY, KEY_LEFTCTRL, 1}});
    ASSERT_TRUE(recorder.prints("modifier — counted\n"));
    bed.tap(keyboard, KEY_S);
    ASSERT_TRUE(recorder.prints("key — counted\n"));
    bed.send(mouse, {{EV_REL, REL_WHEEL, -1}, {EV_REL, REL_WHEEL_HI_RES, -120}});
    bed.send(mouse, {{EV_REL, REL_X, 30}});
    bed.tap(mouse, BTN_RIGHT);
    ASSERT_TRUE(recorder.prints("right click — counted\n"));
    EXPECT_EQ(recorder.stop(), 0);
    const auto shown = WidgetSnapshot::decode(tapcore::readFile(share / "Tappora/widget.json").text);
    EXPECT_EQ(shown ? shown->today : -1, 2);
    const Tally tally = counted();
    EXPECT_EQ(tally.byKey(), (Tally::KeyCounts{{1, 1}, {59, 1}}));
    EXPECT_EQ(tally.byChord(), (Tally::ChordCounts{{{tapcore::Modifiers::control, 1}, 1}}));
    const Tally::MouseHour total = tally.mouseTotal();
    EXPECT_EQ(total.right, 1);
    EXPECT_EQ(total.scrolls, 1);
    EXPECT_GT(total.moved, 0) << "how far depends on libinput's acceleration";
}

TEST_F(Live, TakesDevicesAsTheyComeAndGo) {
    const MockDevice second{.number = 8, .name = "Second keyboard"};
    const MockDevice third{.number = 9, .name = "Third keyboard"};
    bed.plug(keyboard);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard (/dev/input/event5)")) << recorder.printed;
    bed.plug(second);
    ASSERT_TRUE(recorder.prints("listening to Second keyboard (/dev/input/event8)")) << recorder.printed;
    bed.send(second, {{EV_KEY, KEY_LEFTCTRL, 1}});
    ASSERT_TRUE(recorder.prints("modifier — counted\n"));
    bed.unplug(keyboard);
    bed.unplug(second);
    ASSERT_TRUE(recorder.prints("no keyboard is left; waiting for one")) << recorder.printed;
    bed.plug(third);
    ASSERT_TRUE(recorder.prints("listening to Third keyboard (/dev/input/event9)")) << recorder.printed;
    bed.tap(third, KEY_B);
    ASSERT_TRUE(recorder.prints("key — counted\n"));
    EXPECT_EQ(recorder.stop(SIGINT), 0);
    EXPECT_EQ(counted().byKey(), (Tally::KeyCounts{{11, 1}, {59, 1}}));
    EXPECT_TRUE(counted().byChord().empty()) << "what the keyboard held that is gone is released";
}

TEST_F(Live, TellsProgramsFromPeople) {
    const MockDevice tool{.number = 8, .name = "ydotoold virtual device", .isVirtual = true};
    const MockDevice remapper{.number = 9, .name = "keyd virtual keyboard", .isVirtual = true};
    bed.plug(keyboard);
    bed.plug(tool);
    bed.plug(remapper);
    Program recorder(watching());
    for (const MockDevice& device : {keyboard, tool, remapper})
        ASSERT_TRUE(recorder.prints("listening to " + device.name)) << recorder.printed;
    bed.tap(tool, KEY_A);
    ASSERT_TRUE(recorder.prints("key — posted by ydotoold virtual device — not counted\n"))
        << recorder.printed;
    bed.tap(remapper, KEY_A);
    ASSERT_TRUE(recorder.prints("key — counted\n")) << recorder.printed;
    tapcore::writeFile(share / "Tappora", "a file where the folder should be").requireSafe();
    recorder.signal(SIGHUP);
    EXPECT_TRUE(recorder.prints("tappora: the widgets stay as they are: " + share.string()))
        << recorder.printed;
    EXPECT_EQ(recorder.end(), 0);
    EXPECT_EQ(counted().total(), 1);
}

TEST_F(Live, KnowsWhatWasHeldBeforeItBeganAndSeesItReleased) {
    MockDevice holding = keyboard;
    holding.held = {KEY_LEFTCTRL, KEY_A};
    bed.plug(holding);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    bed.tap(keyboard, KEY_S);
    ASSERT_TRUE(recorder.prints("key — counted\n")) << recorder.printed;
    bed.change(keyboard);
    bed.tap(keyboard, KEY_S);
    ASSERT_TRUE(recorder.prints("key — counted\n")) << recorder.printed;
    EXPECT_EQ(recorder.stop(), 0);
    EXPECT_EQ(counted().byKey(), (Tally::KeyCounts{{1, 2}}));
    EXPECT_EQ(counted().byChord(), (Tally::ChordCounts{{{tapcore::Modifiers::control, 1}, 1}}));
}

TEST_F(Live, SaysThatTheKernelDroppedEvents) {
    bed.plug(keyboard);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    bed.send(keyboard, {{EV_KEY, KEY_A, 1}, {EV_SYN, SYN_DROPPED, 0}});
    bed.tap(keyboard, KEY_S);
    ASSERT_TRUE(recorder.prints("key — counted\n")) << recorder.printed;
    recorder.signal(SIGTERM);
    EXPECT_TRUE(recorder.prints("tappora: some presses were not seen: the machine was too busy\n"))
        << recorder.printed;
    EXPECT_EQ(recorder.end(), 0);
}

TEST_F(Live, WaitsForNobodyWhoReadsItsWatch) {
    const MockDevice tool{.number = 8, .name = "tool " + std::string(200, 'x'), .isVirtual = true};
    bed.plug(keyboard);
    bed.plug(tool);
    const Pipe watch(4096);
    Program recorder(watching(), watch.writer());
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    ASSERT_TRUE(recorder.prints("listening to tool")) << recorder.printed;
    const auto fill = [&] {
        do bed.tap(tool, KEY_A);
        while (watch.takesMore(recorder));
        bed.tap(tool, KEY_A);
        return recorder.prints("tappora: nobody reads the lines of --watch: they are dropped\n");
    };
    ASSERT_TRUE(fill()) << recorder.printed;
    watch.empty();
    bed.tap(keyboard, KEY_A);
    EXPECT_TRUE(recorder.prints("of --watch dropped\n")) << recorder.printed;
    ASSERT_TRUE(fill()) << recorder.printed;
    EXPECT_EQ(recorder.stop(), 0);
    EXPECT_EQ(counted().total(), 1);
}

TEST_F(Live, SaysWhyItsWatchCannotBeWritten) {
    bed.plug(keyboard);
    const tapcore::Descriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    Program recorder(watching(), full.get());
    ASSERT_TRUE(recorder.prints("counts go to")) << recorder.printed;
    bed.tap(keyboard, KEY_A);
    EXPECT_TRUE(
        recorder.prints("standard output: No space left on device; the lines of --watch are dropped\n"));
    EXPECT_EQ(recorder.stop(), 0);
    EXPECT_EQ(counted().total(), 1);
}

TEST_F(Live, CountsNoPracticeAndKnowsWhatIsHeldAfterIt) {
    bed.plug(keyboard);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    PracticeLock trainer(environmentWith({}), folder);  // the recorder may be a service with other variables
    trainer.hold();
    bed.send(keyboard, {{EV_KEY, KEY_LEFTCTRL, 1}});
    ASSERT_TRUE(recorder.prints("modifier — practice — not counted\n")) << recorder.printed;
    bed.tap(keyboard, KEY_A);
    ASSERT_TRUE(recorder.prints("key — practice — not counted\n")) << recorder.printed;
    trainer.release();
    bed.tap(keyboard, KEY_S);
    ASSERT_TRUE(recorder.prints("key — counted\n")) << recorder.printed;
    EXPECT_EQ(recorder.stop(), 0);
    EXPECT_EQ(counted().byKey(), (Tally::KeyCounts{{1, 1}}));
    EXPECT_EQ(counted().byChord(), (Tally::ChordCounts{{{tapcore::Modifiers::control, 1}, 1}}));
}

TEST_F(Live, EndsWithItsReaderAndStoresWhatItCounted) {
    bed.plug(keyboard);
    Program recorder(watching());
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    recorder.stopReading();
    bed.tap(keyboard, KEY_A);
    EXPECT_EQ(recorder.end(), 0);
    EXPECT_EQ(counted().total(), 1);
}

TEST_F(Live, GoesOnWhereDaysCannotBeAddedUp) {
    fs::create_directories(folder / "days");
    for (const std::string day : {"2026-09-20", "2026-09-21"})
        (void)tapcore::writeFile(folder / "days" / (day + ".org"),
                                 "* Keys\n| 9 | 0 | 9223372036854775000 |\n");
    bed.plug(keyboard);
    Program recorder({"--watch", "--folder", folder.string(), "--today", "2026-09-22"});
    ASSERT_TRUE(recorder.prints("listening to A keyboard")) << recorder.printed;
    bed.tap(keyboard, KEY_A);
    ASSERT_TRUE(recorder.prints("key — counted\n"));
    EXPECT_EQ(recorder.stop(), 0);
    EXPECT_TRUE(recorder.prints("months/2026-09.org: counts too large to be added up\n"));
    EXPECT_TRUE(recorder.prints("the widgets stay as they are: " + folder.string() +
                                ": counts too large to be added up\n"));
    EXPECT_EQ(tapcore::Store(folder, tapcore::FileFormat::org).days().size(), 3U);
}

TEST_F(Live, SaysThatItWaitsForAnotherProgramToStartAndEndsMeanwhile) {
    const std::string isBusy = "tappora: " + folder.string() + ": another program is writing in it";
    bed.plug(keyboard);
    std::optional other = tapcore::FileLock::acquireFolder(folder);
    Program ended(watching());
    ASSERT_TRUE(ended.prints(isBusy + "; waiting until it is done\n")) << ended.printed;
    EXPECT_EQ(ended.stop(), 1);
    EXPECT_TRUE(ended.prints(isBusy + "\n"));
    EXPECT_TRUE(fs::is_empty(folder));
    Program waiting(watching());
    ASSERT_TRUE(waiting.prints(isBusy + "; waiting until it is done\n"));
    other.reset();
    EXPECT_TRUE(waiting.prints("counts go to"));
    EXPECT_EQ(waiting.stop(), 0);
}

TEST_F(Live, RefusesToStartWithoutAKeyboardOrBesideAnother) {
    bed.plug(mouse);
    bed.plug(keyboard);
    bed.removeFile(keyboard);
    Program blind({"--watch", "--shared", "--folder", folder.string()});
    EXPECT_TRUE(blind.prints("listening to A mouse"));
    EXPECT_TRUE(blind.prints("A keyboard (/dev/input/event5): cannot be read: No such file or directory\n"));
    EXPECT_TRUE(blind.prints("tappora: input devices: there is no keyboard that can be read\n"));
    EXPECT_EQ(blind.end(), 1);
    EXPECT_TRUE(fs::is_empty(folder));
    EXPECT_FALSE(fs::exists(share));

    bed.plug({.number = 7, .name = "Keyboard 7"});
    Program first(watching());
    ASSERT_TRUE(first.prints("listening to Keyboard 7"));
    ::setenv("XDG_RUNTIME_DIR", "/tmp", 1);  // in another session
    Program second(watching());
    EXPECT_TRUE(second.prints("tappora: " + folder.string() + ": another recorder is counting into it\n"));
    EXPECT_EQ(second.end(), 1);
    EXPECT_EQ(first.stop(), 0);
}

}  // namespace
}  // namespace tappora
