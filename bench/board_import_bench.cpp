// Promise: importing any keyboard file takes under 10 milliseconds.

#include <benchmark/benchmark.h>

#include <nlohmann/json.hpp>

#include <string>

#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"
#include "core/keyboard/catalog.h"
#include "core/keyboard/import/board/board_import.h"
#include "core/keyboard/import/text/lenient_json.h"

namespace {

using namespace tapcore;

std::string sample(const std::string& name) { return readFile(SAMPLES "/" + name).text; }

/// The most keys that a file may have, all of them with legends to be looked up.
std::string largest() {
    std::string rows;
    for (int row = 0; row < 50; ++row) {
        rows += "[";
        for (int key = 0; key < 20; ++key)
            rows += std::string(key ? "," : "") + "{w:1.25,c:\"#cccccc\"},\"Key\\n&amp; more\"";
        rows += "],\n";
    }
    return rows;
}

void import(benchmark::State& state, const std::string& text) {
    const auto boards = Catalog(RESOURCES "/Boards", "").boards;
    for (auto _ : state) benchmark::DoNotOptimize(importBoard(text, boards, {.layout = {}}));
}
BENCHMARK_CAPTURE(import, sixty, sample("sixty-raw.txt"))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(import, full_size, sample("full-size-german.json"))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(import, thumbs, sample("thumbs-raw.txt"))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(import, via, sample("via-sixty.json"))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(import, qmk, sample("qmk-keyboard.json"))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(import, largest, largest())->Unit(benchmark::kMicrosecond);

/// The yardstick: parsing the file and nothing else.
void parse(benchmark::State& state, const std::string& text) {
    for (auto _ : state) benchmark::DoNotOptimize(parseLenientJson(text));
}
BENCHMARK_CAPTURE(parse, full_size, sample("full-size-german.json"))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(parse, largest, largest())->Unit(benchmark::kMicrosecond);

}  // namespace
