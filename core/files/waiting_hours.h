#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/files/file_problem.h"

namespace tapcore {

// Counts may wait in a folder outside of the data folder until their hour is over. Each such hour has a small
// day file of its own there, "2026-09-20-14.org". It counts as one more copy of its day, until it is taken
// into the day's file.

/// The name of such a file. It may hold counts of earlier hours of the day too, which were kept until then.
struct WaitingHour {
    Day day;
    std::int64_t hour = 0;  ///< 0 to 23; the last one of the file

    /// Without extension: "2026-09-20-14".
    std::string name() const;
    static std::optional<WaitingHour> parse(std::string_view name);

    auto operator<=>(const WaitingHour&) const = default;
};

/// Its file in the folder of those that wait.
std::filesystem::path waitingFile(const std::filesystem::path& folder, const WaitingHour& hour);

/// The hours that wait, ascending; none in a folder that does not exist. One that cannot be listed is named
/// in `problems`.
std::vector<WaitingHour> waitingHours(const std::filesystem::path& folder, FileProblems& problems);
/// The hours that wait, ascending. Throws filesystem_error with the path of a folder that cannot be listed.
std::vector<WaitingHour> waitingHours(const std::filesystem::path& folder);

}  // namespace tapcore
