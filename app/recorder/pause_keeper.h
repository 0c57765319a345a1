#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "app/common/folder/tell.h"
#include "app/recorder/pause_switch.h"

namespace tappora {

/// The files that a pause is written to.
struct PauseFiles {
    std::optional<std::filesystem::path> kept{};   ///< for the recorder's next start
    std::optional<std::filesystem::path> shown{};  ///< for the widgets
};

/// Follows the pause: keeps it over a restart, ends it at its time, and tells of it. Belongs to the thread
/// that stores.
class PauseKeeper {
  public:
    /// `describe` puts a moment in words.
    PauseKeeper(PauseSwitch& pauses, PauseFiles files,
                std::function<std::string(tapcore::Instant moment)> describe, Tell tell);

    /// Takes up the pause that was kept.
    void restore(tapcore::Instant now);
    /// Ends a pause whose time has come, and stores and tells what has changed.
    void follow(tapcore::Instant now);
    /// Why a restart would end the pause, or why there is one; "" for nothing.
    const std::string& problem() const { return problem_; }

  private:
    void write();
    void keep();
    std::string inWords(const PauseSwitch::State& state) const;

    PauseSwitch& pauses_;
    PauseFiles files_;
    std::function<std::string(tapcore::Instant moment)> describe_;
    Tell tell_;
    PauseSwitch::State followed_;
    std::optional<Pause> written_;
    Attempt showing_;
    std::string problem_;
};

}  // namespace tappora
