#include "core/files/mac_folder.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

#include "core/files/folder_names.h"
#include "core/foundation/characters.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"
#include "core/foundation/json_fields.h"

namespace tapcore::MacFolder {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr std::size_t longestName = 60;
/// What most file systems allow for a name, in bytes, less a number that may have to be added.
constexpr std::size_t longestNameInBytes = 240;

/// A machine's new folder, before it has its mark and then its name.
constexpr std::string_view newFolder = ".tappora.new";

std::string cut(std::string_view name, std::size_t limit) {
    std::string_view kept = firstCharacters(name, limit);
    while (kept.size() > longestNameInBytes) kept = firstCharacters(name, --limit);
    return std::string(kept);
}

/// A free name in `root`: the one wished for, or with the first number from 2 that makes it free.
std::string freeName(const fs::path& root, const std::string& wished) {
    std::string name = wished;
    for (int number = 2; existsOrThrow(root / name); ++number) {
        const std::string ending = " " + std::to_string(number);
        name = cut(wished, longestName - ending.size()) + ending;
    }
    return name;
}

/// A sub-folder and its marker, read once: another program may remove it at any moment.
struct MarkedFolder {
    std::string name;
    Mark mark;
};

/// Throws filesystem_error when `root` cannot be listed: another folder would be made for the machine.
std::optional<MarkedFolder> findMarked(const fs::path& root, std::string_view id) {
    for (const std::string& entry : namesIn(root))
        if (auto mark = readMark(root / entry); mark && mark->id == id && entry != newFolder)
            return MarkedFolder{entry, std::move(*mark)};
    return std::nullopt;
}

/// Whether a folder whose marker cannot be read may belong to a machine. The folders that systems keep at the
/// top of a disk do not.
bool mayHideMarker(const std::string& name, std::error_code error) {
    const bool isMissing =
        error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
    const auto& ours = ownFolders;
    const bool isNone = std::find(ours.begin(), ours.end(), name) != ours.end() || name == "lost+found";
    return error && !isMissing && !isNone && !name.starts_with('.');
}

}  // namespace

std::string Mark::text() const { return indentedJson({{"id", id}, {"name", name}}); }

namespace {

Mark decoded(std::string_view text) {
    const json document = JsonValue::parse(text);
    const JsonValue mark(document);
    return {mark.member("id").string(), mark.member("name").string()};
}

}  // namespace

std::optional<Mark> parseMark(std::string_view text) {
    try {
        return decoded(text);
    } catch (const JsonError&) {
        return std::nullopt;
    }
}

std::optional<Mark> readMark(const fs::path& folder, FileProblems* problems) {
    const FileRead file = readStoredFile(folder / marker);
    try {
        if (file.status == FileRead::Status::read) return decoded(file.text);
        if (file.error) report(problems, folder / marker, file.error.message());
    } catch (const JsonError& error) {
        report(problems, folder / marker, error.what());
    }
    return std::nullopt;
}

std::string sanitized(std::string_view name) {
    std::string text(name);
    std::replace(text.begin(), text.end(), '/', '-');
    std::replace(text.begin(), text.end(), ':', '-');
    std::string_view rest = trimmedWhiteSpace(text);
    while (rest.starts_with('.')) rest.remove_prefix(1);
    std::string result(rest.empty() ? "Mac" : rest);
    if (std::find(ownFolders.begin(), ownFolders.end(), result) != ownFolders.end()) result += " (Mac)";
    return std::string(firstCharacters(result, longestName));
}

std::vector<std::string> marked(const fs::path& root, FileProblems* problems) {
    std::vector<std::string> names;
    const FolderListing listing = listFolder(root);
    if (listing.status == FolderListing::Status::unreadable) report(problems, root, listing.error.message());
    for (const std::string& name : listing.names) {
        std::error_code error;
        const bool isMarked = fs::exists(fs::symlink_status(root / name / marker, error));
        if (isMarked && name != newFolder) names.push_back(name);
        else if (mayHideMarker(name, error)) report(problems, root / name, error.message());
    }
    return names;
}

std::optional<std::string> find(const fs::path& root, std::string_view id) {
    const auto own = findMarked(root, id);
    return own ? std::optional(own->name) : std::nullopt;
}

namespace {

/// Makes a folder that has its mark from the first moment: one without would be nobody's.
Written makeMarked(const fs::path& root, const std::string& name, std::string_view mark) {
    const fs::path growing = root / newFolder;
    try {
        const Written marked = writeFile(growing / marker, mark);
        const Written named = renameFile(growing, root / name);
        return marked.isSafe() ? named : marked;
    } catch (const fs::filesystem_error&) {
        std::error_code ignored;
        fs::remove(growing / marker, ignored);
        fs::remove(growing, ignored);
        throw;
    }
}

}  // namespace

std::string resolve(const fs::path& root, std::string_view id, std::string_view name, const WriteTold& told) {
    const std::string mark = Mark{std::string(id), std::string(name)}.text();
    if (const auto known = findMarked(root, id)) {
        if (known->mark.name != name) tellUnlessSafe(writeFile(root / known->name / marker, mark), told);
        return known->name;
    }
    std::string own = freeName(root, cut(sanitized(name), longestName));
    tellUnlessSafe(makeMarked(root, own, mark), told);
    return own;
}

}  // namespace tapcore::MacFolder
