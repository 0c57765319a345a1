#pragma once

#include <string>
#include <string_view>

namespace tappora {

/// The SHA-256 digest of a text as 64 hexadecimal digits.
std::string sha256(std::string_view text);

}  // namespace tappora
