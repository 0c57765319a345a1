#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "core/foundation/descriptor.h"

namespace tappora {

/// Writes lines to a stream, and never waits for who reads it: a line that is not taken at once is dropped
/// and counted.
class LineOutput {
  public:
    /// `file` stays open as long as this lives. Its reader's end is an error of `write`, no signal, where
    /// SIGPIPE is held back.
    explicit LineOutput(int file);

    /// `line` comes without its end.
    void write(std::string_view line);
    /// Writes what is left of a line that was taken in part, as far as it is taken now.
    void goOn() { send(rest_); }
    /// Writes what is left for the last time: a line that is not taken whole by then is dropped.
    void end();
    void drop(std::int64_t lines) { dropped_ += lines; }

    /// How many lines were dropped since this was last asked.
    std::int64_t takeDropped();
    /// Whether lines are dropped at this moment.
    bool isStalled() const { return !rest_.empty() || wasRefused_; }
    /// Why the last line was not taken whole, where waiting for its reader does not help.
    const std::error_code& failure() const { return failure_; }
    /// Whether nobody can read it any more.
    bool isGone() const { return failure_ == std::errc::broken_pipe; }

  private:
    /// Writes as much as is taken now, and removes it from the text.
    void send(std::string& text);

    int file_;
    tapcore::Descriptor own_;  ///< the same stream, opened once more for writing without waiting
    std::string rest_;         ///< of a line that was taken in part
    std::int64_t dropped_ = 0;
    bool wasRefused_ = false;  ///< the last line
    std::error_code failure_;
};

}  // namespace tappora
