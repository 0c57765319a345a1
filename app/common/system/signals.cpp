#include "app/common/system/signals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace tappora {
namespace {

// A signal handler can reach nothing but a variable like this.
volatile std::sig_atomic_t requested = 0;

void note(int) { requested = 1; }

/// Has a signal noted, unless it is ignored. What happened before.
struct sigaction noted(int signal, Interruption::Blocked blocked) {
    struct sigaction before {};
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = blocked == Interruption::Blocked::goesOn ? SA_RESTART : 0;
    ::sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) ::sigaction(signal, &action, nullptr);
    return before;
}

}  // namespace

SignalQueue::SignalQueue(std::initializer_list<int> signals) {
    sigset_t set{};
    sigemptyset(&set);
    for (const int signal : signals) sigaddset(&set, signal);
    file_ = tapcore::Descriptor(::signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC));
    if (!file_.isOpen()) throw std::system_error(errno, std::generic_category(), "signals");
    const int error = ::pthread_sigmask(SIG_BLOCK, &set, &before_);
    if (error != 0) throw std::system_error(error, std::generic_category(), "signals");
}

SignalQueue::~SignalQueue() {
    while (next()) {
    }
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

std::optional<int> SignalQueue::next() const {
    signalfd_siginfo info{};
    if (::read(file_.get(), &info, sizeof info) != sizeof info) return std::nullopt;
    return static_cast<int>(info.ssi_signo);
}

Interruption::Interruption(Blocked blocked) {
    requested = 0;
    onInterrupt_ = noted(SIGINT, blocked);
    onTermination_ = noted(SIGTERM, blocked);
}

Interruption::~Interruption() {
    ::sigaction(SIGINT, &onInterrupt_, nullptr);
    ::sigaction(SIGTERM, &onTermination_, nullptr);
}

bool Interruption::isRequested() { return requested != 0; }

}  // namespace tappora
