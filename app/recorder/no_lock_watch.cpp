#include "app/recorder/lock_watch.h"

namespace tappora {

LockWatch::LockWatch(PauseSwitch& pauses) : pauses_(pauses) {
    pauses_.setLockProblem("this build has no libsystemd, which tells whether the session is locked");
}

LockWatch::~LockWatch() { pauses_.setLockProblem(""); }

}  // namespace tappora
