#pragma once

namespace tappora {

/// While one lives, Ctrl-C and SIGTERM do not end the program but are noted. One at a time.
class Interruption {
  public:
    Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    static bool isRequested();
};

}  // namespace tappora
