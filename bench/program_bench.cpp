// The program as a whole process, from start to end, in processor time: a summary of a week beside starting
// nothing, of long periods and an export beside reading the same files with cat (the export may take three
// times as long), a year of three machines as a page beside its summary (five times), and pictures of a year
// of one machine, which may take 30 ms more than reading it.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "bench/made_up_days.h"
#include "core/files/day_file.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"

namespace {

namespace fs = std::filesystem;
using tapcore::Day;

const tapcore::Calendar utc("UTC");
const Day lastDay(2026, 9, 20);

const std::vector<std::string> threeMachines = {"desk", "laptop", "studio"};

/// A data folder of so many days, up to the last one, of some machines; gone at the program's end.
class MadeUpFolder {
  public:
    MadeUpFolder(std::int64_t days, const std::vector<std::string>& machines) {
        std::string name = (fs::temp_directory_path() / "tappora-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) tapcore::fatal("no folder for the benchmark");
        path = name;
        const tapcore::DayFile file = tappora::bench::busyDay();
        for (const std::string& machine : machines) {
            tapcore::writeFile(path / machine / ".keys-mac", R"({"id": "x", "name": "x"})").requireSafe();
            for (std::int64_t before = 0; before < days; ++before)
                put(machine, lastDay.adding(-before, utc), file);
        }
    }
    MadeUpFolder(const MadeUpFolder&) = delete;
    MadeUpFolder& operator=(const MadeUpFolder&) = delete;
    ~MadeUpFolder() { fs::remove_all(path); }

    fs::path path;
    std::vector<std::string> files;

  private:
    void put(const std::string& machine, const Day& day, const tapcore::DayFile& file) {
        const fs::path place = path / machine / "days" / (day.description() + ".org");
        fs::create_directories(place.parent_path());
        FILE* written = std::fopen(place.c_str(), "w");
        const std::string text = file.text(tapcore::FileFormat::org, day);
        if (!written || std::fwrite(text.data(), 1, text.size(), written) != text.size() ||
            std::fclose(written) != 0)
            tapcore::fatal("no file for the benchmark");
        files.push_back(place.string());
    }
};

const MadeUpFolder& folderOf(std::int64_t days) {
    static std::map<std::int64_t, MadeUpFolder> folders;
    return folders.try_emplace(days, days, threeMachines).first->second;
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// The processor time, user's and system's, of a process that is run to its end, its output thrown away.
double processorTime(std::vector<std::string> arguments) {
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    if (posix_spawnp(&process, pointers[0], &actions, nullptr, pointers.data(), environ) != 0)
        tapcore::fatal("cannot start " + arguments[0]);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage used{};
    wait4(process, &status, 0, &used);
    if (status != 0) tapcore::fatal("failed: " + arguments[0]);
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

void measure(benchmark::State& state, const std::vector<std::string>& arguments) {
    for (auto _ : state) state.SetIterationTime(processorTime(arguments));
}

void startNothing(benchmark::State& state) { measure(state, {"true"}); }

void summaryOfDays(benchmark::State& state) {
    const std::int64_t days = state.range(0);
    measure(state, {PROGRAMS "/tappora", "summary", "--folder", folderOf(days).path.string(), "--to",
                    lastDay.description(), "--from", lastDay.adding(1 - days, utc).description()});
}

void catOfDays(benchmark::State& state) {
    std::vector<std::string> arguments = {"cat"};
    const auto& files = folderOf(state.range(0)).files;
    arguments.insert(arguments.end(), files.begin(), files.end());
    measure(state, arguments);
}

void exportOfDays(benchmark::State& state) {
    measure(state, {PROGRAMS "/tappora", "export", "--folder", folderOf(state.range(0)).path.string()});
}

void pageOfDays(benchmark::State& state) {
    const fs::path folder = folderOf(state.range(0)).path;
    const fs::path page = folder / "page.html";
    measure(state, {PROGRAMS "/tappora", "report", "--folder", folder.string(), "--to", lastDay.description(),
                    "--from", lastDay.adding(1 - state.range(0), utc).description(), "-o", page.string()});
    state.counters["bytes"] = static_cast<double>(fs::file_size(page));
}

const MadeUpFolder& yearFolder() {
    static const MadeUpFolder folder(365, {"desk"});
    return folder;
}

/// A command over a year of one machine.
std::vector<std::string> ofYear(const std::string& command) {
    return {PROGRAMS "/tappora",
            command,
            "--folder",
            yearFolder().path.string(),
            "--to",
            lastDay.description(),
            "--from",
            lastDay.adding(-364, utc).description()};
}

void readingOfYear(benchmark::State& state) {
    auto arguments = ofYear("summary");
    arguments.push_back("--json");
    measure(state, arguments);
}

void pictureOfYear(benchmark::State& state, const std::string& command) {
    auto arguments = ofYear(command);
    const fs::path picture = yearFolder().path / "map.svg";
    for (const char* more : {"--board", "full-size-ansi", "--output"}) arguments.push_back(more);
    arguments.push_back(picture.string());
    measure(state, arguments);
}

BENCHMARK(readingOfYear)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pictureOfYear, heatmap, "heatmap")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pictureOfYear, fingers, "fingers")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(startNothing)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(summaryOfDays)
    ->Arg(7)
    ->Arg(365)
    ->Arg(400)
    ->Arg(800)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(pageOfDays)->Arg(365)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(exportOfDays)->Arg(400)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(catOfDays)->Arg(7)->Arg(400)->Arg(800)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
