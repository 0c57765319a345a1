#pragma once

#include <functional>
#include <string>

#include "app/common/folder/write_told.h"

namespace tappora {

/// Something that is tried again and again. Why it fails is told once, until it fails in another way or has
/// succeeded in between.
class Attempt {
  public:
    /// What is told begins with `what`.
    explicit Attempt(Tell tell, std::string what = "");

    /// False when `act` threw.
    bool run(const std::function<void()>& act);

  private:
    Tell tell_;
    std::string what_;
    std::string problem_;
};

}  // namespace tappora
