#include "app/common/folder/write_told.h"

#include <memory>
#include <utility>

#include "app/common/harmless_text.h"

namespace tappora {

void complainOf(const tapcore::Written& written, const Tell& tell) {
    if (!written.isSafe())
        tell(harmlessLine(written.path.string() + ": " + written.error.message() +
                          "; the new text is written, but a power cut may undo it"));
}

tapcore::WriteTold complainOnce(const Tell& tell) {
    return [tell, wasTold = std::make_shared<bool>(false)](const tapcore::Written& unsafe) {
        if (!std::exchange(*wasTold, true)) complainOf(unsafe, tell);
    };
}

}  // namespace tappora
