#include "app/common/widget/shown_pause.h"

#include <exception>
#include <nlohmann/json.hpp>

#include "app/common/widget/widget_file.h"
#include "core/foundation/file_io.h"

namespace tappora {

std::filesystem::path shownPauseFile(const Environment& environment) {
    return widgetFile(environment).replace_filename("pause.json");
}

/// What is wrong with it is the recorder's to tell.
std::optional<Pause> shownPause(const Environment& environment) try {
    const auto file = tapcore::readStoredFile(shownPauseFile(environment));
    if (file.status != tapcore::FileRead::Status::read) return std::nullopt;
    const nlohmann::json document = tapcore::JsonValue::parse(file.text);
    const Pause pause = readPause(tapcore::JsonValue(document));
    const bool isOver = pause.until && *pause.until <= environment.now;
    return isOver ? std::nullopt : std::optional(pause);
} catch (const std::exception&) {  // also where there is no home
    return std::nullopt;
}

std::string widgetLine(const tapcore::WidgetSnapshot& snapshot, const Environment& environment) {
    std::string line = snapshot.data();
    const auto pause = shownPause(environment);
    if (pause && line.ends_with('}'))
        line.insert(line.size() - 1, ",\"pause\":" + tapcore::jsonLine(toJson(*pause)));
    return line;
}

}  // namespace tappora
