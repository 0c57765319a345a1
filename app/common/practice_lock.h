#pragma once

#include "app/common/program.h"
#include "core/foundation/descriptor.h"

namespace tappora {

/// By what a trainer tells the recorders of its user that the keys struck now are practice: a lock on the
/// file "practice.lock" in the runtime directory. Several trainers may hold it at once. A process that ends,
/// however it does, gives it back.
class PracticeLock {
  public:
    /// Not held yet. Makes the file (mode 0600), which is never removed. filesystem_error with the path when
    /// it cannot be made or opened; Failure when the runtime directory is not the user's own.
    explicit PracticeLock(const Environment& environment);

    void hold();
    void release();

  private:
    tapcore::Descriptor file_;
};

/// Whether a trainer of this user holds the lock. Takes no lock itself, so that those who ask do not take
/// each other for trainers; a runtime directory that is not the user's own holds none.
bool isPractising(const Environment& environment);

}  // namespace tappora
