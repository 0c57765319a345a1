#include "core/files/count_sum.h"

#include <algorithm>

#include "core/files/table_reader.h"
#include "core/foundation/ascii.h"
#include "core/foundation/integers.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

/// Adds number * factor, or its magnitude; nothing when that leaves 64 bits.
std::optional<std::int64_t> plus(std::optional<std::int64_t> sum, std::int64_t number, std::int64_t factor) {
    std::int64_t more = 0;
    if (!sum || __builtin_mul_overflow(number, number < 0 ? -factor : factor, &more) ||
        __builtin_add_overflow(*sum, more, &*sum))
        return std::nullopt;
    return sum;
}

/// The count of a row is a number, or the minutes of "hh:mm", whose empty pieces do not count.
std::optional<std::int64_t> plusCell(std::optional<std::int64_t> sum, std::string_view cell) {
    constexpr std::int64_t minutes = 60;
    std::int64_t factor = cell.find(':') == std::string_view::npos ? 1 : minutes;
    while (!cell.empty()) {
        const std::string_view piece = takePiece(cell, ':');
        if (piece.empty()) continue;
        if (const auto number = parseInteger(piece)) sum = plus(sum, *number, factor);
        factor = 1;
    }
    return sum;
}

/// More than all numbers of a text come to, found without reading its tables; nothing where a number is so
/// long, or the text, that it is worth reading them.
std::optional<std::int64_t> roughSum(std::string_view text) {
    constexpr std::size_t largeText = 1'000'000;
    constexpr std::size_t longNumber = 9;
    constexpr std::int64_t mostOfNumber = 60LL * 1'000'000'000;  // minutes of an hour, of so many hours
    std::size_t digits = 0;
    for (const char c : text) {
        digits = isDigit(c) ? digits + 1 : 0;
        if (digits > longNumber) return std::nullopt;
    }
    if (text.size() > largeText) return std::nullopt;
    return mostOfNumber * static_cast<std::int64_t>(text.size());
}

}  // namespace

void CountSum::add(std::string_view text) {
    if (const auto rough = roughSum(text)) {
        sum_ = plus(sum_, *rough, 1);
        return;
    }
    for (TableReader reader(text); reader.next();) {
        if (reader.isHeading()) continue;
        const auto& cells = reader.cells();
        const bool isOfDay = reader.section() == "day" || reader.section() == "meta";
        if (isOfDay && cells.front() != "paused") continue;
        for (std::size_t at = 1; at < cells.size(); ++at) sum_ = plusCell(sum_, cells[at]);
    }
}

void CountSum::add(const CountSum& other) { sum_ = other.sum_ ? plus(sum_, *other.sum_, 1) : std::nullopt; }

bool countsFit(std::string_view text) {
    CountSum sum;
    sum.add(text);
    return sum.fits();
}

}  // namespace tapcore
