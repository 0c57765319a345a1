#include "core/foundation/icu.h"

#include <unicode/ures.h>
#include <unicode/ustring.h>

#include "core/foundation/fatal.h"
#include "core/foundation/owned.h"

namespace tapcore {

void requireIcu(UErrorCode status, std::string_view what) {
    if (U_FAILURE(status)) fatal(std::string(what) + ": " + u_errorName(status));
}

bool isKnownLocale(const char* locale) {
    if (*locale == '\0' || *locale == '@') return false;
    UErrorCode status = U_ZERO_ERROR;
    const Owned<UResourceBundle, ures_close> data(ures_open(nullptr, locale, &status));
    return U_SUCCESS(status) && status != U_USING_DEFAULT_WARNING;
}

std::u16string utf16(std::string_view text) {
    std::u16string result(text.size(), u'\0');
    std::int32_t size = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(result.data(), static_cast<std::int32_t>(result.size()), &size, text.data(),
                  static_cast<std::int32_t>(text.size()), &status);
    result.resize(U_FAILURE(status) ? 0 : static_cast<std::size_t>(size));
    return result;
}

std::string utf8(const char16_t* text, std::int32_t size) {
    std::string result(static_cast<std::size_t>(size) * 3, '\0');  // no unit takes more
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(result.data(), static_cast<std::int32_t>(result.size()), &length, text, size, &status);
    requireIcu(status, "no UTF-8");
    result.resize(static_cast<std::size_t>(length));
    return result;
}

}  // namespace tapcore
