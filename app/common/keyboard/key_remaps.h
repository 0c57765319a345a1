#pragma once

#include <string>
#include <string_view>

#include "app/common/folder/data_folder.h"
#include "core/counting/tally.h"
#include "core/keyboard/legend_set.h"

namespace tappora {

/// The setting that counts keys as others.
inline constexpr std::string_view remapsKey = "keys.remaps";

/// What such a text means: "caps lock=control, left option=left command". Keys have the names that
/// `keysNamed` knows; each key of the first name counts as the left one of the second. UsageError, which says
/// why, for another text.
tapcore::KeyRemap parseRemaps(std::string_view text, const tapcore::LegendSet& layout);

/// Such a text with codes alone, "key 57=key 59", which means the same on every layout and whatever keys are
/// called.
std::string remapsText(const tapcore::KeyRemap& remap);

/// The data folder as `openStore` gives it, whose figures count keys as the user wants them counted
/// ("keys.remaps"). A setting that cannot be used is warned of.
tapcore::Store openShown(const FolderOptions& options, const Environment& environment);

}  // namespace tappora
