#include "app/tappora/widget_watch.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <system_error>

#include "app/common/folder/folder_watch.h"
#include "app/common/folder/settings.h"
#include "app/common/folder/tell.h"
#include "app/common/folder/waiting_place.h"
#include "app/common/program.h"
#include "app/common/system/alarm.h"
#include "app/common/system/environment.h"
#include "app/common/system/signals.h"
#include "app/common/terminal/line_output.h"
#include "app/common/widget/shown_pause.h"
#include "app/common/widget/widget_file.h"
#include "core/files/folder_names.h"
#include "core/files/store.h"

namespace tappora {
namespace {

/// What comes of one change often comes as several, one after the other.
constexpr std::chrono::milliseconds pause{100};

/// Everything that a snapshot is made of is in these.
void watchAll(FolderWatch& folders, const FolderOptions& options, const Environment& environment) {
    const auto root = chooseFolder(options, environment).root;
    folders.add(root);
    for (const tapcore::Store& part : tapcore::Store(root, {}).readParts())
        folders.add(part.base() / tapcore::daysFolder);
    if (const auto waiting = waitingPlace(environment, root)) folders.add(*waiting);
    folders.add(Settings::url(environment).parent_path());
    folders.add(shownPauseFile(environment).parent_path());
}

tapcore::Instant nextHour(tapcore::Instant now, const tapcore::Calendar& calendar) {
    tapcore::LocalTime time = calendar.local(now);
    time = {time.year, time.month, time.day, time.hour + 1, 0, 0};
    const auto next = calendar.moment(time);
    // Where clocks are set back, the hour that comes twice begins before now.
    return next > now ? next : now + std::chrono::hours(1);
}

/// What is to be waited for.
struct WakeUps {
    SignalQueue signals{SIGINT, SIGTERM, SIGHUP, SIGPIPE};
    FolderWatch folders;
    Alarm hour;

    /// Waits until there may be something new, or, with `output`, until standard output takes more; false
    /// when it is time to end.
    bool wait(bool output) {
        const short toWrite = output ? POLLOUT : 0;
        do {
            pollfd waiting[] = {{folders.descriptor(), POLLIN, 0},
                                {hour.descriptor(), POLLIN, 0},
                                {signals.descriptor(), POLLIN, 0},
                                {STDOUT_FILENO, toWrite, 0}};
            if (::poll(waiting, std::size(waiting), -1) < 0 && errno != EINTR)
                throw std::system_error(errno, std::generic_category(), "waiting");
            const bool isUnread = (waiting[3].revents & (POLLERR | POLLHUP)) != 0;
            if (isUnread || signals.next()) return false;
            if (waiting[1].revents != 0 || (waiting[3].revents & POLLOUT) != 0) return true;
        } while (!folders.takeNote());
        ::poll(nullptr, 0, static_cast<int>(pause.count()));
        folders.takeNote();
        return true;
    }
};

/// Prints what is new since the last time, and waits for no reader: one that does not read finds what is
/// current when it goes on.
class Printer {
  public:
    explicit Printer(FolderWatch& folders) : folders_(folders) {}
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;
    ~Printer() {
        output_.end();
        told_.end();
    }

    /// Whether there is something to be printed that its reader did not take.
    bool isStalled() const { return output_.isStalled() && !output_.failure(); }

    void printFirst(const FolderOptions& options, const Environment& environment) {
        read(options, environment);
        printCurrent();
    }

    /// The same later on: tells of a failure once, and goes on.
    void printNext(const FolderOptions& options, const Environment& environment) {
        reading_.run([&] { read(options, environment); });
        printing_.run([&] { printCurrent(); });
    }

  private:
    void read(const FolderOptions& options, const Environment& environment) {
        watchAll(folders_, options, environment);
        tapcore::FileProblems problems;
        current_ = widgetLine(widgetSnapshot(options, environment, &problems), environment);
        complainOfNew(problems);
    }

    void printCurrent() {
        output_.goOn();
        if (current_ == printed_) return;
        output_.write(current_);
        if (output_.takeDropped() == 0) printed_ = current_;
        else if (output_.failure() && !output_.isGone())
            throw Failure("standard output", output_.failure().message());
    }

    void complainOfNew(const tapcore::FileProblems& problems) {
        if (problems != problems_) complainOf(problems, tell_);
        problems_ = problems;
    }

    FolderWatch& folders_;
    LineOutput output_{STDOUT_FILENO};
    LineOutput told_{STDERR_FILENO};
    std::string current_, printed_;
    const Tell tell_ = [this](const std::string& text) { told_.write(complaint(text)); };
    Attempt reading_{tell_}, printing_{tell_};
    tapcore::FileProblems problems_;
};

}  // namespace

void watchSnapshot(const FolderOptions& options, const Environment& environment) {
    WakeUps wakeUps;
    Printer printer(wakeUps.folders);
    printer.printFirst(options, environment);
    while (true) {
        const Environment current = atThisMoment(environment);
        const tapcore::Calendar& calendar = current.calendar;
        if (wakeUps.hour.set(nextHour(current.now, calendar)) && !wakeUps.wait(printer.isStalled())) break;
        printer.printNext(options, atThisMoment(environment));
    }
}

}  // namespace tappora
