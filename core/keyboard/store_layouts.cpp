#include <algorithm>
#include <unordered_set>

#include "core/files/store.h"
#include "core/foundation/folder_listing.h"
#include "core/keyboard/catalog.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view ending = ".json";
constexpr std::size_t longestID = 64;

void report(FileProblems* problems, const fs::path& path, std::string why) {
    if (problems) problems->push_back({path, 0, std::move(why)});
}

/// The layout of a file whose name is its id. A saved layout thus finds no other file with its id beside it.
std::optional<Layout> readOwnLayout(const fs::path& path, FileProblems* problems) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) {
        report(problems, path, "not a file");
        return std::nullopt;
    }
    try {
        Layout layout = Catalog::readLayout(path);
        if (layout.id == path.stem().string()) return layout;
        report(problems, path, "its id is \"" + layout.id + "\", which is not its name");
    } catch (const Catalog::FileError& error) {
        report(problems, path, error.underlying);
    }
    return std::nullopt;
}

bool isLetterOrDigit(char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'); }

}  // namespace

fs::path Store::ownLayoutsURL() const { return base() / ".keys" / "layouts"; }

std::vector<Layout> Store::ownLayouts(FileProblems* problems) const {
    std::vector<Store> folders = readParts();
    std::stable_partition(folders.begin(), folders.end(),
                          [&](const Store& part) { return part.root == base(); });
    std::vector<Layout> layouts;
    std::unordered_set<std::string> known;
    for (const Store& part : folders)
        for (const std::string& name : namesIn(part.ownLayoutsURL())) {
            if (!name.ends_with(ending)) continue;
            auto layout = readOwnLayout(part.ownLayoutsURL() / name, problems);
            if (layout && known.insert(layout->id).second) layouts.push_back(std::move(*layout));
        }
    return layouts;
}

bool Store::isSafeLayoutID(std::string_view id) {
    return !id.empty() && id.size() <= longestID && id != "auto" && isLetterOrDigit(id.front()) &&
           std::all_of(id.begin(), id.end(),
                       [](char c) { return isLetterOrDigit(c) || c == '-' || c == '_'; });
}

fs::path Store::saveOwnLayout(const Layout& layout) const {
    if (!isSafeLayoutID(layout.id))
        throw LayoutProblem("layout id \"" + layout.id +
                            "\": must be 1 to 64 of a-z, 0-9, \"-\" and \"_\", the first a letter or a "
                            "digit, and not \"auto\"");
    fs::path path = ownLayoutsURL() / (layout.id + std::string(ending));
    settle(write(layout.text(), path));
    return path;
}

}  // namespace tapcore
