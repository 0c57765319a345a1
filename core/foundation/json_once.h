#pragma once

#include <string_view>

namespace tapcore {

/// Sees that no object of a JSON text has a member twice: which one counts would be left to chance.
/// JsonError, which names the member, for one that has, and for a text that is not JSON.
void requireEachOnce(std::string_view text);

}  // namespace tapcore
