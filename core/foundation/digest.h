#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace tapcore {

/// FNV-1a, 64 bits (http://www.isthe.com/chongo/tech/comp/fnv/): tells texts apart, where nobody forges them.
constexpr std::uint64_t fnv1a(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    return hash;
}

/// The FNV-1a digest of a text as 16 hexadecimal digits.
inline std::string hexDigest(std::string_view text) {
    char hex[17];
    std::snprintf(hex, sizeof hex, "%016llx", static_cast<unsigned long long>(fnv1a(text)));
    return hex;
}

}  // namespace tapcore
