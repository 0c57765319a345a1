#include "app/practice/screen_locale.h"

#include <fmt/format.h>
#include <langinfo.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <cwchar>

#include "app/common/program.h"
#include "app/common/terminal/terminal.h"
#include "core/foundation/characters.h"
#include "core/foundation/utf8.h"

namespace tappora {
namespace {

/// Whether the locale's character set has all of a text.
bool hasAll(const std::string& text) {
    std::array<char, 64> bytes{};
    const std::wstring wide = wideText(text);
    return std::all_of(wide.begin(), wide.end(), [&](wchar_t scalar) {
        std::mbstate_t state{};
        return std::wcrtomb(bytes.data(), scalar, &state) != static_cast<std::size_t>(-1);
    });
}

}  // namespace

void useLocale(const Environment& environment, const std::vector<std::string>& letters) {
    // A locale that is named but not installed still tells which text the terminal takes.
    if (std::setlocale(LC_CTYPE, "") == nullptr && Terminal::of(environment).unicode)
        std::setlocale(LC_CTYPE, "C.UTF-8");
    const auto missing = std::find_if_not(letters.begin(), letters.end(), hasAll);
    if (missing != letters.end())
        throw Failure("LANG",
                      fmt::format("the character set of this locale, {}, has no \"{}\"; try LANG=C.UTF-8",
                                  nl_langinfo(CODESET), *missing));
}

bool takesUnicode() { return std::string_view(nl_langinfo(CODESET)) == "UTF-8"; }

std::wstring wideText(std::string_view text) {
    std::wstring wide;
    while (!text.empty()) {
        const char32_t scalar = tapcore::firstScalar(text);
        wide += static_cast<wchar_t>(scalar);
        text.remove_prefix(std::min(tapcore::utf8(scalar).size(), text.size()));
    }
    return wide;
}

}  // namespace tappora
