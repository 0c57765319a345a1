#include "app/tappora/widget_timeline.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "app/common/command_line/records_json.h"
#include "app/common/folder/language.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/widget/widget_file.h"
#include "widgets/bundle.h"
#include "widgets/provider.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapwidgets::Entry;
using tapwidgets::Timeline;
using tapwidgets::Widget;

std::string momentText(tapcore::Instant moment) {
    const tapcore::LocalTime time = tapcore::Calendar("UTC").local(moment);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", time.year, time.month, time.day, time.hour,
                       time.minute, time.second);
}

json toJson(const Entry& entry) {
    return {{"date", momentText(entry.date)},
            {"snapshot", entry.snapshot ? json::parse(entry.snapshot->data()) : json()}};
}

json toJson(const Widget& widget, const Timeline& timeline, const tapcore::Words& words) {
    json families = json::array();
    for (const tapwidgets::Family family : widget.families)
        families.push_back(tapwidgets::families.of(family));
    json entries = json::array();
    for (const Entry& entry : timeline.entries) entries.push_back(toJson(entry));
    return {{"kind", widget.kind},
            {"name", words.text(widget.nameKey())},
            {"about", words.text(widget.aboutKey())},
            {"families", std::move(families)},
            {"entries", std::move(entries)},
            {"policy", {{"after", momentText(timeline.policy.after)}}}};
}

}  // namespace

void printTimelines(const Environment& environment) {
    const tapwidgets::Provider provider(
        std::nullopt, sharedFolders(environment), [&] { return environment.now; }, environment.calendar);
    const tapcore::Words words = systemWords(environment);
    json all = json::array();
    for (const Widget& widget : tapwidgets::bundle)
        all.push_back(toJson(widget, provider.getTimeline(), words));
    print(jsonText(all));
}

}  // namespace tappora
