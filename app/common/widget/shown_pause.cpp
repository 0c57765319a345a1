#include "app/common/widget/shown_pause.h"

#include <nlohmann/json.hpp>

#include "app/common/widget/widget_file.h"
#include "core/foundation/file_io.h"

namespace tappora {

std::filesystem::path shownPauseFile(const Environment& environment) {
    return widgetFile(environment).replace_filename("pause.json");
}

std::optional<Pause> shownPause(const Environment& environment) try {
    const auto file = tapcore::readStoredFile(shownPauseFile(environment));
    if (file.status != tapcore::FileRead::Status::read) return std::nullopt;
    const nlohmann::json document = tapcore::JsonValue::parse(file.text);
    const Pause pause = readPause(tapcore::JsonValue(document));
    const bool isOver = pause.until && *pause.until <= environment.now;
    return isOver ? std::nullopt : std::optional(pause);
} catch (const tapcore::JsonError&) {
    return std::nullopt;
}

}  // namespace tappora
