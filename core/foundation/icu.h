#pragma once

#include <unicode/utypes.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace tapcore {

// What those sources share that ask ICU: only sources of this folder include it.

/// Ends the program when ICU failed: "WHAT: U_…". Its data are part of it, so nothing but a broken
/// installation or too little memory makes it fail.
void requireIcu(UErrorCode status, std::string_view what);

/// Whether ICU has data of a locale or of its language; not for one that names no language. Where it has none
/// it takes the locale that the process runs in, which nobody asked for.
bool isKnownLocale(const char* locale);

/// Text as ICU has it; nothing of one that is not UTF-8.
std::u16string utf16(std::string_view text);

/// UTF-8 of `size` units of ICU's text.
std::string utf8(const char16_t* text, std::int32_t size);

/// What `write(buffer, capacity, status)` writes, as UTF-8: names, numbers and the like, of at most 256
/// units. Fatal, with `what`, when that fails.
template <class Write>
std::string icuText(std::string_view what, Write write) {
    char16_t buffer[256];
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t size = write(buffer, 256, &status);
    requireIcu(status, what);
    return utf8(buffer, size);
}

}  // namespace tapcore
