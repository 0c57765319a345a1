#pragma once

#include <csignal>
#include <initializer_list>
#include <optional>

#include "core/foundation/descriptor.h"

namespace tappora {

/// Signals as something to read, and nothing else: they are held back from the process while this lives. Make
/// it before any thread, which takes over what is held back.
class SignalQueue {
  public:
    explicit SignalQueue(std::initializer_list<int> signals);
    SignalQueue(const SignalQueue&) = delete;
    SignalQueue& operator=(const SignalQueue&) = delete;
    ~SignalQueue();

    int descriptor() const { return file_.get(); }
    /// The next signal that came, or nothing.
    std::optional<int> next() const;

  private:
    sigset_t before_{};  ///< those held back before
    tapcore::Descriptor file_;
};

/// While one lives, Ctrl-C and SIGTERM do not end the program but are noted; one that the program was started
/// to ignore stays ignored. One at a time.
class Interruption {
  public:
    /// What a blocked system call, such as one that waits for input, does when such a signal comes.
    enum class Blocked { ends, goesOn };

    explicit Interruption(Blocked blocked);
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    static bool isRequested();

  private:
    struct sigaction onInterrupt_ {};  ///< what happened before
    struct sigaction onTermination_ {};
};

}  // namespace tappora
