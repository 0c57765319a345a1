#include "core/files/rows_read.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <nlohmann/json.hpp>

#include "core/files/count_rows.h"
#include "core/files/csv_records.h"
#include "core/files/data_listing.h"
#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/text_pieces.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

using Kind = CountRow::Kind;

constexpr std::size_t longestName = 255;  ///< of a folder, in bytes

/// Why a row cannot be used.
class UnusableRow : public TextError {
  public:
    using TextError::TextError;
};

/// The fields of a row before they are checked against each other.
struct Fields {
    std::string machine, day, kind, modifiers;
    std::optional<std::int64_t> hour, keyCode, count;
};

[[noreturn]] void refuseField(std::string_view column, std::string_view why, std::string_view found) {
    constexpr std::size_t much = 40;
    const bool isShown = !found.empty() && found.size() <= much;
    const std::string shown = isShown ? ": " + std::string(found) : "";
    throw UnusableRow(std::string(column) + ": " + std::string(why) + shown);
}

std::optional<std::int64_t> number(std::string_view column, const std::string& text) {
    if (text.empty()) return std::nullopt;
    const auto value = parseInteger(text);
    if (!value) refuseField(column, "not a whole number of 64 bits", text);
    return value;
}

void requireAbsent(std::string_view column, bool isAbsent, std::string_view kind) {
    if (!isAbsent)
        throw UnusableRow(std::string(column) + ": a row of kind " + std::string(kind) + " has none");
}

Day checkedDay(const std::string& text) {
    const auto day = isDayName(text) ? Day::parse(text) : std::nullopt;
    using namespace std::chrono;
    if (!day || !year_month_day(year(static_cast<int>(day->year)), month(static_cast<unsigned>(day->month)),
                                std::chrono::day(static_cast<unsigned>(day->day)))
                     .ok())
        refuseField("day", "not a date such as 2026-09-20", text);
    return *day;
}

std::optional<std::int64_t> checkedHour(const Fields& fields, Kind kind) {
    if (kind == Kind::peak || kind == Kind::paused) requireAbsent("hour", !fields.hour, fields.kind);
    else if (!fields.hour || !Tally::isHour(*fields.hour))
        refuseField("hour", "not one of 0 to 23", fields.hour ? std::to_string(*fields.hour) : "");
    return fields.hour;
}

std::optional<KeyCode> checkedKeyCode(const Fields& fields, Kind kind) {
    if (kind != Kind::key && kind != Kind::chord) {
        requireAbsent("keycode", !fields.keyCode, fields.kind);
        return std::nullopt;
    }
    const std::string text = fields.keyCode ? std::to_string(*fields.keyCode) : "";
    const auto code = parseKeyCode(text);
    if (!code) refuseField("keycode", "not one of 0 to 65535", text);
    return code;
}

Modifiers checkedModifiers(const Fields& fields, Kind kind) {
    if (kind != Kind::chord) {
        requireAbsent("modifiers", fields.modifiers.empty(), fields.kind);
        return {};
    }
    const auto modifiers = Modifiers::parse(fields.modifiers);
    if (!modifiers || !modifiers->isChord())
        refuseField("modifiers", "not those of a shortcut", fields.modifiers);
    return *modifiers;
}

CountRow checkedRow(const Fields& fields) {
    const auto kind = CountRow::kinds.find(fields.kind);
    if (!kind) refuseField("kind", "unknown", fields.kind);
    if (fields.machine.size() > longestName) refuseField("machine", "longer than a name", fields.machine);
    if (!fields.count || *fields.count < 1)
        refuseField("count", "not a number above 0", fields.count ? std::to_string(*fields.count) : "");
    return {*kind, checkedHour(fields, *kind), checkedKeyCode(fields, *kind), checkedModifiers(fields, *kind),
            *fields.count};
}

/// Where a day file holds what a row counts.
std::int64_t& placeOf(DayFile& file, const CountRow& row) {
    Tally& tally = file.tally;
    const auto hour = static_cast<std::size_t>(row.hour.value_or(0));
    switch (row.kind) {
        case Kind::key:
            return tally.keys[hour][*row.keyCode];
        case Kind::chord:
            return tally.chords[hour][{row.modifiers, *row.keyCode}];
        case Kind::unkeyed:
            return tally.unkeyed[hour];
        case Kind::click:
            return tally.mouse[hour].clicks;
        case Kind::right:
            return tally.mouse[hour].right;
        case Kind::middle:
            return tally.mouse[hour].middle;
        case Kind::scroll:
            return tally.mouse[hour].scrolls;
        case Kind::moved:
            return tally.mouse[hour].moved;
        case Kind::peak:
            return file.peakPerMinute;
        case Kind::paused:
            break;
    }
    return file.pausedMinutes;
}

/// Takes rows in, and notes those that cannot be used.
class Collector {
  public:
    /// `fieldsOf` reads the row that begins in a line; it throws TextError when it cannot be used.
    template <class FieldsOf>
    void take(std::size_t line, FieldsOf fieldsOf) try {
        const Fields fields = fieldsOf();
        const CountRow row = checkedRow(fields);
        std::int64_t& count = placeOf(rows_.days[{checkedDay(fields.day), fields.machine}], row);
        if (count != 0) throw UnusableRow("an earlier row counts the same");
        count = row.count;
    } catch (const TextError& error) {
        refuse(line, error.what());
    }

    void refuse(std::size_t line, std::string why) {
        ++rows_.unusable;
        if (rows_.skipped.size() < RowsRead::mostNamed) rows_.skipped.push_back({line, std::move(why)});
    }

    RowsRead take() { return std::move(rows_); }

  private:
    RowsRead rows_;
};

/// At which place of a record each column is.
using Places = std::array<std::size_t, rowColumns.words.size()>;

std::optional<Places> placesIn(const std::vector<std::string>& header) {
    Places places{};
    if (header.size() != places.size()) return std::nullopt;
    for (std::size_t column = 0; column < places.size(); ++column) {
        const auto found = std::find(header.begin(), header.end(), rowColumns.words[column]);
        if (found == header.end()) return std::nullopt;
        places[column] = static_cast<std::size_t>(found - header.begin());
    }
    return places;
}

Fields csvFields(const std::vector<std::string>& record, const Places& places) {
    if (record.size() != places.size())
        throw UnusableRow(counted(record.size(), "column", "columns") + ", not " +
                          std::to_string(places.size()));
    const auto at = [&](std::size_t column) -> const std::string& { return record[places[column]]; };
    const auto numberAt = [&](std::size_t column) { return number(rowColumns.words[column], at(column)); };
    return {at(0), at(1), at(3), at(5), numberAt(2), numberAt(4), numberAt(6)};
}

void readCsv(std::string_view text, Collector& rows) {
    CsvRecords records(text);
    std::vector<std::string> record;
    if (!records.next(record)) return;
    const auto places = placesIn(record);
    if (!places) {
        std::string header;
        for (const std::string_view column : rowColumns.words) header.append(column).append(",");
        header.pop_back();
        return rows.refuse(records.line(), "not the header of an export: " + header);
    }
    while (records.next(record)) rows.take(records.line(), [&] { return csvFields(record, *places); });
}

Fields jsonFields(std::string_view line) {
    const auto document = JsonValue::tryParse(line);
    if (!document || !document->is_object()) throw UnusableRow("not a JSON object");
    const JsonValue row(*document);
    const auto text = [&](std::string_view name) {
        return row.optionalMember(name, &JsonValue::string).value_or("");
    };
    const auto integer = [&](std::string_view name) { return row.optionalMember(name, &JsonValue::integer); };
    return {text("machine"), text("day"),        text("kind"),    text("modifiers"),
            integer("hour"), integer("keycode"), integer("count")};
}

void readJson(std::string_view text, Collector& rows) {
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = takePiece(text, '\n');
        if (line.find_first_not_of(" \t\r") != std::string_view::npos)
            rows.take(number, [&] { return jsonFields(line); });
    }
}

RowForm formOf(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\r\n");
    return start != std::string_view::npos && text[start] == '{' ? RowForm::json : RowForm::csv;
}

}  // namespace

RowsRead readRows(std::string_view text, std::optional<RowForm> form) {
    Collector rows;
    if (const std::size_t bad = firstInvalidUtf8(text); bad != std::string_view::npos)
        rows.refuse(1 + static_cast<std::size_t>(
                            std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(bad), '\n')),
                    "not UTF-8 text");
    else if (form.value_or(formOf(text)) == RowForm::json) readJson(text, rows);
    else readCsv(text, rows);
    return rows.take();
}

}  // namespace tapcore
