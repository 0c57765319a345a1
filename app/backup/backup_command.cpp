#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "app/backup/backup.h"
#include "app/backup/commands.h"
#include "app/common/command_line/command_line.h"
#include "app/common/folder/data_folder.h"
#include "app/common/folder/settings.h"
#include "app/common/folder/tell.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/file_text.h"
#include "core/foundation/file_io.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// The files of the data folder, at one moment: nobody writes there while they are read.
std::vector<tapcore::KeptFile> filesOf(const fs::path& root, const Environment& environment) {
    if (!tapcore::existsOrThrow(root)) return {};
    const FolderLock lock = lockForWriting(environment, root);
    complainOfReach(lock, root, environment.warn);
    tapcore::FileProblems missing;
    auto files = tapcore::filesToKeep(root, missing);
    if (missing.empty()) return files;
    complainOf(missing);
    throw Failure(root.string(), tapcore::counted(missing.size(), "item", "items") +
                                     " cannot be kept, so no backup was made");
}

/// An archive in the folder that it keeps would be in the next one, and be lost with the folder.
void requireOutside(const fs::path& file, const fs::path& root) {
    const fs::path folder = fs::absolute(file).parent_path();
    if (!fs::is_directory(folder)) throw Failure(folder.string(), "no such folder");
    std::error_code missing;
    const fs::path place = fs::canonical(folder), kept = fs::weakly_canonical(root, missing);
    if (std::mismatch(kept.begin(), kept.end(), place.begin(), place.end()).first == kept.end())
        throw UsageError(
            fmt::format("FILE: {}: in the data folder; choose a place outside of it", file.string()));
}

}  // namespace

void backupCommand(CommandLine& line, const Environment& environment) {
    fs::path file;
    FolderOptions folder;
    line.describe("Put the data folder and this machine's settings into one file",
                  "tappora backup tappora.tar.zst");
    line.option("FILE", file, "The archive to write: a name that ends in .tar.zst or .tar.gz").required();
    addFolderOptions(line, folder);
    line.parse();

    const auto packing = packingOf(file);
    if (!packing)
        throw UsageError(fmt::format("FILE: {}: use a name that ends in .tar.zst or .tar.gz", file.string()));
    const fs::path root = openStore(folder, environment).root;
    requireOutside(file, root);
    const fs::path settings = Settings::url(environment);
    const Backup backup{version(), filesOf(root, environment),
                        optionalText(settings, tapcore::readBytes(settings))};
    if (backup.files.empty() && !backup.settings) throw Failure(root.string(), "nothing to keep yet");
    try {
        complainOf(tapcore::writeFile(file, backup.packed(*packing)));
    } catch (const ArchiveError& error) {
        throw Failure(file.string(), error.what());
    }
    print(fmt::format("{}: {} of {}{}\n", harmlessLine(file.string()),
                      tapcore::counted(backup.files.size(), "file", "files"), harmlessLine(root.string()),
                      backup.settings ? ", and this machine's settings" : ""));
}

}  // namespace tappora
