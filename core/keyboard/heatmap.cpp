#include "core/keyboard/heatmap.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "core/counting/key_face.h"
#include "core/foundation/characters.h"
#include "core/foundation/checked.h"

namespace tapcore {
namespace {

/// What a heat map is made of.
struct Source {
    const Legends& legends;
    const Tally::KeyCounts& counts;
    const std::set<KeyCode>& leftOut;

    bool isOff(KeyCode code) const { return leftOut.contains(code); }
};

/// The counts to rank: those of the board's keys, in its order, that have one and are not left out.
std::vector<std::int64_t> rankingList(const Board& board, const Source& source) {
    std::vector<std::int64_t> list;
    list.reserve(board.keys.size());
    for (const Board::Key& key : board.keys) {
        const std::int64_t* count = key.keyCode ? source.counts.find(*key.keyCode) : nullptr;
        if (count && !source.isOff(*key.keyCode)) list.push_back(*count);
    }
    return list;
}

std::int64_t countOffBoard(const Board& board, const Tally::KeyCounts& counts) {
    std::vector<KeyCode> codes;
    codes.reserve(board.keys.size());
    for (const Board::Key& key : board.keys)
        if (key.keyCode) codes.push_back(*key.keyCode);
    std::sort(codes.begin(), codes.end());
    std::int64_t sum = 0;
    for (const auto& [code, count] : counts)
        if (!std::binary_search(codes.begin(), codes.end(), code)) addChecked(sum, count);
    return sum;
}

template <class Rank>
Heatmap::Cell cellOf(const Board::Key& key, const Source& source, const Rank& rank) {
    Heatmap::Cell cell{.key = key, .legend = {}};
    if (!key.keyCode) return cell;
    const auto legend = source.legends.find(*key.keyCode);
    if (legend != source.legends.end()) cell.legend = legend->second;
    cell.count = source.counts.valueOr(*key.keyCode, 0);
    cell.off = source.isOff(*key.keyCode);
    cell.step = cell.off ? 0 : rank(cell.count);
    return cell;
}

std::int64_t clampedStep(double heat) {
    return static_cast<std::int64_t>(std::clamp(std::ceil(heat), 1.0, static_cast<double>(Heatmap::steps)));
}

/// Ranks counts among the sorted ones kept.
class Ranking {
  public:
    explicit Ranking(std::vector<std::int64_t> counts) : kept_(std::move(counts)) {
        std::erase_if(kept_, [](std::int64_t count) { return count < 1; });
        std::sort(kept_.begin(), kept_.end());
        if (kept_.empty()) return;
        min_ = static_cast<double>(kept_.front());
        span_ = std::log(static_cast<double>(kept_.back()) / min_);
    }

    std::int64_t operator()(std::int64_t count) const {
        if (kept_.empty() || count < 1) return 0;
        const auto above = std::upper_bound(kept_.begin(), kept_.end(), count);
        const double q = static_cast<double>(above - kept_.begin()) / static_cast<double>(kept_.size());
        if (span_ == 0) return clampedStep((q * 0.75 + 0.25) * 5);
        const double size = std::log(static_cast<double>(count) / min_) / span_;
        return clampedStep((q * 0.75 + size * 0.25) * 5);
    }

  private:
    std::vector<std::int64_t> kept_;
    double min_ = 0;
    double span_ = 0;  ///< how far the largest is above the smallest, as a logarithm
};

/// Rounded half away from zero. Counts below 0 in a damaged file can make it any number, so it is kept in
/// range.
std::int64_t percentOf(std::int64_t count, std::int64_t total) {
    if (total == 0) return 0;
    constexpr double limit = 1e18;
    const double percent = std::round(static_cast<double>(count) / static_cast<double>(total) * 100);
    return static_cast<std::int64_t>(std::clamp(percent, -limit, limit));
}

/// The cells by count, highest first, those of equal counts by id.
std::vector<const Heatmap::Cell*> byCount(const std::vector<Heatmap::Cell>& cells) {
    std::vector<const Heatmap::Cell*> sorted;
    sorted.reserve(cells.size());
    for (const Heatmap::Cell& cell : cells) sorted.push_back(&cell);
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto* a, const auto* b) {
        return a->count != b->count ? a->count > b->count : a->id() < b->id();
    });
    return sorted;
}

std::string nameOf(const Heatmap::Cell& cell) {
    const std::string& text = cell.legend.empty() ? cell.id() : cell.legend[0];
    const std::string_view first = firstCharacters(text, 1);
    return uppercased(first) + text.substr(first.size());
}

}  // namespace

std::vector<std::string> Heatmap::Cell::faceLegend() const {
    return legend.size() == 2 ? KeyFace::lines(legend) : legend;
}

Heatmap::Heatmap(const Board& board, const Legends& legends, const Tally::KeyCounts& counts,
                 const std::set<KeyCode>& leftOut)
    : offBoard(countOffBoard(board, counts)) {
    const Source source{legends, counts, leftOut};
    auto list = rankingList(board, source);
    if (!list.empty()) busiest = *std::max_element(list.begin(), list.end());
    const Ranking rank(std::move(list));
    cells.reserve(board.keys.size());
    for (const Board::Key& key : board.keys) cells.push_back(cellOf(key, source, rank));
}

std::int64_t Heatmap::total() const {
    std::int64_t sum = 0;
    for (const Cell& cell : cells)
        if (!cell.off) addChecked(sum, cell.count);
    return sum;
}

std::vector<Heatmap::TopKey> Heatmap::top(std::int64_t n) const {
    std::vector<TopKey> top;
    std::unordered_set<KeyCode> listed;
    const std::int64_t all = total();
    for (const Cell* cell : byCount(cells)) {
        if (static_cast<std::int64_t>(top.size()) >= n) break;
        const auto code = cell->key.keyCode;
        if (cell->off || cell->count < 1 || !code || !listed.insert(*code).second) continue;
        top.push_back({name(*code).value_or(""), cell->count, percentOf(cell->count, all), code});
    }
    return top;
}

std::optional<std::string> Heatmap::name(KeyCode code) const {
    for (const Cell& cell : cells)
        if (cell.key.keyCode == code) return nameOf(cell);
    return std::nullopt;
}

std::function<std::int64_t(std::int64_t count)> Heatmap::ranked(std::vector<std::int64_t> counts) {
    return Ranking(std::move(counts));
}

std::int64_t Heatmap::step(std::int64_t count, std::int64_t busiest) {
    if (count < 1 || busiest < 1) return 0;
    const auto scaled = [](std::int64_t value) { return std::log(1 + static_cast<double>(value)); };
    return clampedStep(scaled(count) / scaled(busiest) * static_cast<double>(steps));
}

}  // namespace tapcore
