#pragma once

#include <stop_token>

#include "core/foundation/descriptor.h"

namespace tappora {

/// Becomes readable when a stop is asked for.
class StopBell {
  public:
    explicit StopBell(const std::stop_token& stop);
    int descriptor() const { return file_.get(); }

  private:
    struct Ring {
        int file;
        void operator()() const;
    };

    tapcore::Descriptor file_;
    std::stop_callback<Ring> onStop_;
};

}  // namespace tappora
