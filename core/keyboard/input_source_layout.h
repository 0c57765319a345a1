#pragma once

#include <optional>
#include <string_view>

namespace tapcore {

/// Finds the layout of the keyboard that the system is set to.
namespace InputSourceLayout {

/// The id of the layout for a macOS input source ("com.apple.keylayout.US" is "qwerty"), or nothing. Capitals
/// do not matter. Whether the catalog has that layout is for the caller to see.
std::optional<std::string_view> layoutID(std::string_view inputSource);

}  // namespace InputSourceLayout

}  // namespace tapcore
