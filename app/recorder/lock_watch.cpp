#include "app/recorder/lock_watch.h"

#include <poll.h>

#include <array>
#include <chrono>
#include <csignal>
#include <exception>
#include <future>
#include <utility>

#include "app/recorder/logind.h"
#include "app/recorder/stop_bell.h"

namespace tappora {
namespace {

constexpr std::chrono::seconds mostToKnow{5};
constexpr std::chrono::seconds untilNextTry{10};

/// Waits until the bell rings or a file is readable (none below 0), for so long at most.
void waitFor(int bell, int file, std::chrono::milliseconds most) {
    std::array<pollfd, 2> waiting{pollfd{bell, POLLIN, 0}, pollfd{file, POLLIN, 0}};
    ::poll(waiting.data(), waiting.size(), static_cast<int>(most.count()));
}

/// Holds back all signals, also from threads that are started while it lives: they are for the recorder's
/// own.
class NoSignals {
  public:
    NoSignals() {
        sigset_t all{};
        sigfillset(&all);
        ::pthread_sigmask(SIG_BLOCK, &all, &before_);
    }
    NoSignals(const NoSignals&) = delete;
    NoSignals& operator=(const NoSignals&) = delete;
    ~NoSignals() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

  private:
    sigset_t before_{};
};

/// What goes on the thread: listens, and when that ends tries again.
class Listening {
  public:
    Listening(PauseSwitch& pauses, std::promise<void> known, const std::stop_token& stop)
        : pauses_(pauses), known_(std::move(known)), stop_(stop), bell_(stop) {}

    void run() {
        while (!stop_.stop_requested()) {
            try {
                listen();
            } catch (const std::exception& error) {
                pauses_.setLockProblem(error.what());
                noteKnown();
                waitFor(bell_.descriptor(), -1, untilNextTry);
            }
        }
    }

  private:
    void listen() {
        Logind logind;
        while (!stop_.stop_requested()) {
            if (logind.hasChanged()) {
                pauses_.setLocked(logind.isLocked());
                pauses_.setLockProblem("");
                noteKnown();
            }
            waitFor(bell_.descriptor(), logind.descriptor(), logind.timeLeft());
        }
    }

    void noteKnown() {
        if (std::exchange(isKnown_, true)) return;
        known_.set_value();
    }

    PauseSwitch& pauses_;
    std::promise<void> known_;
    bool isKnown_ = false;
    std::stop_token stop_;
    StopBell bell_;
};

}  // namespace

LockWatch::LockWatch(PauseSwitch& pauses) : pauses_(pauses) {
    std::promise<void> promise;
    const std::future<void> known = promise.get_future();
    const NoSignals held;
    listening_ = std::jthread([&pauses, promise = std::move(promise)](const std::stop_token& stop) mutable {
        Listening(pauses, std::move(promise), stop).run();
    });
    known.wait_for(mostToKnow);
}

LockWatch::~LockWatch() {
    listening_ = {};  // asks it to stop, and waits for that
    pauses_.setLocked(false);
    pauses_.setLockProblem("");
}

}  // namespace tappora
