// Where the data folder is: the static members of Store that look for it.

#include <algorithm>
#include <array>

#include "core/files/mac_folder.h"
#include "core/files/store.h"
#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view driveUnderHome = "Library/Mobile Documents/com~apple~CloudDocs";
constexpr std::string_view sharedPath = "/Library/Mobile Documents/";

/// The app's names, the present one first, then earlier ones in the order tried.
constexpr std::array<std::string_view, 4> cloudNames = {"Tappora", "Morvint", "Pellot", "Track My Hands"};

/// Whether a folder is in iCloud Drive by the name given, or by the one that this leads to: it may be
/// relative, or a link.
bool isInCloud(const fs::path& folder) {
    const auto tells = [](const fs::path& path) {
        return path.native().find(sharedPath) != std::string::npos;
    };
    std::error_code ignored;
    return tells(folder) || tells(fs::weakly_canonical(fs::absolute(folder, ignored), ignored));
}

}  // namespace

fs::path Store::cloudFolder(const fs::path& drive) {
    const auto found = std::find_if(cloudNames.begin(), cloudNames.end(),
                                    [&](std::string_view name) { return isThere(drive / name); });
    return drive / (found == cloudNames.end() ? cloudNames.front() : *found);
}

std::optional<fs::path> Store::iCloudRoot(const fs::path& home) {
    const fs::path drive = home / driveUnderHome;
    if (!isThere(drive)) return std::nullopt;
    return cloudFolder(drive);
}

fs::path Store::legacyRoot(const fs::path& home) { return home / "Documents/Typing Ledger"; }

fs::path Store::defaultRoot(const fs::path& home) {
    if (const auto cloud = iCloudRoot(home)) return *cloud;
    if (isThere(legacyRoot(home) / daysFolder)) return legacyRoot(home);
    return home / "Documents/Tappora";
}

bool Store::isShared(const fs::path& folder, FileProblems* problems) {
    return isInCloud(folder) || !MacFolder::marked(folder, problems).empty();
}

}  // namespace tapcore
