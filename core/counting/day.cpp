#include "core/counting/day.h"

#include <array>
#include <cinttypes>
#include <cstdio>

#include "core/foundation/checked.h"
#include "core/foundation/civil_date.h"
#include "core/foundation/integers.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

std::optional<std::int64_t> integerOfWidth(std::string_view text, std::size_t width) {
    return text.size() == width ? parseInteger(text) : std::nullopt;
}

/// The pieces between "-", empty ones dropped; nothing unless there are three.
std::optional<std::array<std::string_view, 3>> threePieces(std::string_view text) {
    std::array<std::string_view, 3> pieces;
    std::size_t count = 0;
    while (!text.empty()) {
        const std::string_view piece = takePiece(text, '-');
        if (piece.empty()) continue;
        if (count == pieces.size()) return std::nullopt;
        pieces[count++] = piece;
    }
    if (count != pieces.size()) return std::nullopt;
    return pieces;
}

std::int64_t numberOf(const Day& day) { return dayNumber({day.year, day.month, day.day}); }

}  // namespace

Day::Day(Instant moment, const Calendar& calendar) {
    const LocalTime local = calendar.local(moment);
    *this = Day(local.year, local.month, local.day);
}

std::optional<Day> Day::parse(std::string_view text) {
    const auto pieces = threePieces(text);
    if (!pieces) return std::nullopt;
    const auto year = integerOfWidth((*pieces)[0], 4);
    const auto month = integerOfWidth((*pieces)[1], 2);
    const auto day = integerOfWidth((*pieces)[2], 2);
    if (!year || !month || !day) return std::nullopt;
    if (*month < 1 || *month > 12 || *day < 1 || *day > 31) return std::nullopt;
    return Day(*year, *month, *day);
}

std::string Day::description() const {
    char text[80];
    std::snprintf(text, sizeof text, "%04" PRId64 "-%02" PRId64 "-%02" PRId64, year, month, day);
    return text;
}

std::string Day::monthName() const {
    char text[60];
    std::snprintf(text, sizeof text, "%04" PRId64 "-%02" PRId64, year, month);
    return text;
}

Instant Day::date(const Calendar& calendar) const {
    return calendar.moment({.year = year, .month = month, .day = day});
}

Day Day::adding(std::int64_t days, const Calendar&) const {
    const CivilDate date = civilDate(checkedSum(numberOf(*this), days));
    return Day(date.year, date.month, date.day);
}

std::int64_t Day::daysSince(const Day& other) const { return numberOf(*this) - numberOf(other); }

std::size_t Day::weekday() const { return weekdayOf(numberOf(*this)); }

}  // namespace tapcore
