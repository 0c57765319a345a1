#pragma once

#include <functional>
#include <string>

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/foundation/written.h"

namespace tappora {

// How programs tell of what goes wrong while they go on.

/// Warns of what was written and is not yet safe from a power cut: "PATH: WHY; the new text is written, but a
/// power cut may undo it". Says nothing of what is safe.
void complainOf(const tapcore::Written& written, const Tell& tell = complain);

/// Warns of the first such write alone: where one is not safe, the next ones are not either.
tapcore::WriteTold complainOnce(const Tell& tell = complain);

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
