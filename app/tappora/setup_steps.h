#pragma once

#include <span>
#include <string>
#include <string_view>

#include "app/tappora/setup_changes.h"
#include "app/tappora/setup_counting.h"

namespace tappora {

struct SetupWorld;

/// One thing that can be set up.
struct SetupStep {
    std::string_view name;   ///< "user-service"
    std::string_view title;  ///< "Count keys with a service of your own"
    bool isUsual;            ///< whether --yes alone means it
    /// What it allows, and to whom.
    std::string (*grants)(const SetupWorld&);
    /// What is yet to be done; nothing when it is set up already.
    Changes (*toSetUp)(const SetupWorld&);
    /// What removes it; nothing when it is not set up.
    Changes (*toRemove)(const SetupWorld&);
    /// Failure when it cannot be done here.
    void (*require)(const SetupWorld&);
    /// Looks whether it works, once it is done.
    Afterwards (*afterwards)(const SetupWorld&, const Environment&);
};

/// All, in the order in which they are offered.
std::span<const SetupStep> setupSteps();

}  // namespace tappora
