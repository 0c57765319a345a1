#include "core/files/kept_files.h"

#include <algorithm>
#include <set>

#include "core/files/file_copies.h"
#include "core/files/file_tree.h"
#include "core/files/folder_names.h"
#include "core/files/mac_folder.h"
#include "core/foundation/file_io.h"
#include "core/foundation/text_pieces.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// What a file system takes for one name, and more folders in each other than anybody has.
constexpr std::size_t longestName = 255;
constexpr std::size_t deepest = 16;

bool isOwnFolder(std::string_view name) {
    return std::find(ownFolders.begin(), ownFolders.end(), name) != ownFolders.end();
}

bool isPlainName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.size() <= longestName &&
           name.find('\0') == std::string_view::npos;
}

/// Whether none of them is hidden from the one at `start` on. Hidden files say what becomes of others: which
/// of two copies of a day counts, what is still to be merged.
bool areShown(const std::vector<std::string_view>& names, std::size_t start) {
    return std::none_of(names.begin() + static_cast<std::ptrdiff_t>(start), names.end(),
                        [](std::string_view name) { return name.starts_with('.'); });
}

/// Whether a path is in one of the folders that a data folder has, or marks a machine's.
bool isOfAFolder(std::string_view path) {
    const auto names = pieces(path, '/');
    if (names.size() < 2 || names.size() > deepest || firstInvalidUtf8(path) != path.npos) return false;
    if (!std::all_of(names.begin(), names.end(), isPlainName)) return false;
    if (isOwnFolder(names[0])) return areShown(names, 1);
    if (names[0].starts_with('.')) return false;
    return names.size() == 2 ? names[1] == MacFolder::marker : isOwnFolder(names[1]) && areShown(names, 2);
}

class Keeper {
  public:
    Keeper(const fs::path& root, FileProblems& missing) : root_(root), missing_(missing) {}

    void addFolders(const fs::path& part) {
        for (const std::string_view folder : ownFolders) {
            const auto superseded = supersededCopies(part / folder, missing_);
            for (const fs::path& path : filesBelow(part / folder, missing_))
                if (std::find(superseded.begin(), superseded.end(), path) == superseded.end()) add(path);
        }
    }

    void add(const fs::path& path) {
        FolderTimes times(path.parent_path());
        const auto lastWritten = times.lastWritten(path.filename().string());
        FileRead file = readBytes(path);
        const std::string name = path.lexically_relative(root_).generic_string();
        if (const auto why = file.failure()) missing_.push_back({path, 0, why.message()});
        else if (!isOfAFolder(name)) missing_.push_back({path, 0, "a name that a backup cannot have"});
        else files.push_back({name, std::move(file.text), lastWritten});
    }

    std::vector<KeptFile> files;

  private:
    const fs::path& root_;
    FileProblems& missing_;
};

/// A name that is the folder of the next one: names are sorted as paths.
bool holdsNext(const fs::path& name, const fs::path& next) {
    return std::mismatch(name.begin(), name.end(), next.begin(), next.end()).first == name.end();
}

}  // namespace

std::string_view KeptFile::part() const {
    const std::string_view first = std::string_view(name).substr(0, name.find('/'));
    return isOwnFolder(first) ? "" : first;
}

std::string_view KeptFile::nameInPart() const {
    return std::string_view(name).substr(part().empty() ? 0 : part().size() + 1);
}

std::vector<KeptFile> filesToKeep(const fs::path& root, FileProblems& missing) {
    Keeper keeper(root, missing);
    keeper.addFolders(root);
    for (const std::string& mac : MacFolder::marked(root, &missing)) {
        keeper.add(root / mac / MacFolder::marker);
        keeper.addFolders(root / mac);
    }
    std::sort(keeper.files.begin(), keeper.files.end(),
              [](const KeptFile& a, const KeptFile& b) { return a.name < b.name; });
    return std::move(keeper.files);
}

std::optional<std::string> whyNotOfAFolder(const std::vector<KeptFile>& files) {
    std::vector<fs::path> names;
    std::set<std::string_view> parts, marked;
    for (const KeptFile& file : files) {
        if (!isOfAFolder(file.name)) return file.name + ": not a file of a data folder";
        names.emplace_back(file.name);
        parts.insert(file.part());
        if (file.nameInPart() == MacFolder::marker && MacFolder::parseMark(file.text))
            marked.insert(file.part());
    }
    std::sort(names.begin(), names.end());
    for (std::size_t i = 0; i + 1 < names.size(); ++i)
        if (holdsNext(names[i], names[i + 1]))
            return names[i].string() + (names[i] == names[i + 1] ? ": there twice" : ": a file and a folder");
    for (const std::string_view part : parts)
        if (!part.empty() && !marked.contains(part)) return std::string(part) + ": not a machine's folder";
    return std::nullopt;
}

bool areShared(const std::vector<KeptFile>& files) {
    return std::any_of(files.begin(), files.end(), [](const KeptFile& file) { return !file.part().empty(); });
}

}  // namespace tapcore
