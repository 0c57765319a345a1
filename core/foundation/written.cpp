#include "core/foundation/written.h"

#include <utility>

namespace tapcore {

namespace fs = std::filesystem;

Written Written::butNotYetSafe(fs::path path, std::error_code why) {
    return {Status::notYetSafe, std::move(path), why};
}

Written Written::then(const std::function<void()>& tidyUp) const {
    if (!isSafe()) return *this;
    try {
        tidyUp();
        return *this;
    } catch (const fs::filesystem_error& fault) {
        return butNotYetSafe(fault.path1(), fault.code());
    }
}

void Written::requireSafe() const {
    if (!isSafe()) throw fs::filesystem_error("cannot write", path, error);
}

void tellUnlessSafe(const Written& written, const WriteTold& told) {
    if (!written.isSafe() && told) told(written);
}

}  // namespace tapcore
