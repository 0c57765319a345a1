#pragma once

#include <cstddef>
#include <string>

#include "app/common/system/signals.h"
#include "core/foundation/progress.h"

namespace tappora {

/// Work that may take long: while this lives, it is shown on standard error how far it has come, when that is
/// a terminal, and Ctrl-C or SIGTERM stop it between two steps instead of ending the program. One at a time.
class LongWork {
  public:
    /// `what` is what the line says: "converting".
    explicit LongWork(std::string what);
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;
    ~LongWork();

    /// To hand to what does the work; false once it is to stop.
    tapcore::Progress progress();

    /// To be called once the work is over, before anything is printed: it takes the line away. Throws Failure
    /// when the work did not come to its end; `stopped` says what that means.
    void requireDone(bool done, const std::string& stopped = canGoOn);

    static constexpr const char* canGoOn =
        "stopped; what is done stays done, and running it again does the rest";

  private:
    void show(std::size_t done, std::size_t total);
    void takeLineAway();

    Interruption interruption_{Interruption::Blocked::goesOn};
    std::string what_;
    bool onTerminal_;
    std::size_t shown_ = 0;  ///< the last whole per cent shown, from 1
};

}  // namespace tappora
