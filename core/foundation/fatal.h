#pragma once

#include <string_view>

namespace tapcore {

/// Ends the program for a fault that no caller can repair: a count past 64 bits, a broken promise of the code.
/// Prints "fatal: MESSAGE", followed by what was under way, innermost first, and aborts.
[[noreturn]] void fatal(std::string_view message);

/// Says, for as long as it lives, what the program is working on, so that `fatal` can name it: the file being
/// added, say. Costs two pointer writes. `what` and `subject` must outlive it. One chain for each thread.
class FatalContext {
  public:
    FatalContext(std::string_view what, std::string_view subject);
    ~FatalContext();
    FatalContext(const FatalContext&) = delete;
    FatalContext& operator=(const FatalContext&) = delete;

  private:
    friend void fatal(std::string_view message);
    std::string_view what_;
    std::string_view subject_;
    const FatalContext* outer_;
};

}  // namespace tapcore
