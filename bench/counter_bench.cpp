// The press path beside its yardstick, counting into hash maps: at least 15 times faster is promised. Both
// count minute after minute, as the counting clock has it: what was counted is drained once a minute, and the
// next minute begins with what that leaves empty. Draining itself is not timed.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <random>
#include <unordered_map>
#include <vector>

#include "core/counting/counter.h"

namespace {

using tapcore::Counter;
using tapcore::KeyCode;
using tapcore::Modifiers;
using tapcore::Tally;

struct Press {
    KeyCode keyCode;
    Modifiers modifiers;
};

/// So many presses as people make them: some fifty keys, one in twenty with cmd.
std::vector<Press> typing(std::int64_t count) {
    std::mt19937 random(1);
    std::vector<Press> all(static_cast<std::size_t>(count));
    for (Press& press : all)
        press = {static_cast<KeyCode>(random() % 48), random() % 20 == 0 ? Modifiers::command : Modifiers{}};
    return all;
}

struct HashMaps {
    std::unordered_map<KeyCode, std::int64_t> keys;
    std::unordered_map<Tally::Chord, std::int64_t> chords;
    std::int64_t thisMinute = 0;

    void press(KeyCode keyCode, Modifiers modifiers) {
        ++keys[keyCode];
        ++thisMinute;
        if (modifiers.isChord()) ++chords[{modifiers, keyCode}];
    }
    void discard() { *this = {}; }
};

/// Counts the presses of a minute into an emptied `Counting`, again and again.
template <class Counting>
void minute(benchmark::State& state) {
    const auto presses = typing(state.range(0));
    Counting counting;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        for (const Press& press : presses) counting.press(press.keyCode, press.modifiers);
        benchmark::DoNotOptimize(counting);
        benchmark::ClobberMemory();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(taken.count());
        counting.discard();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// A quick typist's minute, an unhurried one's, and far more than anybody's.
BENCHMARK(minute<HashMaps>)->Arg(400)->Arg(150)->Arg(4096)->UseManualTime();
BENCHMARK(minute<Counter>)->Arg(400)->Arg(150)->Arg(4096)->UseManualTime();

}  // namespace
