#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tapcore {

/// A lesson's text broken into rows for a screen.
namespace PracticeRows {

/// Positions of characters: from `start` up to but not with `end`.
struct Row {
    std::size_t start = 0;
    std::size_t end = 0;

    bool operator==(const Row&) const = default;
};

/// Rows of at most `columns` characters (at least 1), each closed by a space where one fits, a longer
/// word cut. An empty text has no rows.
std::vector<Row> rows(std::string_view text, std::int64_t columns);
/// Which row holds a position; nothing when it lies outside all of them.
std::optional<std::size_t> row(std::size_t of, const std::vector<Row>& in);

}  // namespace PracticeRows

}  // namespace tapcore
