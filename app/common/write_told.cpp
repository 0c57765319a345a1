#include "app/common/write_told.h"

#include <memory>
#include <utility>

#include "app/common/program.h"
#include "app/common/terminal.h"

namespace tappora {

std::string whatOf(const tapcore::Written& unsafe) {
    return unsafe.error.message() + "; what was written stands, but a power cut may undo it";
}

void complainOf(const tapcore::Written& written) {
    if (!written.isSafe()) complain(harmlessLine(written.path.string() + ": " + whatOf(written)));
}

tapcore::WriteTold complainOnce() {
    return [wasTold = std::make_shared<bool>(false)](const tapcore::Written& unsafe) {
        if (!std::exchange(*wasTold, true)) complainOf(unsafe);
    };
}

}  // namespace tappora
