#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/files/day_file.h"
#include "core/files/file_problem.h"
#include "core/files/row_text.h"

namespace tapcore {

/// A day of one machine; the machine is "" for a folder that is not shared. Ordered by day.
struct MachineDay {
    Day day;
    std::string machine;

    auto operator<=>(const MachineDay&) const = default;
};

/// What was read of a text of rows.
struct RowsRead {
    std::map<MachineDay, DayFile> days;
    std::size_t unusable = 0;         ///< how many rows cannot be used
    std::vector<SkippedRow> skipped;  ///< the first of them: at most `mostNamed`

    static constexpr std::size_t mostNamed = 20;
};

/// Reads the rows that `RowText` writes, in the form given or the one that the text looks like. Never fails.
/// The columns of CSV may come in any order. A row must be as `RowText` writes one: a day of the calendar, an
/// hour from 0 to 23, a count above 0, and those of hour, key code and modifiers that its kind has. The same
/// machine, day, kind, hour and key twice is a row that cannot be used: the text holds some rows twice.
RowsRead readRows(std::string_view text, std::optional<RowForm> form = std::nullopt);

}  // namespace tapcore
