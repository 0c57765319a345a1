#include "core/keyboard/import/text/slug.h"

#include <algorithm>
#include <filesystem>

#include "core/foundation/ascii.h"
#include "core/foundation/characters.h"

namespace tapcore {
namespace {

/// The bytes of the marks from U+0300 to U+036F begin so; decomposed letters are followed by them.
bool startsMark(char c) { return c == '\xCC' || c == '\xCD'; }
bool continues(char c) { return (c & 0xC0) == 0x80; }

bool hasLetter(std::string_view id) { return std::any_of(id.begin(), id.end(), isSmallLetter); }

}  // namespace

std::string slug(std::string_view name) {
    std::string result;
    bool isInMark = false;
    for (const char c : decomposed(lowercased(name))) {
        isInMark = startsMark(c) || (isInMark && continues(c));
        if (isInMark) continue;
        if (isSmallLetter(c) || isDigit(c)) result += c;
        else if (!result.empty() && result.back() != '-') result += '-';
    }
    if (result.ends_with('-')) result.pop_back();
    return result;
}

std::string slugOf(std::string_view name, std::string_view file) {
    const std::string own = slug(name);
    const std::string other = slug(std::filesystem::path(file).stem().string());
    return hasLetter(own) || !hasLetter(other) ? own : other;
}

}  // namespace tapcore
