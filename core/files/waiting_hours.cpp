#include "core/files/waiting_hours.h"

#include <algorithm>

#include "core/files/data_listing.h"
#include "core/foundation/integers.h"

namespace tapcore {
namespace {

constexpr std::size_t dayLength = std::string_view("2026-09-20").size();
constexpr std::string_view extension = "org";

std::vector<WaitingHour> hoursAmong(const std::vector<ListedFile>& files) {
    std::vector<WaitingHour> hours;
    for (const ListedFile& file : files)
        if (const auto hour = WaitingHour::parse(file.name); hour && file.extension == extension)
            hours.push_back(*hour);
    std::sort(hours.begin(), hours.end());
    return hours;
}

}  // namespace

std::string WaitingHour::name() const {
    const std::string digits = std::to_string(hour);
    return day.description() + (hour < 10 ? "-0" : "-") + digits;
}

std::optional<WaitingHour> WaitingHour::parse(std::string_view name) {
    if (name.size() != dayLength + 3 || name[dayLength] != '-' || !isDayName(name.substr(0, dayLength)))
        return std::nullopt;
    const auto hour = parseInteger(name.substr(dayLength + 1));
    if (!hour || *hour < 0 || *hour > 23) return std::nullopt;
    return WaitingHour{*Day::parse(name.substr(0, dayLength)), *hour};
}

std::filesystem::path waitingFile(const std::filesystem::path& folder, const WaitingHour& hour) {
    return folder / hour.name().append(".").append(extension);
}

std::vector<WaitingHour> waitingHours(const std::filesystem::path& folder, FileProblems& problems) {
    return hoursAmong(dataFiles(folder, problems));
}

std::vector<WaitingHour> waitingHours(const std::filesystem::path& folder) {
    return hoursAmong(dataFiles(folder));
}

}  // namespace tapcore
