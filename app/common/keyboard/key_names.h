#pragma once

#include <set>
#include <string>
#include <string_view>

#include "core/counting/tally.h"
#include "core/keyboard/legend_set.h"

namespace tappora {

/// The codes of the keys of a name: the user's own word for them, or what they print unshifted ("space",
/// "a"), whatever its case, with "left " or "right " before it of one of two; else a code, "49" or "key 49".
/// None for a name that no key has.
std::set<tapcore::KeyCode> keysNamed(std::string_view name, const tapcore::LegendSet& layout);

}  // namespace tappora
