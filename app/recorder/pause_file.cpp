#include "app/recorder/pause_file.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "app/common/control/control_places.h"
#include "app/common/control/pause_time.h"
#include "app/common/system/directories.h"
#include "app/recorder/named_failure.h"
#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::FileRead;

KeptPause notUnderstood(const fs::path& path, tapcore::Instant now, const std::string& why) {
    return {.pause = Pause{.since = now}, .problem = fmt::format("{}: {}", path.string(), why)};
}

Pause parse(const std::string& text) {
    const nlohmann::json document = tapcore::JsonValue::parse(text);
    return readPause(tapcore::JsonValue(document));
}

}  // namespace

std::optional<fs::path> pauseFile(const Environment& environment, const fs::path& dataFolder) {
    const auto state = stateDirectory(environment.variable);
    if (!state) return std::nullopt;
    return *state / "tappora" / fmt::format("pause-{}.json", recorderId(dataFolder));
}

KeptPause readPauseFile(const fs::path& path, tapcore::Instant now) {
    const FileRead file = tapcore::readStoredFile(path);
    if (file.status == FileRead::Status::missing) return {};
    if (file.status == FileRead::Status::unreadable) return notUnderstood(path, now, file.error.message());
    try {
        const Pause pause = parse(file.text);
        if (!pause.until || *pause.until <= now) return {.pause = pause};
        const std::string why = objectionTo(*pause.until, now);
        return why.empty() ? KeptPause{.pause = pause} : notUnderstood(path, now, why);
    } catch (const tapcore::JsonError& error) {
        return notUnderstood(path, now, error.what());
    }
}

void writePauseFile(const fs::path& path, const std::optional<Pause>& pause) {
    namingFailure([&] {
        if (pause) tapcore::writeFile(path, tapcore::jsonText(toJson(*pause))).requireSafe();
        else tapcore::removeFile(path);
    });
}

}  // namespace tappora
