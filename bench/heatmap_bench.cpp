// Promise: a heat map of a 104-key board is built from counts in under 20 microseconds.

#include <benchmark/benchmark.h>

#include <algorithm>

#include "core/keyboard/heatmap.h"

namespace {

using namespace tapcore;

constexpr KeyCode keys = 104;

Board fullSizeBoard() {
    Board board{.id = "full", .name = "Full size", .maker = "Generic"};
    for (KeyCode code = 0; code < keys; ++code)
        board.keys.push_back({.id = "key-" + std::to_string(code),
                              .keyCode = code,
                              .x = static_cast<double>(code % 18),
                              .y = static_cast<double>(code / 18)});
    return board;
}

Legends legends() {
    Legends legends;
    for (KeyCode code = 0; code < keys; ++code) {
        const std::string letter(1, static_cast<char>('a' + code % 26));
        legends[code] = {letter, letter};
    }
    return legends;
}

/// A year's counts: few keys hold most presses, as in any language.
Tally::KeyCounts yearOfCounts() {
    Tally::KeyCounts counts;
    for (KeyCode code = 0; code < keys; ++code) counts[code] = 400'000 / (code % 37 + 1) + code;
    return counts;
}

void heatmap(benchmark::State& state) {
    const Board board = fullSizeBoard();
    const Legends printed = legends();
    const Tally::KeyCounts counts = yearOfCounts();
    for (auto _ : state) benchmark::DoNotOptimize(Heatmap(board, printed, counts, {57}));
}
BENCHMARK(heatmap)->Unit(benchmark::kMicrosecond);

/// The yardstick: copying the keys and legends that the cells hold, and sorting the counts.
void copyAndSort(benchmark::State& state) {
    const Board board = fullSizeBoard();
    const Legends printed = legends();
    const Tally::KeyCounts counts = yearOfCounts();
    for (auto _ : state) {
        std::vector<Heatmap::Cell> cells;
        cells.reserve(board.keys.size());
        auto legend = printed.begin();
        for (const auto& key : board.keys) cells.push_back({.key = key, .legend = (legend++)->second});
        std::vector<std::int64_t> sorted;
        for (const auto& item : counts) sorted.push_back(item.second);
        std::sort(sorted.begin(), sorted.end());
        benchmark::DoNotOptimize(cells);
        benchmark::DoNotOptimize(sorted);
    }
}
BENCHMARK(copyAndSort)->Unit(benchmark::kMicrosecond);

}  // namespace
