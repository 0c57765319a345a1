#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tappora {

struct SetupWorld;

// The files that `tappora setup` writes. Each begins with a line that says who wrote it: others are left
// alone.

inline constexpr std::string_view setupMark =
    "# Written by tappora setup; tappora setup --remove removes it.\n";
/// In the user's service, when the user was added to the group "input" for it.
inline constexpr std::string_view groupMark = "# The user was added to the group input for it.\n";

/// What one user's recorder needs besides the system service: the program and the folders.
std::string serviceFolders(const SetupWorld& world);

/// The recorder as a service of the user's own.
std::string userService(const SetupWorld& world, bool addsGroup);

/// What starts `tappora COMMAND` when the user logs in to a desktop.
std::string autostartEntry(const SetupWorld& world, std::string_view name, std::string_view command);

}  // namespace tappora
