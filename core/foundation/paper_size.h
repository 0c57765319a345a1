#pragma once

#include <string_view>

namespace tapcore {

/// Whether people of a locale ("en_US") print on Letter. False for a locale without a country, and for one
/// that is not known: most of the world prints on A4.
bool printsOnLetter(std::string_view locale);

}  // namespace tapcore
