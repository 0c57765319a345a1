// Where the data folder is: showing, choosing, sharing it.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "app/common/data_folder.h"
#include "app/common/long_work.h"
#include "app/common/program.h"
#include "app/common/records_json.h"
#include "app/common/settings.h"
#include "app/common/terminal.h"
#include "app/common/write_told.h"
#include "app/tappora/folder_tasks.h"
#include "core/files/data_listing.h"
#include "core/files/folder_names.h"
#include "core/files/mac_folder.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Store;

struct Contents {
    std::uintmax_t bytes = 0;
    std::size_t files = 0;
    std::size_t inCloud = 0;
};

/// What lies in the folders of a part.
void add(Contents& contents, const fs::path& folder, tapcore::FileProblems& problems) {
    const tapcore::FolderListing listing = tapcore::listFolder(folder);
    if (listing.status == tapcore::FolderListing::Status::unreadable)
        problems.push_back({folder, 0, listing.error.message()});
    for (const std::string& name : listing.names) {
        std::error_code error;
        const fs::path path = folder / name;
        const fs::file_status status = fs::symlink_status(path, error);
        if (fs::is_directory(status)) add(contents, path, problems);
        if (!fs::is_regular_file(fs::status(path, error))) continue;
        ++contents.files;
        contents.bytes += fs::file_size(path, error);
        contents.inCloud += path.extension() == ".icloud" ? 1 : 0;
    }
}

std::string readableSize(std::uintmax_t bytes) {
    if (bytes < 10'000) return fmt::format("{} bytes", bytes);
    if (bytes < 10'000'000) return fmt::format("{} kB", bytes / 1000);
    return fmt::format("{} MB", bytes / 1'000'000);
}

std::string span(const std::vector<tapcore::Day>& days) {
    if (days.empty()) return "none yet";
    return fmt::format("{}, {} to {}", counted(days.size(), "day", "days"), days.front().description(),
                       days.back().description());
}

void printText(const FolderChoice& choice, const Store& store, const Contents& contents) {
    const auto row = [](std::string_view title, std::string_view value) {
        print(fmt::format("{:<10} {}\n", title, value));
    };
    row("Folder", choice.root.string());
    row("Chosen", choice.why());
    row("Format", store.format.title());
    if (const auto macs = store.macs(); !macs.empty())
        row("Machines", harmlessLine(fmt::format("{}", fmt::join(macs, ", "))));
    if (store.mac) row("This one", harmlessLine(*store.mac));
    row("Counts", span(store.days()));
    row("Months", std::to_string(store.names(tapcore::monthsFolder).size()));
    row("Practice", counted(store.names(tapcore::practiceFolder).size(), "day", "days"));
    row("Size",
        fmt::format("{} in {}", readableSize(contents.bytes), counted(contents.files, "file", "files")));
    if (contents.inCloud > 0)
        row("In iCloud",
            counted(contents.inCloud, "file that is not here yet", "files that are not here yet"));
    if (store.needsConversion())
        print("Some files are in the other format; tappora folder convert makes them one.\n");
}

nlohmann::json toJson(const FolderChoice& choice, const Store& store, const Contents& contents) {
    nlohmann::json days = nlohmann::json::array();
    for (const tapcore::Day& day : store.days()) days.push_back(day.description());
    nlohmann::json result = {{"root", choice.root.string()},
                             {"why", choice.why()},
                             {"format", store.format.rawValue()},
                             {"macs", store.macs()},
                             {"days", days},
                             {"months", store.names(tapcore::monthsFolder)},
                             {"practice", store.names(tapcore::practiceFolder)},
                             {"bytes", contents.bytes},
                             {"files", contents.files},
                             {"inCloud", contents.inCloud},
                             {"needsConversion", store.needsConversion()}};
    if (store.mac) result["mac"] = *store.mac;
    return result;
}

}  // namespace

void showFolder(const FolderOptions& options, const Environment& environment, bool json) {
    const FolderChoice choice = chooseFolder(options, environment);
    const Store store = openStore(options, environment);
    Contents contents;
    tapcore::FileProblems problems;
    for (const Store& part : store.readParts(&problems))
        for (const std::string_view folder : Store::ownFolders) add(contents, part.root / folder, problems);
    requireAnswer(problems, contents.files == 0);
    if (json) print(jsonText(toJson(choice, store, contents)));
    else printText(choice, store, contents);
}

void setFolder(const std::optional<std::string>& directory, const Environment& environment) {
    if (directory && directory->empty()) throw UsageError("folder set: name a folder, or say --usual");
    const fs::path folder = directory ? fs::absolute(*directory).lexically_normal() : fs::path();
    const Settings settings = Settings::change(environment, [&](Settings& all) {
        if (!directory) return all.remove(folderKey);
        complainOf(tapcore::makeFolders(folder));
        all.setText(folderKey, folder.string());
    });
    const FolderChoice choice = chooseFolder(settings, environment);
    if (choice.rule == FolderChoice::Rule::environment)
        return print(fmt::format("{}: stored, but TAPPORA_FOLDER overrules it: {}\n",
                                 settings.text(folderKey).value_or("the usual place"), choice.root.string()));
    print(fmt::format("{}: {}\n", choice.root.string(), choice.why()));
}

void shareFolder(const FolderOptions& options, const Environment& environment) {
    const LockedStore locked(options, environment, true);
    const Store& store = locked.store;
    print(fmt::format("{}: this machine writes into \"{}\"\n", store.root.string(),
                      harmlessLine(store.mac.value_or(""))));
    tapcore::FileProblems problems;
    const bool hasTop = !tapcore::dataFiles(store.root / tapcore::daysFolder, problems).empty();
    complainOf(problems);
    if (hasTop)
        print("The files that are there already stay at the top of the folder, and count as before.\n");
}

void adoptFolder(const std::string& directory, const FolderOptions& options, const Environment& environment) {
    using tapcore::MacFolder::Adoption;
    if (!fs::is_directory(directory)) throw Failure(directory, "no such folder");
    const tapcore::Day now = today(options, environment, environment.calendar);
    const LockedStore locked(options, environment);
    const Store& store = locked.store;
    LongWork work("taking over");
    tapcore::FileProblems problems;
    const Adoption outcome = tapcore::MacFolder::adopt(directory, store, work.progress(), &problems);
    if (outcome == Adoption::sameFolder)
        throw Failure(directory, "is the data folder itself, or a part of it");
    if (outcome == Adoption::nothing) throw Failure(directory, "holds no days to take over");
    if (outcome == Adoption::holdsDays)
        throw Failure(store.base().string(), "holds days already, so nothing is taken over");
    work.requireDone(outcome != Adoption::interrupted);
    const std::size_t left = problems.size();
    store.refreshRollups(now, {}, &problems);
    complainOf(problems);
    if (outcome == Adoption::incomplete)
        throw Failure(directory,
                      fmt::format("{} not taken over, so this folder is still needed; the same command "
                                  "again takes what it can by then",
                                  counted(left, "item was", "items were")));
    print(fmt::format("{}: took over what {} holds\n", harmlessLine(store.base().string()),
                      harmlessLine(directory)));
}

}  // namespace tappora
