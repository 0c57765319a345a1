#include "app/common/ranking.h"

#include <algorithm>

#include "core/counting/chords.h"

namespace tappora {

std::vector<KeyRow> topKeys(const tapcore::Tally::KeyCounts& counts, const tapcore::Legends& legends,
                            std::size_t limit) {
    std::vector<std::pair<tapcore::KeyCode, std::int64_t>> ranked(counts.begin(), counts.end());
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& one, const auto& other) { return one.second > other.second; });
    ranked.resize(std::min(limit, ranked.size()));
    std::vector<KeyRow> rows;
    for (const auto& [code, count] : ranked)
        rows.push_back({code, tapcore::Chords::name(code, legends), count});
    return rows;
}

}  // namespace tappora
