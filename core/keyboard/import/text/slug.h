#pragma once

#include <string>
#include <string_view>

namespace tapcore {

/// A name as an id: its letters and digits (of ASCII) in small letters, all else as single dashes between
/// them. "" for a name without any.
std::string slug(std::string_view name);

}  // namespace tapcore
