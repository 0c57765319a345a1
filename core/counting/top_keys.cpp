#include "core/counting/top_keys.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/counting/chords.h"

namespace tapcore {

std::vector<KeyRow> topKeys(const Tally::KeyCounts& counts, const Legends& legends, std::size_t limit) {
    std::vector<std::pair<KeyCode, std::int64_t>> ranked;
    std::copy_if(counts.begin(), counts.end(), std::back_inserter(ranked),
                 [](const auto& key) { return key.second >= 1; });
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& one, const auto& other) { return one.second > other.second; });
    ranked.resize(std::min(limit, ranked.size()));
    std::vector<KeyRow> rows;
    for (const auto& [code, count] : ranked) rows.push_back({code, Chords::name(code, legends), count});
    return rows;
}

}  // namespace tapcore
