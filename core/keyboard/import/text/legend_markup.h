#pragma once

#include <string>
#include <string_view>

namespace tapcore {

/// A key's legend without the HTML that keyboard editors allow in it: tags are left out and character
/// references become their characters. What only looks like them ("<RTRN>", "<", "&") stays.
std::string plainLegend(std::string_view legend);

}  // namespace tapcore
