#include "core/foundation/paper_size.h"

#include <unicode/uloc.h>
#include <unicode/ulocdata.h>

#include <array>
#include <string>

namespace tapcore {

bool printsOnLetter(std::string_view locale) {
    const std::string name(locale);
    UErrorCode status = U_ZERO_ERROR;
    std::array<char, ULOC_COUNTRY_CAPACITY> country{};
    if (uloc_getCountry(name.c_str(), country.data(), country.size(), &status) <= 0) return false;
    std::int32_t height = 0, width = 0;  // in millimetres
    ulocdata_getPaperSize(name.c_str(), &height, &width, &status);
    constexpr std::int32_t letterHeight = 279;
    return U_SUCCESS(status) && height == letterHeight;
}

}  // namespace tapcore
