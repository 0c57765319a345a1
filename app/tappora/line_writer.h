#pragma once

#include <string>

namespace tappora {

/// Writes a text and a line end whole, waiting for a reader that is slow, on a descriptor that itself would
/// not wait too; false when nobody reads any more.
[[nodiscard]] bool writeLine(int descriptor, std::string text);

}  // namespace tappora
