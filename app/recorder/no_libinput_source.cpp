#include <memory>

#include "app/common/program.h"
#include "app/recorder/event_source.h"

namespace tappora {

std::unique_ptr<EventSource> openInputDevices(const SourceOptions&) {
    throw Failure("input devices", "this build has no libinput; it counts recordings only (--replay)");
}

}  // namespace tappora
