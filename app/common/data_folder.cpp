#include "app/common/data_folder.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <filesystem>

namespace tappora {
namespace {

namespace fs = std::filesystem;

fs::path homeFolder(const Environment& environment) {
    const auto home = environment.variable("HOME");
    if (!home || home->empty()) throw Failure("HOME", "not set; name the data folder with --folder");
    return *home;
}

/// Whether the user named the folder, or it is where data lies when nothing is said.
enum class Choice { named, usual };

/// Refuses a folder that cannot be read. One that is not there is fine when nobody named it: nothing is
/// counted yet.
void requireFolder(const fs::path& folder, Choice choice) {
    std::error_code error;
    const auto status = fs::status(folder, error);
    if (!fs::exists(status)) {
        if (choice == Choice::usual) return;
        throw Failure(folder.string(), "no such folder");
    }
    if (!fs::is_directory(status)) throw Failure(folder.string(), "not a folder");
    fs::directory_iterator(folder, error);
    if (error) throw Failure(folder.string(), error.message());
}

}  // namespace

void addFolderOptions(CLI::App& command, FolderOptions& options) {
    command
        .add_option("--folder", options.folder, "The data folder, instead of the usual one [TAPPORA_FOLDER]")
        ->type_name("DIR");
    command.add_option("--today", options.today, "The day to take for today")->type_name("YYYY-MM-DD");
}

tapcore::Store openStore(const FolderOptions& options, const Environment& environment) {
    const auto named = options.folder ? options.folder : environment.variable("TAPPORA_FOLDER");
    const bool isNamed = named && !named->empty();
    const fs::path folder = isNamed ? fs::path(*named) : homeFolder(environment) / "Documents/Tappora";
    requireFolder(folder, isNamed ? Choice::named : Choice::usual);
    return {folder, tapcore::FileFormat::org};
}

tapcore::Day today(const FolderOptions& options, const Environment& environment,
                   const tapcore::Calendar& calendar) {
    return options.today ? parseDay("--today", *options.today) : tapcore::Day(environment.now, calendar);
}

std::int64_t hourReached(const tapcore::Day& today, const Environment& environment,
                         const tapcore::Calendar& calendar) {
    const bool isOver = today != tapcore::Day(environment.now, calendar);
    return isOver ? tapcore::Tally::hours - 1 : calendar.local(environment.now).hour;
}

tapcore::Day parseDay(std::string_view what, std::string_view text) {
    const auto day = tapcore::Day::parse(text);
    if (!day) throw UsageError(fmt::format("{}: not a day: {}; use YYYY-MM-DD", what, text));
    return *day;
}

void complainOf(const tapcore::FileProblems& problems) {
    for (const auto& problem : problems) {
        const std::string line = problem.line == 0 ? "" : fmt::format(":{}", problem.line);
        complain(fmt::format("{}{}: {}", problem.path.string(), line, problem.why));
    }
}

}  // namespace tappora
