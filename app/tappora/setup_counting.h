#pragma once

#include <string>

#include "app/common/system/environment.h"

namespace tappora {

struct SetupWorld;

/// What to say of a step once it is done, and whether it does already what it is for.
struct Afterwards {
    std::string text;
    bool works = true;
};

/// A service of systemd, of the machine or of the user's session.
struct Service {
    std::string name;
    bool isUsers = false;
};

/// Waits for the recorder of a service that was just started to say whether it counts: for seconds at most,
/// and no longer than the service is active.
Afterwards awaitCounting(const Service& service, const SetupWorld& world, const Environment& environment);

}  // namespace tappora
