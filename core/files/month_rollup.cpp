#include "core/files/month_rollup.h"

#include <algorithm>

#include "core/files/row_reader.h"
#include "core/files/text_table.h"
#include "core/foundation/checked.h"
#include "core/foundation/integers.h"

namespace tapcore {
namespace {

Outcome readDayLine(MonthRollup& rollup, const Cells& cells) {
    if (cells.size() != 4 && cells.size() != 5) return "a row of Days has 4 or 5 cells";
    const auto day = Day::parse(cells[0]);
    const auto keystrokes = parseInteger(cells[1]);
    const auto activeHours = parseInteger(cells[2]);
    const auto peak = parseInteger(cells[3]);
    if (!day) return "the date is not YYYY-MM-DD";
    if (!keystrokes || !activeHours || !peak) return notNumbers;
    const auto clicks = cells.size() == 5 ? parseInteger(cells[4]).value_or(0) : 0;
    rollup.days.push_back({*day, *keystrokes, *activeHours, *peak, clicks});
    return used;
}

Outcome readKeyRow(MonthRollup& rollup, const Cells& cells) {
    if (cells.size() != 2) return "a row of Keys has 2 cells";
    const auto keyCode = parseKeyCode(cells[0]);
    const auto count = parseInteger(cells[1]);
    if (!keyCode || !count) return notNumbers;
    addChecked(rollup.keys[*keyCode], *count);
    return used;
}

Outcome readChordRow(MonthRollup& rollup, const Cells& cells) {
    if (cells.size() != 3) return "a row of Chords has 3 cells";
    const auto modifiers = Modifiers::parse(cells[0]);
    const auto keyCode = parseKeyCode(cells[1]);
    const auto count = parseInteger(cells[2]);
    if (!modifiers) return notModifiers;
    if (!keyCode || !count) return notNumbers;
    addChecked(rollup.chords[{*modifiers, *keyCode}], *count);
    return used;
}

constexpr RowReader<MonthRollup> rowReaders[] = {
    {"days", readDayLine, "date"},
    {"keys", readKeyRow, "keycode"},
    {"chords", readChordRow, "modifiers"},
};

TextTable daysTable(const MonthRollup& rollup) {
    TextTable table{
        {"date", "keystrokes", "active_hours", "peak", "clicks"}, {false, true, true, true, true}, {}};
    for (const MonthRollup::DayLine& line : rollup.days)
        table.rows.push_back({line.day.description(), std::to_string(line.keystrokes),
                              std::to_string(line.activeHours), std::to_string(line.peakPerMinute),
                              std::to_string(line.clicks)});
    return table;
}

TextTable keysTable(const MonthRollup& rollup) {
    TextTable table{{"keycode", "count"}, {true, true}, {}};
    for (const auto& [keyCode, count] : rollup.keys)
        table.rows.push_back({std::to_string(keyCode), std::to_string(count)});
    return table;
}

TextTable chordsTable(const MonthRollup& rollup) {
    TextTable table{{"modifiers", "keycode", "count"}, {false, true, true}, {}};
    for (const auto& [chord, count] : rollup.chords)
        table.rows.push_back({chord.modifiers.name(), std::to_string(chord.keyCode), std::to_string(count)});
    return table;
}

/// Folds another machine's line of the same day into this one.
void fold(MonthRollup::DayLine& line, const MonthRollup::DayLine& other) {
    addChecked(line.keystrokes, other.keystrokes);
    addChecked(line.clicks, other.clicks);
    line.activeHours = std::max(line.activeHours, other.activeHours);
    line.peakPerMinute = std::max(line.peakPerMinute, other.peakPerMinute);
}

}  // namespace

MonthRollup::MonthRollup(const std::map<Day, DayFile>& files) {
    for (const auto& [day, file] : files) {
        const Tally& tally = file.tally;
        days.push_back(
            {day, tally.total(), tally.activeHours(), file.peakPerMinute, tally.mouseTotal().allClicks()});
        addCounts(keys, tally.byKey());
        addCounts(chords, tally.byChord());
    }
}

MonthRollup::MonthRollup(std::string_view text, std::vector<SkippedRow>* skipped) {
    readRows(text, *this, rowReaders, skipped);
}

std::string MonthRollup::text(FileFormat format, std::string_view month) const {
    return format.titleLine(month) + "\n" + daysTable(*this).section(format, "Days") + "\n" +
           keysTable(*this).section(format, "Keys") + "\n" + chordsTable(*this).section(format, "Chords");
}

MonthRollup MonthRollup::merged(const MonthRollup& other) const {
    MonthRollup result = *this;
    for (const DayLine& line : other.days) {
        const auto same = std::find_if(result.days.begin(), result.days.end(),
                                       [&](const DayLine& known) { return known.day == line.day; });
        if (same == result.days.end()) result.days.push_back(line);
        else fold(*same, line);
    }
    addCounts(result.keys, other.keys);
    addCounts(result.chords, other.chords);
    std::stable_sort(result.days.begin(), result.days.end(),
                     [](const DayLine& a, const DayLine& b) { return a.day < b.day; });
    return result;
}

}  // namespace tapcore
