// Which files the tools may see: the paths of AssistantTools.

#include <algorithm>

#include "core/assistant/assistant_tools.h"
#include "core/foundation/characters.h"
#include "core/foundation/held_folder.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestName = 255;  // in bytes: no file has a longer name

constexpr std::array<std::string_view, 3> perMac = {daysFolder, monthsFolder, practiceFolder};

template <class Range>
bool holds(const Range& range, std::string_view item) {
    return std::find(range.begin(), range.end(), item) != range.end();
}

/// A control character in a name could forge a line of a listing, or end the name early.
bool isDataFileName(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return !name.starts_with('.') && dot != std::string_view::npos &&
           holds(AssistantTools::extensions, name.substr(dot + 1)) && !hasControlCharacter(name);
}

/// Whether a path that links were resolved in still has one: a link that leads nowhere stays as it is.
bool hasDanglingLink(const fs::path& root, fs::path path) {
    std::error_code ignored;
    for (; path != root && path.has_relative_path(); path = path.parent_path())
        if (fs::is_symlink(fs::symlink_status(path, ignored))) return true;
    return false;
}

/// Where `relative` really is, or nothing when that is outside of `base`, or hidden in it as the settings
/// are, or when a link leads nowhere: what it names could be anywhere.
std::optional<fs::path> inside(const fs::path& base, const fs::path& relative) {
    std::error_code error;
    const fs::path root = AssistantTools::rootOf(base);
    fs::path real = fs::weakly_canonical(root / relative, error);
    if (error) return std::nullopt;
    const fs::path below = real.lexically_relative(root);
    const auto leadsAway = [](const fs::path& piece) { return piece.native().starts_with('.'); };
    if (below.empty() || std::any_of(below.begin(), below.end(), leadsAway)) return std::nullopt;
    if (hasDanglingLink(root, real)) return std::nullopt;
    return real;
}

/// A folder that `inside` gave, opened through no link.
HeldFolder opened(const fs::path& base, const fs::path& folder) {
    const fs::path root = AssistantTools::rootOf(base);
    return HeldFolder(root).folder(folder.lexically_relative(root));
}

bool isFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

}  // namespace

std::vector<std::string> AssistantTools::places(std::string_view folder) const {
    std::vector<std::string> places = {std::string(folder)};
    if (!holds(perMac, folder)) return places;
    for (const std::string& mac : macs) places.push_back(mac + "/" + std::string(folder));
    return places;
}

fs::path AssistantTools::rootOf(const fs::path& base) {
    std::error_code error;
    fs::path root = fs::weakly_canonical(base, error);
    return error ? base : root;
}

/// Whether a path is written as that of a data file.
bool AssistantTools::isDataPath(std::string_view path) const {
    const auto steps = pieces(path, '/');
    if (steps.size() < 2 || steps.size() > 3) return false;
    if (steps.size() == 3 && !holds(macs, steps.front())) return false;
    if (holds(steps, "..") || !holds(folders, steps[steps.size() - 2])) return false;
    return isDataFileName(steps.back());
}

std::optional<fs::path> AssistantTools::resolve(std::string_view path) const {
    if (!isDataPath(path)) return std::nullopt;
    if (pieces(path, '/').back().size() > longestName) return base / path;
    return inside(base, path);
}

void AssistantTools::reportUnlisted(const std::string& place, FileProblems& problems) const {
    if (const std::error_code why = whyUnlisted(base / place)) problems.push_back({place, 0, why.message()});
}

std::vector<AssistantTools::DataFile> AssistantTools::filesIn(const std::string& place,
                                                              std::string_view contains,
                                                              FileProblems& problems) const {
    std::vector<DataFile> files;
    const auto folder = inside(base, place);
    const HeldFolder held = folder ? opened(base, *folder) : HeldFolder(fs::path());
    const FolderListing listing = held.list();
    std::error_code why = whyUnlisted(base / place);
    if (!why && listing.status == FolderListing::Status::unreadable) why = listing.error;
    if (why) problems.push_back({place, 0, why.message()});
    for (const std::string& fileName : listing.names) {
        std::string name = place + "/" + fileName;
        if (!isDataFileName(fileName) || name.find(contains) == std::string::npos) continue;
        const HeldFolder::Kind kind = held.kindOf(fileName);
        std::optional<fs::path> path = *folder / fileName;
        if (kind == HeldFolder::Kind::link) path = inside(base, name);
        if (kind == HeldFolder::Kind::file || (kind == HeldFolder::Kind::link && path && isFile(*path)))
            files.push_back({std::move(name), std::move(*path)});
    }
    return files;
}

}  // namespace tapcore
