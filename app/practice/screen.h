#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "app/common/system/environment.h"
#include "app/practice/frame.h"
#include "app/common/terminal/key_decoder.h"

namespace tappora {

/// Milliseconds of a clock that only runs forwards.
std::int64_t steadyMilliseconds();

/// The whole terminal. It is taken over while this object lives, and put back afterwards; there may be one
/// such object at a time. Signals that would end or stop the program become events. So do the terminal's
/// reports that its window lost the keyboard or has it again.
class Screen {
  public:
    /// Failure when standard input and output are no terminal, or one that cannot be written all over.
    explicit Screen(const Environment& environment);
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    ScreenShape shape() const;
    void show(const Frame& frame);

    /// Stops the program, as Ctrl-Z does, until it is continued. In between the terminal belongs to the
    /// shell.
    void suspend();

    /// The events that have come. Waits for the first at most so many milliseconds. Pasted text may come as
    /// many events at once.
    std::vector<ScreenEvent> events(std::int64_t milliseconds);

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace tappora
