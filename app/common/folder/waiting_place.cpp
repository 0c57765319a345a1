#include "app/common/folder/waiting_place.h"

#include "app/common/system/directories.h"
#include "app/common/system/environment.h"
#include "core/foundation/digest.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

constexpr const char* noteName = "folder";

std::optional<fs::path> allPlaces(const Environment& environment) {
    const auto directory = stateDirectory(environment.variable);
    return directory ? std::optional(*directory / "tappora" / "waiting") : std::nullopt;
}

/// The path by which a data folder is told from others, whatever links lead to it.
fs::path knownPath(const fs::path& root) {
    std::error_code error;
    const fs::path known = fs::weakly_canonical(fs::absolute(root, error), error);
    return (known.has_filename() ? known : known.parent_path());
}

}  // namespace

std::optional<fs::path> waitingPlace(const Environment& environment, const fs::path& root) {
    const auto places = allPlaces(environment);
    return places ? std::optional(*places / tapcore::hexDigest(knownPath(root).native())) : std::nullopt;
}

fs::path madeWaitingPlace(const Environment& environment, const fs::path& root) {
    const fs::path place = required(waitingPlace(environment, root), ", and neither is XDG_STATE_HOME");
    const fs::path note = place / noteName;
    if (!tapcore::isThere(note)) tapcore::writeFile(note, knownPath(root).native()).requireSafe();
    return place;
}

std::vector<fs::path> foldersWaitedFor(const Environment& environment) {
    std::vector<fs::path> folders;
    const auto places = allPlaces(environment);
    if (!places) return folders;
    for (const std::string& name : tapcore::listFolder(*places).names) {
        const tapcore::FileRead note = tapcore::readStoredFile(*places / name / noteName);
        if (note.status == tapcore::FileRead::Status::read) folders.emplace_back(note.text);
    }
    return folders;
}

}  // namespace tappora
