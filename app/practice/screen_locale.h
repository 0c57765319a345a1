#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/common/system/environment.h"

namespace tappora {

// Text as the C library, and so the full screen, takes it.

/// Has the C library take text for what the environment's locale says. Failure, saying what to set, when that
/// has not all of these letters.
void useLocale(const Environment& environment, const std::vector<std::string>& letters);

/// Whether the locale's character set is UTF-8.
bool takesUnicode();

std::wstring wideText(std::string_view text);

}  // namespace tappora
