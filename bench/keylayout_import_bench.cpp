// Importing a `.keylayout` file: under 10 ms, for a file several times as large as those that editors write.
// The yardstick is walking its bytes once.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>

#include "core/keyboard/import/keylayout/keylayout_import.h"

namespace {

std::string number(int value) { return std::to_string(value); }

/// Two sets of 16 key maps of 127 keys, every fourth an action, and 200 actions of 20 states: 650 kB.
std::string largeFile() {
    std::string text =
        "<?xml version=\"1.1\" encoding=\"UTF-8\"?>\n<keyboard group=\"126\" id=\"-9000\" name=\"Large\" "
        "maxout=\"4\">\n"
        "<layouts><layout first=\"0\" last=\"17\" modifiers=\"m\" mapSet=\"s0\"/>"
        "<layout first=\"18\" last=\"18\" modifiers=\"m\" mapSet=\"s1\"/></layouts>\n"
        "<modifierMap id=\"m\" defaultIndex=\"0\">"
        "<keyMapSelect mapIndex=\"1\"><modifier keys=\"anyShift caps?\"/></keyMapSelect></modifierMap>\n";
    for (int set = 0; set < 2; ++set) {
        text += "<keyMapSet id=\"s" + number(set) + "\">\n";
        for (int map = 0; map < 16; ++map) {
            text += "  <keyMap index=\"" + number(map) + "\">\n";
            for (int code = 0; code < 127; ++code)
                text += "    <key code=\"" + number(code) +
                        (code % 4 == 0 ? "\" action=\"a" : "\" output=\"&#x004") + number(code % 9 + 1) +
                        (code % 4 == 0 ? "\"/>\n" : ";\"/>\n");
            text += "  </keyMap>\n";
        }
        text += "</keyMapSet>\n";
    }
    text += "<actions>\n";
    for (int action = 0; action < 200; ++action) {
        text += "  <action id=\"a" + number(action) + "\">\n    <when state=\"none\" output=\"a\"/>\n";
        for (int state = 0; state < 20; ++state)
            text += "    <when state=\"dead key " + number(state) + "\" output=\"&#x00e1;\"/>\n";
        text += "  </action>\n";
    }
    return text + "</actions>\n</keyboard>\n";
}

void import(benchmark::State& state) {
    const std::string file = largeFile();
    for (auto _ : state) benchmark::DoNotOptimize(tapcore::importKeylayout(file));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.size()));
}
BENCHMARK(import)->Unit(benchmark::kMillisecond);

void walkItsBytes(benchmark::State& state) {
    const std::string file = largeFile();
    for (auto _ : state) benchmark::DoNotOptimize(std::count(file.begin(), file.end(), '"'));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.size()));
}
BENCHMARK(walkItsBytes)->Unit(benchmark::kMillisecond);

}  // namespace
