#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/counting/tally.h"
#include "core/foundation/raw_values.h"
#include "core/keyboard/load.h"
#include "core/reports/report_period.h"

namespace tapcore {

/// Something that a report found worth saying, with the numbers that it rests on.
struct Finding {
    enum class Kind {
        volume,            ///< keystrokes, clearly more or fewer
        middleOfTyping,    ///< typing earlier or later in the day, hours from 4 in the morning
        dayLength,         ///< hours from the first press of a day to its last
        weekend,           ///< share of keystrokes on Saturday and Sunday
        shortcutAppeared,  ///< presses of a shortcut that was not used before
        shortcutGrew,      ///< presses of a shortcut in 10,000 keystrokes
        shortcutDropped,   ///< presses of a shortcut that was used before
        key,               ///< share of a key in the presses
        finger,            ///< share of a finger in the presses of the board's keys
        correction,        ///< share of delete and forward delete in the presses
        keyboardShare,     ///< share of presses in presses and clicks
        record,            ///< the most keystrokes of a day, among all days looked at
        busiestHour,       ///< share of the hour with the most presses
    };
    static constexpr RawValues<Kind, 13> kinds{
        {"volume", "middle-of-typing", "day-length", "weekend", "shortcut-appeared", "shortcut-grew",
         "shortcut-dropped", "key", "finger", "correction", "keyboard-share", "record", "busiest-hour"}};

    Kind kind = Kind::volume;
    double value = 0;                        ///< in this period, in the unit that the kind names
    double usual = 0;                        ///< the median of the earlier stretches
    double farness = 0;                      ///< how far the value is from the usual (core/reports/usual.h)
    std::vector<Stretch> stretches;          ///< the days it comes from: the period's, then the earlier ones
    std::optional<KeyCode> key = {};         ///< which one, of `key`
    std::optional<Tally::Chord> chord = {};  ///< which one, of the kinds about shortcuts
    std::optional<Load::Striker> finger = {};  ///< which one, of `finger`
    std::optional<Day> day = {};               ///< which one, of `record`
    std::optional<std::int64_t> hour = {};     ///< which one, of `busiestHour`

    /// Whether it says that something is not as usual; the others are facts of the period alone.
    bool isChange() const { return kind != Kind::record && kind != Kind::busiestHour; }

    bool operator==(const Finding&) const = default;
};

}  // namespace tapcore
