#pragma once

#include <string>
#include <string_view>

namespace tapcore {

/// A name as an id: its letters and digits (of ASCII) in small letters, all else as single dashes between
/// them. Letters with accents lose them: "Bépo" is "bepo". "" for a name without any.
std::string slug(std::string_view name);

/// The slug of a name, or of a file's name without its ending when the name has no letter of ASCII; "" for a
/// file without any either.
std::string slugOf(std::string_view name, std::string_view file);

}  // namespace tapcore
