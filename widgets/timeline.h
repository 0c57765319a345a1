#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/foundation/calendar.h"
#include "core/foundation/raw_values.h"
#include "core/widget/widget_snapshot.h"
#include "drawing/geometry.h"

namespace tapwidgets {

/// The sizes that a desktop has for widgets.
enum class Family : std::uint8_t { small, medium, large };

inline constexpr tapcore::RawValues<Family, 3> families{{"small", "medium", "large"}};

/// A family's size in points.
constexpr drawing::Size sizeOf(Family family) {
    switch (family) {
        case Family::small:
            return {170, 170};
        case Family::medium:
            return {364, 170};
        case Family::large:
            break;
    }
    return {364, 382};
}

/// What a widget shows from a moment on.
struct Entry {
    tapcore::Instant date;
    std::optional<tapcore::WidgetSnapshot> snapshot;  ///< without one, Waiting is shown

    bool operator==(const Entry&) const = default;
};

/// When the host is to ask for the next timeline: not before this moment, unless the file changes.
struct ReloadPolicy {
    tapcore::Instant after;

    bool operator==(const ReloadPolicy&) const = default;
};

/// What a widget shows from now on, until the next timeline.
struct Timeline {
    std::vector<Entry> entries;  ///< by date
    ReloadPolicy policy;

    bool operator==(const Timeline&) const = default;
};

}  // namespace tapwidgets
