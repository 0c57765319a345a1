#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tappora {

struct Environment;

/// Reads a variable of the environment.
using ReadVariable = std::function<std::optional<std::string>(const std::string& name)>;

// The user's directories, by the rules for XDG base directories: a variable counts only when it holds an
// absolute path. The directories need not exist. Nothing is returned when neither the variable nor HOME says
// where the directory is.

std::optional<std::filesystem::path> homeDirectory(const ReadVariable& variable);
/// $XDG_CONFIG_HOME, else ~/.config.
std::optional<std::filesystem::path> configDirectory(const ReadVariable& variable);
/// $XDG_DATA_HOME, else ~/.local/share.
std::optional<std::filesystem::path> dataDirectory(const ReadVariable& variable);
/// $XDG_STATE_HOME, else ~/.local/state.
std::optional<std::filesystem::path> stateDirectory(const ReadVariable& variable);

/// One of them, or Failure: "HOME: not set to an absolute path" and what else to do or to set.
std::filesystem::path required(const std::optional<std::filesystem::path>& directory, std::string_view rest);

/// Where programs of one user meet while they run: $XDG_RUNTIME_DIR/tappora, else /run/user/UID/tappora, else
/// /tmp/tappora-UID, so that a process started outside the user's session meets those inside. It need not
/// exist.
std::filesystem::path runtimeDirectory(const Environment& environment);

/// Whether a directory is there, is no link, and belongs to a user.
bool isDirectoryOf(const std::filesystem::path& directory, unsigned user);

/// The runtime directory, made. Failure when it is not the user's own: one that another user made first could
/// take our locks, or lead them elsewhere.
std::filesystem::path madeRuntimeDirectory(const Environment& environment);

}  // namespace tappora
