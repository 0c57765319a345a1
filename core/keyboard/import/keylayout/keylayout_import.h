#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/keyboard/import/text/xml_text.h"
#include "core/keyboard/layout.h"

namespace tapcore {

/// What an imported layout is called and what it extends.
struct KeylayoutImportOptions {
    std::string file = {};                 ///< the file's name, without a folder
    std::optional<std::string> id = {};    ///< made from the name when none is given
    std::optional<std::string> name = {};  ///< the file's own when none is given
    std::string base = "qwerty";       ///< the layout whose legends stay on keys that the file does not name
    std::set<std::string> taken = {};  ///< ids that an id made from the name must not be, beside the base's
};

struct KeylayoutImport {
    Layout layout;
    std::vector<std::string>
        dropped;  ///< what is in the file and not in the layout, and why, one sentence each
    std::optional<std::string> takenID = {};  ///< the id that its name would make, were it not taken
};

/// Reads a macOS keyboard layout, a `.keylayout` file. A key's legends are what it types on its own, plain
/// and with shift; a dead key has its accent. Keys that type nothing to be seen, such as return, keep the
/// base's legends. Of several sets of key maps (for ANSI, ISO and JIS boards) the first counts, and the
/// others add the keys it lacks. Throws XmlError, with the place, for what is not such a file, and for one
/// that types no letter.
KeylayoutImport importKeylayout(std::string_view bytes, const KeylayoutImportOptions& options = {});

}  // namespace tapcore
