#include "app/common/system/sha256.h"

#include <sha2.h>

#include <cstdint>

namespace tappora {

std::string sha256(std::string_view text) {
    char hex[SHA256_DIGEST_STRING_LENGTH];
    SHA256Data(reinterpret_cast<const std::uint8_t*>(text.data()), text.size(), hex);
    return hex;
}

}  // namespace tappora
