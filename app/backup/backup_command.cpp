#include <fmt/format.h>

#include <filesystem>
#include <optional>
#include <string>

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
