#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "core/counting/day.h"
#include "core/counting/modifiers.h"
#include "core/counting/tally.h"
#include "core/files/day_file.h"
#include "core/foundation/raw_values.h"

namespace tapcore {

/// One count of a day file as a row by itself: tidy data, as tools for statistics want it.
struct CountRow {
    enum class Kind {
        key,      ///< presses of a key in an hour
        chord,    ///< presses of a key with modifiers held: they are among those of the key, too
        unkeyed,  ///< presses in an hour whose keys were forgotten
        click,    ///< clicks of the primary button in an hour; then of the right one, and of all others
        right,
        middle,
        scroll,  ///< scroll steps in an hour
        moved,   ///< points that the pointer moved in an hour
        peak,    ///< presses in the day's busiest minute
        paused,  ///< minutes of the day in which counting was paused
    };
    static constexpr RawValues<Kind, 10> kinds{
        {"key", "chord", "unkeyed", "click", "right", "middle", "scroll", "moved", "peak", "paused"}};

    Kind kind = Kind::key;
    std::optional<std::int64_t> hour;  ///< 0 to 23; nothing for a figure of the day
    std::optional<KeyCode> keyCode;    ///< of `key` and `chord`
    Modifiers modifiers;               ///< of `chord`
    std::int64_t count = 0;

    bool operator==(const CountRow&) const = default;
};

/// Calls `visit` for each count of a day file above 0: by kind, then by hour, then by key.
void forEachRow(const DayFile& file, const std::function<void(const CountRow&)>& visit);

}  // namespace tapcore
