#include "core/files/mac_folder.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <vector>

#include "core/files/store.h"
#include "core/foundation/characters.h"
#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"

namespace tapcore::MacFolder {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr std::size_t longestName = 60;
/// What most file systems allow for a name, in bytes, less a number that may have to be added.
constexpr std::size_t longestNameInBytes = 240;

/// Stands in a machine's folder while another folder's files are taken over, and says which.
constexpr std::string_view adoptingNote = ".adopting";

/// A machine's new folder, before it has its mark and then its name.
constexpr std::string_view newFolder = ".tappora.new";

constexpr std::array<std::string_view, 3> machineFolders = {"days", "months", "practice"};
constexpr std::array<std::string_view, 3> commonFolders = {".keys", "reports", "assistant"};

std::string cut(std::string_view name, std::size_t limit) {
    std::string_view kept = firstCharacters(name, limit);
    while (kept.size() > longestNameInBytes) kept = firstCharacters(name, --limit);
    return std::string(kept);
}

/// A free name in `root`: the one wished for, or with the first number from 2 that makes it free.
std::string freeName(const fs::path& root, const std::string& wished) {
    std::string name = wished;
    for (int number = 2; isThere(root / name); ++number) {
        const std::string ending = " " + std::to_string(number);
        name = cut(wished, longestName - ending.size()) + ending;
    }
    return name;
}

/// The files of a folder and those below it, as paths relative to it; none when it cannot be listed.
std::vector<fs::path> filesIn(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error))
        if (entry->symlink_status(error).type() == fs::file_type::regular && !isTemporary(entry->path()))
            files.push_back(entry->path().lexically_relative(folder));
    std::sort(files.begin(), files.end());
    return files;
}

struct CopyStep {
    fs::path from;
    fs::path to;
};

/// What of a tree is missing at its destination.
void addMissing(std::vector<CopyStep>& steps, const fs::path& from, const fs::path& to) {
    for (const fs::path& file : filesIn(from))
        if (!isThere(to / file)) steps.push_back({from / file, to / file});
}

Written perform(const CopyStep& step) {
    const FileRead file = readBytes(step.from);
    if (file.status != FileRead::Status::read)
        throw fs::filesystem_error("cannot copy", step.from, file.error);
    return writeFile(step.to, file.text);
}

bool isSamePlace(const fs::path& a, const fs::path& b) {
    std::error_code error;
    return fs::weakly_canonical(a, error) == fs::weakly_canonical(b, error);
}

}  // namespace

std::string Mark::text() const {
    const json document = {{"id", id}, {"name", name}};
    return document.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

std::optional<Mark> readMark(const fs::path& folder, std::string* why) {
    if (why) why->clear();
    const FileRead file = readStoredFile(folder / marker);
    if (file.status == FileRead::Status::read) return parseMark(file.text, why);
    if (file.status == FileRead::Status::unreadable && why) *why = file.error.message();
    return std::nullopt;
}

std::optional<Mark> parseMark(std::string_view text, std::string* why) {
    if (why) why->clear();
    try {
        const json document = JsonValue::parse(text);
        const JsonValue mark(document);
        return Mark{mark.member("id").string(), mark.member("name").string()};
    } catch (const JsonError& error) {
        if (why) *why = error.what();
        return std::nullopt;
    }
}

std::string sanitized(std::string_view name) {
    std::string text(name);
    std::replace(text.begin(), text.end(), '/', '-');
    std::replace(text.begin(), text.end(), ':', '-');
    std::string_view rest = trimmedWhiteSpace(text);
    while (rest.starts_with('.')) rest.remove_prefix(1);
    std::string result(rest.empty() ? "Mac" : rest);
    if (std::find(Store::ownFolders.begin(), Store::ownFolders.end(), result) != Store::ownFolders.end())
        result += " (Mac)";
    return std::string(firstCharacters(result, longestName));
}

std::optional<std::string> find(const fs::path& root, std::string_view id) {
    for (const std::string& entry : namesIn(root))
        if (const auto mark = readMark(root / entry); mark && mark->id == id && entry != newFolder)
            return entry;
    return std::nullopt;
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
    if (auto known = find(root, id)) {
        if (readMark(root / *known)->name != name)
            tellUnlessSafe(writeFile(root / *known / marker, mark), told);
        return *known;
    }
    std::string own = freeName(root, cut(sanitized(name), longestName));
    tellUnlessSafe(makeMarked(root, own, mark), told);
    return own;
}

Adoption adopt(const fs::path& oldRoot, const Store& store, const Progress& progress) {
    if (isSamePlace(oldRoot, store.root)) return Adoption::sameFolder;
    if (Store(oldRoot, store.format).days().empty()) return Adoption::nothing;
    const fs::path note = store.base() / adoptingNote;
    const std::string from = fs::weakly_canonical(oldRoot).string();
    if (!Store(store.base(), store.format).days().empty() && readStoredFile(note).text != from)
        return Adoption::holdsDays;
    store.settle(writeFile(note, from));
    const auto told = [&](const Written& unsafe) { store.settle(unsafe); };
    if (!copy(oldRoot, store.root, store.mac, progress, told)) return Adoption::interrupted;
    removeFile(note);
    return Adoption::done;
}

bool copy(const fs::path& from, const fs::path& into, const std::optional<std::string>& mac,
          const Progress& progress, const WriteTold& told) {
    std::vector<CopyStep> steps;
    for (const std::string_view folder : machineFolders)
        addMissing(steps, from / folder, (mac ? into / *mac : into) / folder);
    for (const std::string_view folder : commonFolders) addMissing(steps, from / folder, into / folder);
    for (std::size_t done = 0; done < steps.size(); ++done) {
        if (!goesOn(progress, done, steps.size())) return false;
        tellUnlessSafe(perform(steps[done]), told);
    }
    return true;
}

}  // namespace tapcore::MacFolder
