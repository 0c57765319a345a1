#pragma once

#include <cstdint>
#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "core/foundation/calendar.h"
#include "core/foundation/json_fields.h"

namespace tappora {

/// A time in which nothing is counted, as the user asked for it.
struct Pause {
    tapcore::Instant since;
    std::optional<tapcore::Instant> until{};  ///< none: until it is ended

    bool operator==(const Pause&) const = default;
};

/// The input devices of a recorder.
struct DeviceList {
    struct Device {
        std::string name;  ///< "A keyboard (/dev/input/event5)"
        bool isKeyboard = false;

        bool operator==(const Device&) const = default;
    };
    struct Unreadable {
        std::string name;
        std::string why;
        bool isForbidden = false;  ///< as `devicesNotice` has it

        bool operator==(const Unreadable&) const = default;
    };

    std::vector<Device> read;
    std::vector<Unreadable> unreadable;

    bool hasKeyboard() const;
    bool operator==(const DeviceList&) const = default;
};

/// What a live recorder says of itself.
struct RecorderStatus {
    struct Stored {
        tapcore::Instant at;
        std::int64_t presses = 0;
        std::int64_t clicks = 0;

        bool operator==(const Stored&) const = default;
    };
    struct Unstored {
        std::string why;
        std::string what{};  ///< "120 presses, 7 clicks of 2026-09-20"

        bool operator==(const Unstored&) const = default;
    };
    struct Dropped {
        std::int64_t times = 0;
        tapcore::Instant last;

        bool operator==(const Dropped&) const = default;
    };

    std::int64_t process = 0;
    std::filesystem::path folder{};  ///< the data folder that it counts into
    tapcore::Instant since{};        ///< when it began
    DeviceList devices{};
    std::optional<Stored> stored{};      ///< the last time; none before the first
    std::optional<Unstored> unstored{};  ///< what it keeps, since it could not be stored
    std::optional<Dropped> dropped{};    ///< how often presses were not seen, since the machine was too busy
    std::optional<Pause> pause{};
    std::string pauseProblem{};  ///< why a restart would end the pause, or why there is one; "" for nothing
    bool isLocked = false;       ///< the session is, and nothing counts
    std::string lockProblem{};   ///< why it does not know of locked sessions; "" when it does

    /// Whether a press would count now.
    bool isCounting() const { return !pause && !isLocked && devices.hasKeyboard(); }
    bool operator==(const RecorderStatus&) const = default;
};

// As JSON, with what is absent left out. Reading throws JsonError.

nlohmann::json toJson(const Pause& pause);
nlohmann::json toJson(const RecorderStatus& status);
Pause readPause(const tapcore::JsonValue& json);
RecorderStatus readStatus(const tapcore::JsonValue& json);

/// A moment in JSON: "2026-09-20T07:00:00Z". JsonError for another text.
tapcore::Instant readMoment(const tapcore::JsonValue& json);

}  // namespace tappora
