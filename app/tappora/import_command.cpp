#include <fmt/format.h>

#include <filesystem>
#include <optional>
#include <string>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/data_folder.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/long_work.h"
#include "app/tappora/commands.h"
#include "core/files/row_import.h"
#include "core/files/rows_read.h"
#include "core/files/store.h"
#include "core/foundation/file_io.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Differing;
using tapcore::MachineDay;
using tapcore::RowForm;
using tapcore::RowImport;

constexpr std::size_t largest = std::size_t{256} << 20;  ///< of a file of rows, in bytes

struct ImportOptions {
    std::string file;
    bool csv = false;
    bool json = false;
    bool dryRun = false;
    std::optional<std::string> differing;
    FolderOptions folder;

    std::string shown() const { return file == "-" ? "standard input" : file; }
};

std::optional<RowForm> formOf(const ImportOptions& options) {
    if (options.csv) return RowForm::csv;
    return options.json ? std::optional(RowForm::json) : std::nullopt;
}

Differing ruleOf(const ImportOptions& options) {
    const auto rule = tapcore::differingWords.find(options.differing.value_or("refuse"));
    if (!rule)
        throw UsageError("--differing: " +
                         noSuch("rule", *options.differing, tapcore::differingWords.names()));
    return *rule;
}

std::string days(std::size_t count) { return tapcore::counted(count, "day", "days"); }

/// The rows of the file; Failure that names the ones that cannot be used.
std::map<MachineDay, tapcore::DayFile> rowsOf(const ImportOptions& options) {
    const auto file = tapcore::readFile(options.file == "-" ? "/dev/stdin" : options.file, largest);
    if (file.failure()) throw Failure(options.shown(), file.failure().message());
    tapcore::RowsRead rows = tapcore::readRows(file.text, formOf(options));
    for (const tapcore::SkippedRow& row : rows.skipped)
        complain(described({options.shown(), row.line, row.why}));
    if (rows.unusable > 0)
        throw Failure(options.shown(), fmt::format("{} cannot be used, so nothing is imported",
                                                   tapcore::counted(rows.unusable, "row", "rows")));
    return std::move(rows.days);
}

std::string described(const MachineDay& at) {
    return at.day.description() + (at.machine.empty() ? "" : " of " + harmlessLine(at.machine));
}

/// Names the days that are here with other counts, and files that cannot be read: at most a screen of them.
void requireSound(const RowImport& plan, const ImportOptions& options, Differing rule) {
    complainOf(plan.unread);
    if (!plan.unread.empty()) throw Failure(options.shown(), "nothing is imported");
    for (std::size_t i = 0; i < plan.differing.size() && i < tapcore::RowsRead::mostNamed; ++i)
        complain(
            fmt::format("{}: {} is here with other counts", options.shown(), described(plan.differing[i])));
    if (!plan.isSound(rule))
        throw Failure(options.shown(),
                      fmt::format("{} here with other counts, so nothing is imported; with --differing skip "
                                  "the others are, with --differing add all of them",
                                  tapcore::counted(plan.differing.size(), "day is", "days are")));
}

void printDone(const RowImport& plan, const ImportOptions& options) {
    std::string text = plan.added.empty() ? "nothing is new"
                                          : fmt::format("{} {}", days(plan.added.size()),
                                                        options.dryRun ? "would be added" : "added");
    if (!plan.known.empty())
        text += fmt::format("; {} here already", tapcore::counted(plan.known.size(), "day is", "days are"));
    if (!plan.differing.empty()) text += fmt::format("; {} left out", days(plan.differing.size()));
    print(harmlessLine(options.shown()) + ": " + text + "\n");
}

/// Adds the rows that are new. After a failure it says what becomes of those that are not added yet.
void add(const tapcore::Store& store, const RowImport& plan) {
    LongWork work("importing");
    try {
        work.requireDone(tapcore::addRows(store, plan, work.progress()));
    } catch (const fs::filesystem_error& error) {
        const fs::path note = tapcore::importNote(store.base());
        std::error_code unknown;
        if (!fs::exists(note, unknown)) throw;
        throw Failure(error.path1().string(),
                      fmt::format("{}; the rows are in {}, and the next command that writes adds those that "
                                  "are not added yet",
                                  error.code().message(), note.string()));
    }
}

}  // namespace

void importCommand(CommandLine& line, const Environment& environment) {
    ImportOptions options;
    line.describe("Add the rows that tappora export printed, elsewhere or before, to this machine's days",
                  "tappora import counts.csv");
    line.option("FILE", options.file, "Rows of CSV or JSON Lines; - for standard input").required();
    line.flag("--json", options.json, "Read JSON Lines, whatever it looks like");
    line.flag("--csv", options.csv, "Read CSV, whatever it looks like").excludes("--json");
    line.option("--differing", options.differing,
                "What to do when a day of a machine is here with other counts: refuse all, skip that day, or "
                "add it too; refuse when not given")
        .type("refuse|skip|add");
    line.flag("-n,--dry-run", options.dryRun, "Only say what would be added");
    addFolderOptions(line, options.folder);
    line.parse();

    const Differing rule = ruleOf(options);
    const tapcore::Day now = today(options.folder, environment, environment.calendar);
    const auto rows = rowsOf(options);
    std::optional<LockedStore> locked;
    if (!options.dryRun) locked.emplace(options.folder, environment);
    const tapcore::Store store = locked ? locked->store : openStore(options.folder, environment);
    const RowImport plan = tapcore::planned(store, rows, rule);
    requireSound(plan, options, rule);
    if (!options.dryRun) {
        add(store, plan);
        tapcore::FileProblems unsummed;
        store.refreshRollups(now, {}, &unsummed);
        complainOf(unsummed);
    }
    printDone(plan, options);
}

}  // namespace tappora
