#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/common/system/environment.h"

namespace tappora {

// The programs that the tray starts and ends. Starting one does not wait for its end.

/// The command line of a terminal that runs another one behind it: the one that TERMINAL names, or one that
/// is installed. Empty when there is none.
std::vector<std::string> terminalOf(const Environment& environment);

/// Whether pages can be opened in a browser.
bool opensPages();

/// The program that people start: beside this one, or on PATH.
std::string tapporaOf(const Environment& environment);

/// Failure when it cannot be started.
void start(const std::vector<std::string>& commandLine);

/// Whether this user's widgets are on the desktop.
bool areWidgetsShown(const std::filesystem::path& widgets);
void hideWidgets(const std::filesystem::path& widgets);

}  // namespace tappora
