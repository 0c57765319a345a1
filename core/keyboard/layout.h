#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "core/counting/legends.h"
#include "core/foundation/characters.h"

namespace tapcore {

class JsonValue;

/// What is printed on the keys, by key code, whatever the board. A layout may extend another one and name
/// only the codes it changes.
struct Layout {
    std::string id;  ///< stable: in settings, day files and file names
    std::string name = {};
    std::optional<std::string> base = {};  ///< the id of the layout that this one extends
    std::optional<std::string> notes = {};
    Legends legends = {};  ///< its own alone; with those of its bases, ask the catalog

    /// What two spellings of one key code ("7" and "07") are: of a file that comes with the program a broken
    /// promise, which ends it; of a user's file a fault like any other.
    enum class Repeats { fatal, refused };

    /// The layout of a JSON document, whose members are the fields by name, and those of "legends" the key
    /// codes in decimal. Throws JsonError saying where it is not one.
    static Layout parse(std::string_view text, Repeats repeats = Repeats::fatal);
    static Layout decode(const JsonValue& json, Repeats repeats = Repeats::fatal);
    nlohmann::json encoded() const;
    /// As its file holds it, a key code to a line.
    std::string text() const;

    bool operator==(const Layout&) const = default;
};

/// A layout that cannot be kept as the user's own. `what()` says why.
class LayoutProblem : public std::runtime_error {
  public:
    explicit LayoutProblem(std::string_view why) : std::runtime_error(withVisibleNuls(why)) {}
};

}  // namespace tapcore
