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

void requireFolder(const fs::path& folder) {
    std::error_code error;
    const auto status = fs::status(folder, error);
    if (!fs::exists(status)) throw Failure(folder.string(), "no such folder");
    if (!fs::is_directory(status)) throw Failure(folder.string(), "not a folder");
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
    const fs::path folder =
        named && !named->empty() ? fs::path(*named) : homeFolder(environment) / "Documents/Tappora";
    if (named && !named->empty()) requireFolder(folder);
    return {folder, tapcore::FileFormat::org};
}

tapcore::Day today(const FolderOptions& options, const Environment& environment,
                   const tapcore::Calendar& calendar) {
    return options.today ? parseDay("--today", *options.today) : tapcore::Day(environment.now, calendar);
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
