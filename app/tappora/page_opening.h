#pragma once

#include <filesystem>
#include <string>

#include "app/common/system/environment.h"

namespace tappora {

/// Failure when there is no desktop to open something on.
void requireDesktop(const Environment& environment);

/// Where a page is put that nobody named a file for: a private place that is emptied when the user leaves the
/// system. Makes it.
std::filesystem::path placeForPage(const std::string& name, const Environment& environment);

/// Opens a file with the program that the desktop has for it. Failure, naming the file, when it does not.
void openOnDesktop(const std::filesystem::path& file);

}  // namespace tappora
