#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tapcore {

/// What a locale ("de", "de_AT", "pt-BR") calls the days of the week where a name is used alone and is
/// abbreviated, from Sunday on: "Sun", "Mon" … in English. A locale that is not known has English names.
std::array<std::string, 7> weekdayNames(std::string_view locale);

}  // namespace tapcore
