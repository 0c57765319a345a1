#include "core/foundation/text_error.h"

namespace tapcore {

std::string withVisibleNuls(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\0') result += "\u2400";
        else result += c;
    }
    return result;
}

}  // namespace tapcore
