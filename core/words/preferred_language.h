#pragma once

#include <string>
#include <vector>

namespace tapcore {

/// The first of the languages that a user wishes for, in that order, that is among those there are; English
/// when no wish is. A wish is a code or a locale's name ("de", "pt-BR", "de_AT.UTF-8@euro"): a language there
/// is with its region goes before the language alone.
std::string preferredLanguage(const std::vector<std::string>& wishes,
                              const std::vector<std::string>& available);

}  // namespace tapcore
