#include "core/practice/practice_day.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "core/files/table_reader.h"
#include "core/files/text_table.h"
#include "core/foundation/characters.h"
#include "core/foundation/checked.h"
#include "core/foundation/integers.h"

namespace tapcore {
namespace {

constexpr std::string_view noLayout = "-";
constexpr std::string_view bestOf = "best:";
constexpr std::string_view titleWord = "practice";  // Markdown's title line reads as a heading

constexpr Outcome notOfDay = "it is not in the tables Letters and Day";
constexpr Outcome belowZero = "a count is below 0";
constexpr Outcome unknownColumn = "an unknown column";
constexpr Outcome beyondColumns = "a cell beyond the columns";
constexpr Outcome likeRule = "a row of dashes alone cannot be kept";

enum Column : std::size_t { letterColumn, layoutColumn, pressesColumn, missesColumn, timedColumn, msColumn };
constexpr std::array<std::string_view, 6> titles = {"letter", "layout", "presses", "misses", "timed", "ms"};

/// Where each column is in the rows of a table.
using ColumnOrder = std::array<std::size_t, titles.size()>;
constexpr ColumnOrder writtenOrder = {0, 1, 2, 3, 4, 5};

/// Whether a table's cell cannot hold a letter as it is: bars divide cells, and white space at their ends is
/// lost.
bool needsName(std::string_view letter) {
    return letter.find('|') != std::string_view::npos || trimmedWhiteSpace(letter).size() != letter.size();
}

std::string letterCell(const std::string& letter) {
    return needsName(letter) ? characterName(letter) : letter;
}

std::optional<std::string> readLetter(std::string_view cell) {
    if (isSingleCharacter(cell)) return std::string(cell);
    auto named = namedCharacter(cell);
    if (!named || !needsName(*named)) return std::nullopt;
    return named;
}

/// Where a title is in a header line; behind all cells when it is not there.
std::size_t columnOf(std::string_view title, const Cells& cells) {
    return static_cast<std::size_t>(std::find(cells.begin(), cells.end(), title) - cells.begin());
}

/// The places that a header line gives its columns; a title that is not there gets a place behind all cells.
/// Nothing for a row that is no header.
std::optional<ColumnOrder> readHeader(const Cells& cells) {
    const auto isInteger = [](std::string_view cell) { return parseInteger(cell).has_value(); };
    const auto hasIntegers = std::any_of(cells.begin(), cells.end(), isInteger);
    if (columnOf(titles[letterColumn], cells) == cells.size() || hasIntegers) return std::nullopt;
    ColumnOrder places{};
    std::transform(titles.begin(), titles.end(), places.begin(),
                   [&](std::string_view title) { return columnOf(title, cells); });
    return places;
}

/// The number of a column, 0 for a column that the table has not; nothing when the cell is no number.
std::optional<std::int64_t> readNumber(const Cells& cells, std::size_t place, std::size_t columns) {
    if (place >= columns) return 0;
    return place < cells.size() ? parseInteger(cells[place]) : std::nullopt;
}

/// Reads the rows of the Letters tables, whose header lines give the order of their columns.
class LetterRows {
  public:
    Outcome read(PracticeDay& day, const Cells& cells) {
        if (const auto header = readHeader(cells)) {
            places_ = *header;
            columns_ = cells.size();
            return std::all_of(cells.begin(), cells.end(), isTitle) ? used : unknownColumn;
        }
        if (cells.size() < columns_) return "a row of Letters has a cell for each column";
        const auto letter = readLetter(cells[places_[letterColumn]]);
        if (!letter) return "the letter is not one character";
        const auto presses = readNumber(cells, places_[pressesColumn], columns_);
        const auto misses = readNumber(cells, places_[missesColumn], columns_);
        const auto timed = readNumber(cells, places_[timedColumn], columns_);
        const auto milliseconds = readNumber(cells, places_[msColumn], columns_);
        if (!presses || !misses || !timed || !milliseconds) return notNumbers;
        if (std::min({*presses, *misses, *timed, *milliseconds}) < 0) return belowZero;
        day.add(layoutIn(cells), *letter, {*presses, *misses, *timed, *milliseconds, 1});
        return cells.size() == columns_ ? used : beyondColumns;
    }

  private:
    static bool isTitle(std::string_view cell) {
        return std::find(titles.begin(), titles.end(), cell) != titles.end();
    }

    std::string layoutIn(const Cells& cells) const {
        const std::size_t place = places_[layoutColumn];
        return place >= columns_ || cells[place] == noLayout ? "" : std::string(cells[place]);
    }

    ColumnOrder places_ = writtenOrder;
    std::size_t columns_ = titles.size();
};

bool isNumeric(std::string_view key) {
    return key == "seconds" || key == "lessons" || key == "best" || key.starts_with(bestOf);
}

void setNumber(PracticeDay& day, std::string_view key, std::int64_t number) {
    if (key.starts_with(bestOf)) day.bests[std::string(key.substr(bestOf.size()))] = number;
    else (key == "seconds" ? day.seconds : key == "lessons" ? day.lessons : day.best) = number;
}

Outcome setValue(PracticeDay& day, std::string_view key, std::string_view value) {
    if (isNumeric(key)) {
        const auto number = parseInteger(value);
        if (!number) return notNumbers;
        if (*number < 0) return belowZero;
        setNumber(day, key, *number);
    } else if (key == "layout") {
        day.layout = value;
    } else if (isRuleCell(key) && isRuleCell(value)) {
        return likeRule;
    } else {
        day.otherMeta[std::string(key)] = value;
    }
    return used;
}

/// Reads the rows of the Day tables, which may have their two columns in either order and others besides.
class DayRows {
  public:
    Outcome read(PracticeDay& day, const Cells& cells) {
        if (const auto header = headerOf(cells)) {
            columns_ = *header;
            return cells.size() == 2 ? used : unknownColumn;
        }
        if (cells.size() < columns_.count) return "a row of Day has a cell for each column";
        const Outcome outcome = setValue(day, cells[columns_.key], cells[columns_.value]);
        return outcome.empty() && cells.size() > columns_.count ? beyondColumns : outcome;
    }

  private:
    struct Columns {
        std::size_t key = 0;
        std::size_t value = 1;
        std::size_t count = 2;
    };

    static std::optional<Columns> headerOf(const Cells& cells) {
        const Columns header{columnOf("key", cells), columnOf("value", cells), cells.size()};
        if (header.key == header.count || header.value == header.count) return std::nullopt;
        return header;
    }

    Columns columns_;
};

bool isKnownHeading(std::string_view section) {
    return section == "letters" || section == "day" || section == titleWord;
}

std::string decimal(std::int64_t number) { return std::to_string(number); }

TextTable lettersTable(const PracticeDay& day) {
    TextTable table{{titles.begin(), titles.end()}, {false, false, true, true, true, true}, {}};
    for (const auto& [layout, letters] : day.byLayout)
        for (const auto& [letter, stats] : letters)
            table.rows.push_back({letterCell(letter), layout.empty() ? std::string(noLayout) : layout,
                                  decimal(stats.presses), decimal(stats.misses), decimal(stats.timed),
                                  decimal(stats.milliseconds)});
    return table;
}

TextTable dayTable(const PracticeDay& day) {
    TextTable table{{"key", "value"}, {false, false}, {}};
    table.rows = {{"seconds", decimal(day.seconds)}, {"lessons", decimal(day.lessons)}};
    if (day.layout) table.rows.push_back({"layout", *day.layout});
    if (day.best >= 1) table.rows.push_back({"best", decimal(day.best)});
    for (const auto& [layout, best] : day.bests)
        table.rows.push_back({std::string(bestOf).append(layout), decimal(best)});
    for (const auto& [key, value] : day.otherMeta) table.rows.push_back({key, value});
    return table;
}

void addAll(LetterCounts& to, const LetterCounts& counts) {
    for (const auto& [letter, stats] : counts) to[letter].addSameDay(stats);
}

}  // namespace

PracticeDay::PracticeDay(std::string_view text, std::vector<SkippedRow>* skipped) {
    LetterRows letterRows;
    DayRows dayRows;
    const auto outcomeOf = [&](const TableReader& reader) -> Outcome {
        const bool isRow = !reader.isHeading() && !reader.isOther();
        if (reader.isHeading()) {
            letterRows = {};
            dayRows = {};
        }
        if (isRow && reader.section() == "letters") return letterRows.read(*this, reader.cells());
        if (isRow && reader.section() == "day") return dayRows.read(*this, reader.cells());
        return reader.isHeading() && isKnownHeading(reader.section()) ? used : notOfDay;
    };
    using Lines = TableReader::Lines;
    for (TableReader reader(text, skipped ? Lines::all : Lines::ofTables); reader.next();) {
        const Outcome outcome = outcomeOf(reader);
        if (skipped && !outcome.empty()) skipped->push_back(skippedRow(reader, outcome));
    }
}

std::string PracticeDay::text(const Day& day, FileFormat format) const {
    return format.titleLine("Practice " + day.description()) + "\n" + format.heading("Letters") + "\n" +
           lettersTable(*this).render(format) + "\n" + format.heading("Day") + "\n" +
           dayTable(*this).render(format);
}

void PracticeDay::add(const std::string& onLayout, const std::string& letter, const LetterStats& stats) {
    letters[letter].addSameDay(stats);
    byLayout[onLayout][letter].addSameDay(stats);
}

void PracticeDay::merge(const PracticeDay& other) {
    addAll(letters, other.letters);
    for (const auto& [id, counts] : other.byLayout) addAll(byLayout[id], counts);
    addChecked(seconds, other.seconds);
    addChecked(lessons, other.lessons);
    if (!layout) layout = other.layout;
    best = std::max(best, other.best);
    for (const auto& [id, speed] : other.bests) {
        const auto [known, isNew] = bests.emplace(id, speed);
        if (!isNew) known->second = std::max(known->second, speed);
    }
    otherMeta.insert(other.otherMeta.begin(), other.otherMeta.end());
}

LetterCounts PracticeDay::lettersOn(const std::optional<std::string>& onLayout) const {
    if (!onLayout) return letters;
    const auto found = byLayout.find(*onLayout);
    return found == byLayout.end() ? LetterCounts{} : found->second;
}

}  // namespace tapcore
