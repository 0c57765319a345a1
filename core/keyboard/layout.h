#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "core/counting/key_face.h"
#include "core/foundation/text_error.h"

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

    /// What happens when a file spells one key code in two ways ("7" and "07"). In a file that comes with the
    /// program that is a mistake of its makers and ends it; a user's file is refused with a JsonError.
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
class LayoutProblem : public TextError {
  public:
    using TextError::TextError;
};

}  // namespace tapcore
