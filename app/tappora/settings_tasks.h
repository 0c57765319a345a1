#pragma once

#include <optional>
#include <string>

#include "app/common/folder/data_folder.h"

namespace tappora {

struct Environment;

// What `tappora settings` does.

/// UsageError for a key that nothing reads.
void requireSetting(const std::string& key);

void listSettings(const FolderOptions& folder, const Environment& environment, bool json);
void showSetting(const std::string& key, const FolderOptions& folder, const Environment& environment,
                 bool json);

/// UsageError for a key that nothing reads and for a value that the setting does not accept; nothing is
/// changed then.
void setSetting(const std::string& key, const std::string& value, const FolderOptions& folder,
                const Environment& environment);
/// Also of a key that nothing reads, when it is stored.
void unsetSetting(const std::string& key, const FolderOptions& folder, const Environment& environment);

/// Forgets what was set of a group, or all that was set on this machine but its id; asks first.
void resetSettings(const std::optional<std::string>& group, bool yes, const FolderOptions& folder,
                   const Environment& environment);

/// Has the user's editor open the file, and says what in it cannot be used; Failure when something cannot.
void editSettings(const Environment& environment);

}  // namespace tappora
