#include "core/files/day_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <utility>

#include "core/files/text_table.h"
#include "core/foundation/checked.h"
#include "core/foundation/integers.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

constexpr Outcome noSuchHour = "the hour is not 0 to 23";
constexpr Outcome noCount = "the count is below 1";

Outcome countedIn(std::int64_t hour, std::int64_t count) {
    return !Tally::isHour(hour) ? noSuchHour : count < 1 ? noCount : used;
}

Outcome readKeyRow(DayFile& file, const Cells& cells) {
    if (cells.size() != 3) return "a row of Keys has 3 cells";
    std::int64_t hour = 0;
    KeyCode keyCode = 0;
    std::int64_t count = 0;
    if (!parse(cells[0], hour) || !parse(cells[1], keyCode) || !parse(cells[2], count)) return notNumbers;
    file.tally.add(keyCode, hour, count);
    return countedIn(hour, count);
}

/// Nearly all rows of a file are these.
void readPlainKeyRows(DayFile& file, TableReader& reader) {
    constexpr std::size_t keysOfAnHour = 64;
    constexpr std::int64_t lastKeyCode = std::numeric_limits<KeyCode>::max();
    std::array<std::int64_t, 3> row{};
    const auto& [hour, keyCode, count] = row;
    while (reader.peekNumbers(row) && Tally::isHour(hour) && keyCode <= lastKeyCode && count >= 1) {
        auto& keys = file.tally.keys[static_cast<std::size_t>(hour)];
        if (keys.empty()) keys.reserve(keysOfAnHour);
        addChecked(keys[static_cast<KeyCode>(keyCode)], count);
        reader.skip();
    }
}

Outcome readChordRow(DayFile& file, const Cells& cells) {
    if (cells.size() != 4) return "a row of Chords has 4 cells";
    std::int64_t hour = 0;
    KeyCode keyCode = 0;
    std::int64_t count = 0;
    const auto modifiers = Modifiers::parse(cells[1]);
    if (!modifiers) return notModifiers;
    if (!parse(cells[0], hour) || !parse(cells[2], keyCode) || !parse(cells[3], count)) return notNumbers;
    file.tally.add(Tally::Chord{*modifiers, keyCode}, hour, count);
    return modifiers->isChord() ? countedIn(hour, count) : "a chord has ctrl, opt or cmd";
}

Outcome readHourRow(DayFile& file, const Cells& cells) {
    if (cells.size() != 2) return "a row of Hours has 2 cells";
    std::int64_t hour = 0;
    std::int64_t count = 0;
    if (!parse(cells[0], hour) || !parse(cells[1], count)) return notNumbers;
    file.tally.addUnkeyed(count, hour);
    return countedIn(hour, count);
}

Outcome readMouseRow(DayFile& file, const Cells& cells) {
    std::array<std::int64_t, 6> numbers{};
    if (cells.size() != numbers.size()) return "a row of Mouse has 6 cells";
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (!parse(cells[i], numbers[i])) return notNumbers;
    const auto [hour, clicks, right, middle, scrolls, moved] = numbers;
    file.tally.add(Tally::MouseHour{clicks, right, middle, scrolls, moved}, hour);
    return Tally::isHour(hour) ? used : noSuchHour;
}

/// Minutes of "hh:mm"; nothing unless there are exactly two integers between colons.
std::optional<std::int64_t> readDuration(std::string_view text) {
    std::vector<std::int64_t> numbers;
    while (!text.empty()) {
        const std::string_view piece = takePiece(text, ':');
        if (piece.empty()) continue;
        const auto number = parseInteger(piece);
        if (!number) return std::nullopt;
        numbers.push_back(*number);
    }
    if (numbers.size() != 2) return std::nullopt;
    return checkedSum(checkedProduct(numbers[0], 60), numbers[1]);
}

Outcome readDayRow(DayFile& file, const Cells& cells) {
    if (cells.size() != 2) return "a row of Day has 2 cells";
    const std::string_view key = cells[0];
    const std::string_view value = cells[1];
    if (key == "key" && value == "value") return used;
    if (key == "board") {
        file.board = value;
    } else if (key == "layout") {
        file.layout = value;
    } else if (key == "peak") {
        const auto peak = parseInteger(value);
        file.peakPerMinute = peak.value_or(0);
        if (!peak) return notNumbers;
    } else if (key == "paused") {
        const auto paused = readDuration(value);
        if (!paused) return "paused is not hh:mm";
        file.pausedMinutes = *paused;
    } else {
        file.otherMeta[std::string(key)] = value;
    }
    return used;
}

constexpr RowReader<DayFile> rowReaders[] = {
    {"keys", readKeyRow, "hour", readPlainKeyRows},
    {"chords", readChordRow, "hour"},
    {"hours", readHourRow, "hour"},
    {"mouse", readMouseRow, "hour"},
    {"day", readDayRow, "key"},
    {"meta", readDayRow, "key"},
};

std::string decimal(std::int64_t number) { return std::to_string(number); }

TextTable keysTable(const Tally& tally) {
    TextTable table{{"hour", "keycode", "count"}, {true, true, true}, {}};
    for (std::size_t hour = 0; hour < Tally::hours; ++hour)
        for (const auto& [keyCode, count] : tally.keys[hour])
            table.rows.push_back({std::to_string(hour), decimal(keyCode), decimal(count)});
    return table;
}

TextTable chordsTable(const Tally& tally) {
    TextTable table{{"hour", "modifiers", "keycode", "count"}, {true, false, true, true}, {}};
    for (std::size_t hour = 0; hour < Tally::hours; ++hour)
        for (const auto& [chord, count] : tally.chords[hour])
            table.rows.push_back(
                {std::to_string(hour), chord.modifiers.name(), decimal(chord.keyCode), decimal(count)});
    return table;
}

TextTable hoursTable(const Tally& tally) {
    TextTable table{{"hour", "count"}, {true, true}, {}};
    for (std::size_t hour = 0; hour < Tally::hours; ++hour)
        if (tally.unkeyed[hour] >= 1)
            table.rows.push_back({std::to_string(hour), decimal(tally.unkeyed[hour])});
    return table;
}

TextTable mouseTable(const Tally& tally) {
    TextTable table{{"hour", "clicks", "right", "middle", "scroll", "moved"}, std::vector<bool>(6, true), {}};
    for (std::size_t hour = 0; hour < Tally::hours; ++hour) {
        const Tally::MouseHour& mouse = tally.mouse[hour];
        if (mouse.isEmpty()) continue;
        table.rows.push_back({std::to_string(hour), decimal(mouse.clicks), decimal(mouse.right),
                              decimal(mouse.middle), decimal(mouse.scrolls), decimal(mouse.moved)});
    }
    return table;
}

std::string duration(std::int64_t minutes) {
    char text[48];
    std::snprintf(text, sizeof text, "%02lld:%02lld", static_cast<long long>(minutes / 60),
                  static_cast<long long>(minutes % 60));
    return text;
}

TextTable dayTable(const DayFile& file) {
    TextTable table{{"key", "value"}, {false, false}, {}};
    if (file.board) table.rows.push_back({"board", *file.board});
    if (file.layout) table.rows.push_back({"layout", *file.layout});
    if (file.pausedMinutes >= 1) table.rows.push_back({"paused", duration(file.pausedMinutes)});
    if (file.peakPerMinute >= 1) table.rows.push_back({"peak", decimal(file.peakPerMinute)});
    for (const auto& [key, value] : file.otherMeta) table.rows.push_back({key, value});
    return table;
}

}  // namespace

DayFile::DayFile(std::string_view text, std::vector<SkippedRow>* skipped) {
    readRows(text, *this, rowReaders, skipped);
}

std::string DayFile::text(FileFormat format, const Day& day) const {
    std::string out = format.titleLine(day.description()) + "\n";
    out += keysTable(tally).section(format, "Keys") + "\n";
    out += chordsTable(tally).section(format, "Chords") + "\n";
    if (const TextTable hours = hoursTable(tally); !hours.rows.empty())
        out += hours.section(format, "Hours") + "\n";
    if (const TextTable mouse = mouseTable(tally); !mouse.rows.empty())
        out += mouse.section(format, "Mouse") + "\n";
    return out + dayTable(*this).section(format, "Day");
}

void DayFile::merge(const Tally& counted, std::int64_t peak, std::int64_t paused) {
    tally.merge(counted);
    peakPerMinute = std::max(peakPerMinute, peak);
    addChecked(pausedMinutes, std::max<std::int64_t>(paused, 0));
}

void DayFile::merge(const DayFile& other) {
    merge(other.tally, other.peakPerMinute, other.pausedMinutes);
    if (!board) board = other.board;
    if (!layout) layout = other.layout;
    otherMeta.insert(other.otherMeta.begin(), other.otherMeta.end());
}

}  // namespace tapcore
