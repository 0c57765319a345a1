#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "app/common/system/environment.h"
#include "app/practice/frame.h"
#include "app/practice/key_decoder.h"

namespace tappora {

/// Milliseconds of a clock that only runs forwards.
std::int64_t steadyMilliseconds();

/// The whole terminal, for as long as this lives; afterwards it is as it was. One at a time. The signals that
/// end or stop programs come as events, and so does what the terminal tells of its window's focus.
class Screen {
  public:
    /// Failure when standard input and output are no terminal, or one that cannot be written all over.
    explicit Screen(const Environment& environment);
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    ScreenShape shape() const;
    void show(const Frame& frame);

    /// Stops the program, as Ctrl-Z does, until it is continued. The terminal is the shell's meanwhile.
    void suspend();

    /// What has come; waits at most so many milliseconds for something. A paste may come as one.
    std::vector<ScreenEvent> events(std::int64_t milliseconds);

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace tappora
