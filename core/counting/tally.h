#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>

#include "core/counting/modifiers.h"
#include "core/foundation/flat_map.h"

namespace tapcore {

/// A macOS virtual key code: the position of a key, never a letter.
using KeyCode = std::uint16_t;

/// The space bar.
inline constexpr KeyCode spaceKey = 49;

/// One day's counts of one machine, in 24 slots by the hour of its local clock. It never holds text, order or
/// the time inside an hour. Counts are 64-bit; an addition that leaves them is fatal.
struct Tally {
    static constexpr std::size_t hours = 24;
    static constexpr bool isHour(std::int64_t hour) {
        return hour >= 0 && hour < static_cast<std::int64_t>(hours);
    }

    /// How many metres one screen point is.
    static constexpr double metresPerPoint = 0.000264;

    /// A key with the modifiers held at its press.
    struct Chord {
        Modifiers modifiers;
        KeyCode keyCode = 0;

        auto operator<=>(const Chord&) const = default;
    };

    /// What the mouse did in an hour.
    struct MouseHour {
        std::int64_t clicks = 0;   ///< of the primary button
        std::int64_t right = 0;    ///< clicks of the right button
        std::int64_t middle = 0;   ///< clicks of the middle or any other button
        std::int64_t scrolls = 0;  ///< scroll steps
        std::int64_t moved = 0;    ///< distance, in screen points

        bool isEmpty() const { return *this == MouseHour{}; }
        std::int64_t allClicks() const;
        MouseHour operator+(const MouseHour& other) const;
        bool operator==(const MouseHour&) const = default;
    };

    using KeyCounts = FlatMap<KeyCode, std::int64_t>;
    using ChordCounts = FlatMap<Chord, std::int64_t>;
    template <class Slot>
    using Hourly = std::array<Slot, hours>;

    Hourly<KeyCounts> keys;
    Hourly<ChordCounts> chords;      ///< each of these presses is in `keys` too
    Hourly<std::int64_t> unkeyed{};  ///< presses whose keys were forgotten
    Hourly<MouseHour> mouse;

    // Each of these does nothing for a count below 1, an empty mouse hour, or an hour outside 0 to 23.
    void add(KeyCode keyCode, std::int64_t hour, std::int64_t count);
    /// Does nothing either for a chord without ctrl, opt or cmd.
    void add(const Chord& chord, std::int64_t hour, std::int64_t count);
    void addUnkeyed(std::int64_t count, std::int64_t hour);
    void add(const MouseHour& value, std::int64_t hour);

    /// Adds another tally, hour by hour: how the machines of one day become one.
    void merge(const Tally& other);

    /// Forgets which keys were pressed, and keeps how many were: the hours' totals stay.
    void forgetKeys();
    /// Forgets the shortcuts; their presses stay counted among the keys.
    void forgetChords();

    /// Presses by hour. Chords are not added: they are among the keys.
    Hourly<std::int64_t> byHour() const;
    std::int64_t total() const;
    /// How many hours have a press.
    std::int64_t activeHours() const;
    KeyCounts byKey() const;
    ChordCounts byChord() const;
    MouseHour mouseTotal() const;
    Hourly<std::int64_t> clicksByHour() const;
    double movedMetres() const;
    bool isEmpty() const;

    bool operator==(const Tally&) const = default;
};

/// The figures of 24 mouse hours, wherever they come from.
Tally::MouseHour sumOf(const Tally::Hourly<Tally::MouseHour>& mouse);
Tally::Hourly<std::int64_t> clicksOf(const Tally::Hourly<Tally::MouseHour>& mouse);

/// Under which code the presses of a key are to be reported: the user's own key remapping. It is one step: a
/// key that is mapped to a mapped key goes no further, so that two keys can trade places.
using KeyRemap = std::map<KeyCode, KeyCode>;

/// The code that a key is reported under: its own when the map does not name it.
KeyCode remapped(KeyCode code, const KeyRemap& remap);

/// Counts under their new codes. Those that meet under one code add up; fatal when a sum leaves 64 bits.
Tally::KeyCounts remapped(const Tally::KeyCounts& counts, const KeyRemap& remap);
Tally::ChordCounts remapped(const Tally::ChordCounts& counts, const KeyRemap& remap);
Tally remapped(const Tally& tally, const KeyRemap& remap);

}  // namespace tapcore

template <>
struct std::hash<tapcore::Tally::Chord> {
    std::size_t operator()(const tapcore::Tally::Chord& chord) const noexcept {
        return std::size_t{chord.modifiers.rawValue} << 16 | chord.keyCode;
    }
};
