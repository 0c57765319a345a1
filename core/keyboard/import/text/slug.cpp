#include "core/keyboard/import/text/slug.h"

#include "core/foundation/characters.h"

namespace tapcore {

std::string slug(std::string_view name) {
    std::string result;
    for (const char c : lowercased(name)) {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if (isPlain) result += c;
        else if (!result.empty() && result.back() != '-') result += '-';
    }
    if (result.ends_with('-')) result.pop_back();
    return result;
}

}  // namespace tapcore
