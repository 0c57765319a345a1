#include "core/files/taken_note.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "core/files/data_listing.h"
#include "core/files/file_format.h"
#include "core/files/folder_names.h"
#include "core/foundation/descriptor.h"
#include "core/foundation/digest.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view adoptionName = ".adopting";
constexpr std::string_view backupsName = ".restored";
constexpr std::array<std::string_view, 2> noteNames = {adoptionName, backupsName};

// The names of days that wait for their place begin with the note's name and a dot.
//
// The note's first line is the old folder, or "backups". Then comes a line for each day taken:
//
//     9f86d081884c7d65 days/2026-09-20.org days/2026-09-20.md
//
// The digest of its text, where it is here, its path in the old folder.

/// The next line, without its end; one that has no end was being written in a crash, and does not count.
bool nextLine(std::string_view& rest, std::string_view& line) {
    if (rest.find('\n') == std::string_view::npos) return false;
    line = takePiece(rest, '\n');
    return true;
}

/// The place, or the first under another format's ending that nothing has.
std::optional<fs::path> freePlace(const fs::path& wished) {
    std::vector<std::string> extensions = {wished.extension().string()};
    for (const std::string_view known : FileFormat::knownExtensions)
        extensions.push_back("." + std::string(known));
    for (const std::string& extension : extensions) {
        fs::path place = wished;
        place.replace_extension(extension);
        if (!existsOrThrow(place) && !existsOrThrow(cloudPlaceholder(place))) return place;
    }
    return std::nullopt;
}

std::vector<std::string> namesStartingWith(std::string_view start, const fs::path& folder) {
    std::vector<std::string> names = namesIn(folder);
    std::erase_if(names, [&](const std::string& name) { return !name.starts_with(start); });
    return names;
}

[[noreturn]] void fail(const fs::path& path) {
    const std::error_code why = lastError();
    throw fs::filesystem_error("cannot write", path, why);
}

}  // namespace

TakenNote::TakenNote(const fs::path& folder, const fs::path& oldRoot)
    : TakenNote(folder, adoptionName, keyOf(fs::weakly_canonical(oldRoot).string())) {}

TakenNote::TakenNote(const fs::path& folder, std::string_view noteName, std::string source)
    : folder_(folder), path_(folder / noteName), source_(std::move(source)) {
    read();
}

TakenNote TakenNote::ofBackups(const fs::path& folder) { return {folder, backupsName, "backups"}; }

std::string TakenNote::keyOf(std::string_view name) {
    std::string key(name);
    std::replace(key.begin(), key.end(), '\n', '?');
    return key;
}

void TakenNote::read() {
    const FileRead note = readStoredFile(path_);
    if (note.status == FileRead::Status::unreadable)
        throw fs::filesystem_error("cannot read", path_, note.error);
    std::string_view rest = note.text;
    std::string_view line;
    isBegun_ = nextLine(rest, line) && line == source_;
    while (nextLine(rest, line)) {
        const std::string text(takePiece(line, ' '));
        const std::string place(takePiece(line, ' '));
        taken_[std::string(line)] = {text, place};
    }
    isTorn_ = !rest.empty();
}

void TakenNote::write() const {
    std::string text = source_ + "\n";
    for (const auto& [key, taken] : taken_) text += lineOf(key, taken);
    writeFile(path_, text).requireSafe();
}

void TakenNote::placeWaiting() const {
    for (const auto& [key, taken] : taken_)
        if (existsOrThrow(hidden(key))) putInPlace(key).requireSafe();
}

void TakenNote::begin() {
    if (!isBegun_) taken_.clear();
    write();
    isBegun_ = true;
    placeWaiting();
}

bool TakenNote::has(std::string_view name, std::string_view text) const {
    const auto found = taken_.find(keyOf(name));
    return found != taken_.end() && found->second.text == hexDigest(text);
}

Written TakenNote::take(std::string_view name, std::string_view text, const fs::path& place,
                        std::optional<std::chrono::nanoseconds> lastWritten) {
    writeFile(hidden(keyOf(name)), text, lastWritten).requireSafe();
    noteAsTaken(name, text, place);
    return putInPlace(keyOf(name));
}

void TakenNote::noteAsTaken(std::string_view name, std::string_view text, const fs::path& place) {
    const std::string key = keyOf(name);
    const Taken taken{hexDigest(text), place.lexically_relative(folder_).string()};
    append(lineOf(key, taken));
    taken_[key] = taken;
}

std::string TakenNote::lineOf(const std::string& key, const Taken& taken) {
    return taken.text + " " + taken.place + " " + key + "\n";
}

bool TakenNote::isWaiting(std::string_view name) const { return existsOrThrow(hidden(keyOf(name))); }

Written TakenNote::putInPlace(const std::string& key) const {
    const auto place = freePlace(folder_ / taken_.at(key).place);
    return place ? renameFile(hidden(key), *place) : Written();
}

void TakenNote::forget(const fs::path& folder) {
    for (const std::string_view note : noteNames)
        for (const std::string& name : namesStartingWith(note, folder)) removeFile(folder / name);
}

void TakenNote::forgetDay(const fs::path& folder, std::string_view day) {
    for (const std::string_view name : noteNames) TakenNote(folder, name, "").forgetDay(day);
}

void TakenNote::forgetDay(std::string_view day) const {
    std::set<fs::path> others;
    for (const auto& [key, taken] : taken_) {
        const fs::path place = taken.place;
        if (place.parent_path() != daysFolder || place.stem() != day) others.insert(hidden(key));
    }
    for (const std::string& name : namesStartingWith(path_.filename().string() + ".", folder_))
        if (!others.contains(folder_ / name)) removeFile(folder_ / name);
}

fs::path TakenNote::hidden(const std::string& key) const { return path_.string() + "." + hexDigest(key); }

void TakenNote::append(std::string_view line) {
    if (isTorn_) write();
    isTorn_ = true;
    const Descriptor note(retrying([&] { return ::open(path_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC); }));
    if (!note.isOpen()) fail(path_);
    if (!writeAll(note, line)) fail(path_);
    isTorn_ = false;
}

}  // namespace tapcore
