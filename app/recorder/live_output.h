#pragma once

#include <unistd.h>

#include <csignal>
#include <string>
#include <string_view>

#include "app/common/system/signals.h"
#include "app/common/terminal/line_output.h"
#include "app/recorder/hand_over.h"

namespace tappora {

/// What a live recorder says, to readers that it does not wait for.
class LiveOutput {
  public:
    LiveOutput() = default;
    LiveOutput(const LiveOutput&) = delete;
    LiveOutput& operator=(const LiveOutput&) = delete;
    ~LiveOutput();

    void tell(std::string_view text);

    /// Shows lines of the event watch; false when nobody can read them any more.
    bool watch(const Lines& lines);

  private:
    std::string whyDropped() const;
    void tellDropped();

    SignalQueue broken_{SIGPIPE};  // also at the end, when the recorder holds back no signals any more
    LineOutput watched_{STDOUT_FILENO};
    LineOutput told_{STDERR_FILENO};
    bool isStalled_ = false;
};

}  // namespace tappora
