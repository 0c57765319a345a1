// Care of ten years of one machine's files: rollups that are all current against listing and reading what
// they stand on, and conversion in megabytes of text a second. The folder is in memory where there is such a
// place, so that the disk's flushing is not measured.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/made_up_days.h"
#include "core/files/store.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"

namespace {

namespace fs = std::filesystem;
using tapcore::Day;
using tapcore::FileFormat;
using tapcore::Store;

const tapcore::Calendar utc("UTC");
const Day today(2026, 9, 20);
constexpr std::int64_t tenYears = 3652;

class TenYears {
  public:
    TenYears() {
        const fs::path memory = "/dev/shm";
        std::string name =
            ((fs::exists(memory) ? memory : fs::temp_directory_path()) / "tappora-XXXXXX").string();
        if (!mkdtemp(name.data())) tapcore::fatal("no folder for the benchmark");
        path = name;
        fs::create_directories(path / "days");
        const tapcore::DayFile file = tappora::bench::busyDay();
        for (std::int64_t before = 1; before <= tenYears; ++before) {
            const Day day = today.adding(-before, utc);
            const std::string text = file.text(FileFormat::org, day);
            std::ofstream(path / "days" / (day.description() + ".org")) << text;
            bytes += static_cast<std::int64_t>(text.size());
        }
        Store(path, FileFormat::org).refreshRollups(today);
    }
    TenYears(const TenYears&) = delete;
    TenYears& operator=(const TenYears&) = delete;
    ~TenYears() { fs::remove_all(path); }

    fs::path path;
    std::int64_t bytes = 0;
};

const TenYears& folder() {
    static const TenYears made;
    return made;
}

void refreshCurrentRollups(benchmark::State& state) {
    const Store store(folder().path, FileFormat::org);
    for (auto _ : state) benchmark::DoNotOptimize(store.refreshRollups(today));
}

void readMonths() {
    for (const std::string& name : tapcore::namesIn(folder().path / "months"))
        benchmark::DoNotOptimize(tapcore::readFile(folder().path / "months" / name));
}

void listAndReadMonths(benchmark::State& state) {
    folder();
    for (auto _ : state) {
        benchmark::DoNotOptimize(tapcore::namesIn(folder().path / "days"));
        readMonths();
    }
}

/// Listing as "ls -l" does: a rollup is out of date when one of its days was written after it.
void listWithTimesAndReadMonths(benchmark::State& state) {
    for (auto _ : state) {
        const tapcore::FolderTimes times(folder().path / "days");
        for (const std::string& name : tapcore::namesIn(folder().path / "days"))
            benchmark::DoNotOptimize(times.lastWritten(name));
        readMonths();
    }
}

void convert(benchmark::State& state) {
    FileFormat written = FileFormat::markdown;
    for (auto _ : state) {
        Store(folder().path, written).convert();
        written = written == FileFormat::org ? FileFormat::markdown : FileFormat::org;
    }
    state.SetBytesProcessed(state.iterations() * folder().bytes);
}

void readAndCopy(benchmark::State& state) {
    const fs::path copy = folder().path / "copy";
    for (auto _ : state) {
        fs::copy(folder().path / "days", copy, fs::copy_options::recursive);
        fs::remove_all(copy);
    }
    state.SetBytesProcessed(state.iterations() * folder().bytes);
}

BENCHMARK(listAndReadMonths)->Unit(benchmark::kMillisecond);
BENCHMARK(listWithTimesAndReadMonths)->Unit(benchmark::kMillisecond);
BENCHMARK(refreshCurrentRollups)->Unit(benchmark::kMillisecond);
BENCHMARK(readAndCopy)->Unit(benchmark::kMillisecond);
BENCHMARK(convert)->Iterations(2)->Unit(benchmark::kMillisecond);

}  // namespace
