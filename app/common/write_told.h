#pragma once

#include <string>

#include "core/foundation/written.h"

namespace tappora {

/// Why what was written is not yet safe: "WHY; what was written stands, but a power cut may undo it".
std::string whatOf(const tapcore::Written& unsafe);

/// Warns of what was written and is not yet safe from a power cut, with its path. Says nothing of what is
/// safe.
void complainOf(const tapcore::Written& written);

/// The same, of the first such write alone: where one is, the next ones are too.
tapcore::WriteTold complainOnce();

}  // namespace tappora
