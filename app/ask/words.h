#pragma once

#include <string_view>

namespace tappora {

/// The English text of a text-table key about the assistant; the key itself when it has none.
std::string_view words(std::string_view key);

}  // namespace tappora
