#pragma once

#include <cstdint>
#include <optional>

#include "core/keyboard/import/text/xml_document.h"

namespace tapcore {

/// The key maps that a `.keylayout` file's modifier map chooses, by index.
struct ChosenKeyMaps {
    std::optional<std::int64_t> plain;    ///< with no modifier held; nothing when not even a default is named
    std::optional<std::int64_t> shifted;  ///< with the left shift, else the right one, else both
};

/// `modifierMap` is the element of that name. Throws XmlError for what is not one.
ChosenKeyMaps chosenKeyMaps(const XmlElement& modifierMap);

}  // namespace tapcore
