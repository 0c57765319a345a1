#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/tally.h"
#include "core/foundation/raw_values.h"

namespace tapcore {

class JsonValue;

/// One physical keyboard: where each key sits, how large and how turned it is, what it sends and what strikes
/// it. Coordinates are in key units, the pitch of one standard key; the origin is the top left corner, y
/// grows downwards. Angles are in degrees, clockwise on screen.
struct Board {
    enum class Geometry { exact, approximate };
    enum class Hand { left, right };
    enum class Finger { pinky, ring, middle, index, thumb };
    enum class Row { function, number, upper, home, lower, bottom, thumb };

    static constexpr RawValues<Geometry, 2> geometries{{"exact", "approximate"}};
    static constexpr RawValues<Hand, 2> hands{{"left", "right"}};
    static constexpr RawValues<Finger, 5> fingers{{"pinky", "ring", "middle", "index", "thumb"}};
    static constexpr RawValues<Row, 7> rows{
        {"function", "number", "upper", "home", "lower", "bottom", "thumb"}};

    /// The length of one key unit.
    static constexpr double metresPerUnit = 0.01905;

    struct Point {
        double x = 0;
        double y = 0;

        bool operator==(const Point&) const = default;
    };

    struct Rect {
        double x = 0;
        double y = 0;
        double w = 0;
        double h = 0;

        static Rect decode(const JsonValue& json);
        nlohmann::json encoded() const;
        bool operator==(const Rect&) const = default;
    };

    struct Key {
        std::string id;                       ///< unique within the board
        std::optional<KeyCode> keyCode = {};  ///< absent for a key that sends nothing to count
        double x = 0;                         ///< left edge
        double y = 0;                         ///< top edge
        double w = 1;
        double h = 1;
        double r = 0;                   ///< turned so far about (rx, ry)
        std::optional<double> rx = {};  ///< without both, the key counts as unturned
        std::optional<double> ry = {};
        /// Makes an L-shaped or stepped key together with the first rectangle, and turns with it.
        std::optional<Rect> second = {};
        Hand hand = Hand::left;
        Finger finger = Finger::pinky;
        Row row = Row::function;
        bool home = false;  ///< a finger rests here

        /// The first rectangle, before turning.
        Rect rect() const { return {x, y, w, h}; }
        bool isTurned() const { return r != 0 && rx && ry; }
        /// A point of this key's rectangles, where turning takes it.
        Point turned(Point point) const;
        /// The middle of the first rectangle, turned.
        Point center() const;

        static Key decode(const JsonValue& json);
        nlohmann::json encoded() const;
        bool operator==(const Key&) const = default;
    };

    std::string id;  ///< stable: in settings and file names
    std::string name = {};
    std::string maker = {};
    Geometry geometry =
        Geometry::approximate;               ///< whether the positions are exact, as the board itself states
    std::optional<std::string> source = {};  ///< where the measurements come from
    std::optional<std::string> notes = {};
    std::vector<Key> keys = {};  ///< in drawing order

    /// The board of a JSON document, whose members are the fields by name. Throws JsonError saying where it
    /// is not one.
    static Board parse(std::string_view text);
    static Board decode(const JsonValue& json);
    nlohmann::json encoded() const;
    /// As its file holds it, a key to a line. Numbers must be finite.
    std::string text() const;

    /// What is wrong with the board, for people to read; nothing when it is sound.
    std::vector<std::string> problems() const;

    /// The first key that sends a code, or null. Owned by the board.
    const Key* key(KeyCode code) const;
    /// Every code that some key sends.
    std::set<KeyCode> keyCodes() const;
    /// The smallest upright rectangle around all keys, turned as they are; (0, 0, 0, 0) for a board without
    /// keys.
    Rect bounds() const;

    bool operator==(const Board&) const = default;
};

}  // namespace tapcore
