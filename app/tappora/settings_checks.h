#pragma once

#include <string>

#include "app/common/folder/data_folder.h"
#include "app/common/system/environment.h"

namespace tappora {

/// The text of a value as it is to be stored: keys to remap by their codes, all else as it was written.
/// Refuses what the declaration of a setting cannot know to be wrong: the name of a thing that is not there,
/// a key that is not on the layout in force, a label that no key has room for. The value is one that the
/// setting accepts. UsageError, which names the setting.
std::string usableText(const std::string& key, const std::string& value, const FolderOptions& folder,
                       const Environment& environment);

}  // namespace tappora
