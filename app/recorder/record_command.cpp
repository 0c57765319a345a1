#include "app/recorder/record_command.h"

namespace tappora {

void record(const RecordOptions& options, const Environment& environment) {
    if (options.replay) replayFile(options, environment);
    else recordLive(options, environment);
}

}  // namespace tappora
