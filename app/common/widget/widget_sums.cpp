#include "app/common/widget/widget_sums.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <filesystem>
#include <string_view>
#include <vector>

#include "app/common/program.h"
#include "core/files/comparison.h"
#include "core/files/folder_names.h"
#include "core/files/store.h"
#include "core/foundation/folder_listing.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// The date that a file of a folder of days is about, be it hidden or not.
std::string dateIn(std::string_view name) {
    if (name.starts_with('.')) name.remove_prefix(1);
    return std::string(name.substr(0, std::string_view("2026-09-20").size()));
}

/// Which file it is, how large, and when it changed last.
std::string stateOf(const fs::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) return file.string() + "\n";
    return fmt::format("{} {} {} {}.{:09}\n", file.string(), status.st_ino, status.st_size,
                       status.st_ctim.tv_sec, status.st_ctim.tv_nsec);
}

/// The states of the files of some days, by date.
using States = std::map<std::string, std::string>;

/// Of the days that the widgets are made of, in all parts of the folder, and of hours that wait for theirs.
States statesOf(const tapcore::Store& store, const std::vector<tapcore::Day>& days) {
    States states;
    for (const tapcore::Day& day : days) states[day.description()];
    const auto add = [&](const std::string& date, const fs::path& file) {
        if (const auto found = states.find(date); found != states.end()) found->second += stateOf(file);
    };
    for (const tapcore::Store& part : store.readParts())
        for (const std::string& name : tapcore::namesIn(part.root / tapcore::daysFolder))
            add(dateIn(name), part.root / tapcore::daysFolder / name);
    for (const tapcore::WaitingHour& hour : store.waitingHours())
        add(hour.day.description(), store.url(hour));
    return states;
}

std::vector<tapcore::Day> daysUpTo(const tapcore::Day& last, const tapcore::Calendar& calendar) {
    std::vector<tapcore::Day> days;
    for (std::int64_t before = 0; before <= tapcore::Comparison::daysBack; ++before)
        days.push_back(last.adding(-before, calendar));
    return days;
}

}  // namespace

void WidgetSums::require(const FolderOptions& options, const Environment& environment) {
    const auto days = daysUpTo(today(options, environment, environment.calendar), environment.calendar);
    const tapcore::Store store = openStore(options, environment);
    const States states = statesOf(store, days);
    std::erase_if(days_, [&](const auto& known) { return !states.contains(known.first); });
    tapcore::CountSum counts;
    for (const tapcore::Day& day : days) {
        Known& known = days_[day.description()];
        if (const std::string& state = states.at(day.description()); known.state != state) {
            known = {state, {}};
            store.addNumbers(known.sum, day);
        }
        counts.add(known.sum);
    }
    if (!counts.fits()) throw Failure(store.root.string(), std::string(tapcore::tooLarge));
}

}  // namespace tappora
