// Promise: the assistant's search over ten years of three machines takes at most three times as long as grep
// -ric of the same text over the same files; its tools over a week take under 5 milliseconds.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdio>
#include <nlohmann/json.hpp>

#include "core/assistant/assistant_tools.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"

namespace {

namespace fs = std::filesystem;
using namespace tapcore;

const Calendar utc("UTC");
const Day lastDay(2026, 9, 20);

/// A day of 17 kB: 40 keys in each of 13 hours, and some shortcuts.
DayFile busyDay() {
    DayFile file;
    for (std::int64_t hour = 8; hour < 21; ++hour) {
        for (KeyCode key = 0; key < 40; ++key) file.tally.add(key, hour, 10 + key * hour);
        for (KeyCode key = 0; key < 4; ++key) file.tally.add({Modifiers::command, key}, hour, 3);
    }
    return file;
}

/// A data folder of so many days of three machines; gone at the program's end.
class MadeUpFolder {
  public:
    explicit MadeUpFolder(std::int64_t days) {
        std::string name = (fs::temp_directory_path() / "tappora-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) fatal("no folder for the benchmark");
        path = name;
        const DayFile file = busyDay();
        for (const char* machine : {"desk", "laptop", "studio"}) {
            writeFile(path / machine / ".keys-mac", R"({"id": "x", "name": "x"})").requireSafe();
            makeFolders(path / machine / "days").requireSafe();
            for (std::int64_t before = 0; before < days; ++before)
                put(path / machine / "days", lastDay.adding(-before, utc), file);
        }
    }
    MadeUpFolder(const MadeUpFolder&) = delete;
    MadeUpFolder& operator=(const MadeUpFolder&) = delete;
    ~MadeUpFolder() { fs::remove_all(path); }

    AssistantTools tools() const { return AssistantTools::over(Store(path, FileFormat::org), lastDay, {}); }

    fs::path path;

  private:
    /// Not flushed to disk as data files are: there are 11,000.
    static void put(const fs::path& folder, const Day& day, const DayFile& file) {
        FILE* written = std::fopen((folder / (day.description() + ".org")).c_str(), "w");
        const std::string text = file.text(FileFormat::org, day);
        if (!written || std::fwrite(text.data(), 1, text.size(), written) != text.size() ||
            std::fclose(written) != 0)
            fatal("no file for the benchmark");
    }
};

const MadeUpFolder& tenYears() {
    static const MadeUpFolder folder(3653);
    return folder;
}

void call(benchmark::State& state, const char* tool, const nlohmann::json& arguments) {
    const AssistantTools tools = tenYears().tools();
    for (auto _ : state) benchmark::DoNotOptimize(tools.run(tool, arguments));
}

void grep(benchmark::State& state, const std::string& text) {
    const std::string command = "cd '" + tenYears().path.string() + "' && grep -ric --include='*.org' '" +
                                text + "' desk/days laptop/days studio/days >/dev/null; true";
    for (auto _ : state)
        if (std::system(command.c_str()) != 0) fatal("cannot run grep");
}

// What every file has in many lines, what each has in one, and what none has.
BENCHMARK_CAPTURE(call, searchOfMany, "search", {{"query", "CMD"}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(grep, grepOfMany, "CMD")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(call, searchOfOne, "search", {{"query", "Chords"}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(grep, grepOfOne, "Chords")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(call, searchOfNone, "search", {{"query", "colemak"}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(grep, grepOfNone, "colemak")->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_CAPTURE(call, summaryOfAWeek, "summary", nlohmann::json::object())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(call, readADay, "read_file", {{"path", "days/2026-09-20.org"}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(call, listAMonth, "list_files", {{"folder", "days"}, {"contains", "2026-09"}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
