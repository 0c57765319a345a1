// The user's own layouts: the members of Store that read and write them.

#include <algorithm>
#include <unordered_set>

#include "core/files/data_listing.h"
#include "core/files/folder_names.h"
#include "core/files/store.h"
#include "core/foundation/ascii.h"
#include "core/keyboard/catalog.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view ending = ".json";
constexpr std::size_t longestID = 64;

/// The layout of a file whose name is its id. So a saved layout finds no other file with its id beside it.
std::optional<Layout> readOwnLayout(const fs::path& path, FileProblems* problems) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) {
        report(problems, path, "not a file");
        return std::nullopt;
    }
    try {
        Layout layout = Catalog::readLayout(path);
        if (layout.id != path.stem().string())
            report(problems, path, "its id is \"" + layout.id + "\", which is not its name");
        else if (layout.base == layout.id) report(problems, path, "its base is itself");
        else return layout;
    } catch (const Catalog::FileError& error) {
        report(problems, path, error.underlying);
    }
    return std::nullopt;
}

/// Whether an id means the layout of the system, wherever one may be named.
bool isReserved(std::string_view id) { return id == "auto" || id == "system"; }

bool isSmallLetterOrDigit(char c) { return isSmallLetter(c) || isDigit(c); }

}  // namespace

fs::path Store::ownLayoutsURL() const { return base() / settingsFolder / "layouts"; }

std::vector<Layout> Store::ownLayouts(FileProblems* problems) const {
    std::vector<Store> folders = readParts(problems);
    std::stable_partition(folders.begin(), folders.end(),
                          [&](const Store& part) { return part.root == base(); });
    std::vector<Layout> layouts;
    std::unordered_set<std::string> known;
    for (const Store& part : folders)
        for (const std::string& name : namesIn(part.ownLayoutsURL(), problems)) {
            if (!name.ends_with(ending)) continue;
            auto layout = readOwnLayout(part.ownLayoutsURL() / name, problems);
            if (layout && known.insert(layout->id).second) layouts.push_back(std::move(*layout));
        }
    return layouts;
}

bool Store::isSafeLayoutID(std::string_view id) {
    return !id.empty() && id.size() <= longestID && !isReserved(id) && isSmallLetterOrDigit(id.front()) &&
           std::all_of(id.begin(), id.end(),
                       [](char c) { return isSmallLetterOrDigit(c) || c == '-' || c == '_'; });
}

fs::path Store::saveOwnLayout(const Layout& layout) const {
    if (!isSafeLayoutID(layout.id))
        throw LayoutProblem("layout id \"" + layout.id +
                            "\": must be 1 to 64 of a-z, 0-9, \"-\" and \"_\", the first a letter or a "
                            "digit, and neither \"auto\" nor \"system\"");
    fs::path path = ownLayoutsURL() / (layout.id + std::string(ending));
    warnUnlessSafe(write(layout.text(), path));
    return path;
}

}  // namespace tapcore
