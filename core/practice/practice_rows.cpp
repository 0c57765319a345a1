#include "core/practice/practice_rows.h"

#include <algorithm>

#include "core/foundation/characters.h"

namespace tapcore::PracticeRows {
namespace {

/// Where the row from `start` ends that may not reach past `limit`: behind the last space, or at the limit.
std::size_t rowEnd(const std::vector<std::string_view>& text, std::size_t start, std::size_t limit) {
    for (std::size_t at = limit; at > start; --at)
        if (text[at - 1] == " ") return at;
    return limit;
}

}  // namespace

std::vector<Row> rows(std::string_view text, std::int64_t columns) {
    const auto all = characters(text);
    const auto width = static_cast<std::size_t>(std::max<std::int64_t>(columns, 1));
    std::vector<Row> rows;
    for (std::size_t start = 0; start < all.size(); start = rows.back().end) {
        const bool isLast = all.size() - start <= width;
        rows.push_back({start, isLast ? all.size() : rowEnd(all, start, start + width)});
    }
    return rows;
}

std::optional<std::size_t> row(std::size_t of, const std::vector<Row>& in) {
    const auto holds = [&](const Row& row) { return row.start <= of && of < row.end; };
    const auto found = std::find_if(in.begin(), in.end(), holds);
    if (found == in.end()) return std::nullopt;
    return static_cast<std::size_t>(found - in.begin());
}

}  // namespace tapcore::PracticeRows
