#pragma once

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/foundation/written.h"

namespace tappora {

/// Warns of what was written and is not yet safe from a power cut: "PATH: WHY; the new text is written, but a
/// power cut may undo it". Says nothing of what is safe.
void complainOf(const tapcore::Written& written, const Tell& tell = complain);

/// The same, of the first such write alone: where one is, the next ones are too.
tapcore::WriteTold complainOnce(const Tell& tell = complain);

}  // namespace tappora
