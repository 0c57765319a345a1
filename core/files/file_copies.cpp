#include "core/files/file_copies.h"

#include <algorithm>
#include <set>

#include "core/files/folder_error.h"
#include "core/files/table_reader.h"
#include "core/foundation/digest.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"
#include "core/foundation/integers.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

// While two copies become one, two hidden files are beside them: the merged text, waiting to take its place,
// and a note that says which texts it holds.
//
//     # Merging
//     | text             | file           |
//     | 9f86d081884c7d65 | 2026-09-20.md  |    the merged text, first
//     | 60303ae22b998861 | 2026-09-20.org |    each text it holds
//
// While the merged text waits, the note has no effect. One rename takes the text from there to its file; from
// then on, the texts that the note lists count no more, also when somebody has edited the merged file since.

constexpr std::string_view keptMark = " as it was";
constexpr std::string_view noteEnding = ".merging";
constexpr std::string_view mergedEnding = ".merged";

fs::path hiddenPath(const fs::path& folder, std::string_view name, std::string_view ending) {
    return folder / ("." + std::string(name).append(ending));
}

fs::path notePath(const fs::path& folder, std::string_view name) {
    return hiddenPath(folder, name, noteEnding);
}

/// Where the merged text waits.
fs::path mergedPath(const fs::path& folder, std::string_view name) {
    return hiddenPath(folder, name, mergedEnding);
}

/// Of what a note about merging is in a folder.
std::vector<std::string> namesWithNotes(const fs::path& folder) {
    std::vector<std::string> names;
    for (const std::string& file : listFolder(folder).names)
        if (file.starts_with('.') && file.ends_with(noteEnding))
            names.push_back(file.substr(1, file.size() - 1 - noteEnding.size()));
    return names;
}

bool hasSeveralCopies(const fs::path& folder, std::string_view name) {
    const auto& known = FileFormat::knownExtensions;
    return std::count_if(known.begin(), known.end(), [&](std::string_view extension) {
               const fs::path path = folder / copyName(name, extension);
               return existsOrThrow(path) || existsOrThrow(cloudPlaceholder(path));
           }) > 1;
}

std::string noteLine(std::string_view text, const fs::path& path) {
    return "| " + hexDigest(text) + " | " + path.filename().string() + " |\n";
}

using Cells = std::vector<std::string_view>;

bool isOf(const FileCopy& copy, const Cells& cells) {
    return cells.size() == 2 && cells[1] == copy.path.filename().string();
}

bool holds(const FileCopy& copy, const Cells& cells) {
    return isOf(copy, cells) && cells[0] == hexDigest(copy.file.text);
}

bool isIn(const fs::path& folder, const FileCopy& copy) { return copy.path.parent_path() == folder; }

/// Removes copies that are in another one by now, and then the note: it must not go to disk as removed before
/// they do.
void removeMerged(const std::vector<fs::path>& paths, const fs::path& folder, std::string_view name) {
    std::set<fs::path> folders = {folder};
    for (const fs::path& path : paths) {
        removeFile(path);
        folders.insert(path.parent_path());
    }
    for (const fs::path& changed : folders) flushFolder(changed).requireSafe();
    removeFile(notePath(folder, name));
}

Written mergeUnderNote(const fs::path& folder, std::string_view name, const fs::path& target,
                       std::string_view text, const std::vector<FileCopy>& copies) {
    writeFile(mergedPath(folder, name), text).requireSafe();
    writeFile(notePath(folder, name), mergingNote(target, text, copies)).requireSafe();
    std::vector<fs::path> others;
    for (const FileCopy& copy : copies)
        if (copy.path != target) others.push_back(copy.path);
    return renameFile(mergedPath(folder, name), target).then([&] { removeMerged(others, folder, name); });
}

/// A note that cannot be read is one more copy that cannot: nobody knows which of the others count.
void readNote(std::vector<FileCopy>& copies, const fs::path& folder, std::string_view name) {
    const fs::path path = notePath(folder, name);
    FileRead note = readStoredFile(path);
    try {
        const bool waits = existsOrThrow(mergedPath(folder, name));
        if (note.status == FileRead::Status::read)
            markSuperseded(copies, note.text, waits ? MergedText::waits : MergedText::tookItsPlace);
    } catch (const fs::filesystem_error& error) {
        note = {FileRead::Status::unreadable, "", error.code()};
    }
    if (note.status == FileRead::Status::unreadable) copies.push_back({path, std::move(note), false});
}

/// What is read of a copy: one that is missing may be in iCloud Drive, and one of which that cannot be found
/// out is unreadable.
FileRead readCopy(const fs::path& path, const CloudFetch& fetch) {
    FileRead file = readStoredFile(path);
    if (file.status != FileRead::Status::missing) return file;
    try {
        if (!isOnlyInCloud(path)) return file;
        if (fetch) fetch(path);
        return {FileRead::Status::unreadable, "", FolderError::notHereYet};
    } catch (const fs::filesystem_error& error) {
        return {FileRead::Status::unreadable, "", error.code()};
    }
}

}  // namespace

std::string mergingNote(const fs::path& target, std::string_view merged,
                        const std::vector<FileCopy>& copies) {
    std::string note = "# Merging\n" + noteLine(merged, target);
    for (const FileCopy& copy : copies) note += noteLine(copy.file.text, copy.path);
    return note;
}

void markSuperseded(std::vector<FileCopy>& copies, std::string_view note, MergedText merged) {
    TableReader reader(note);
    if (!reader.next() || !reader.next()) return;
    const auto target = std::find_if(copies.begin(), copies.end(),
                                     [&](const FileCopy& copy) { return isOf(copy, reader.cells()); });
    if (target == copies.end()) return;
    const bool isMerged = holds(*target, reader.cells());
    if (!isMerged && merged == MergedText::waits) return;
    std::vector<FileCopy*> held;
    while (reader.next())
        for (FileCopy& copy : copies)
            if (holds(copy, reader.cells())) held.push_back(&copy);
    const bool isAsBefore = std::find(held.begin(), held.end(), &*target) != held.end();
    if (isAsBefore && !isMerged) return;
    for (FileCopy* copy : held) copy->isSuperseded = copy != &*target;
}

namespace {

/// Whether nothing has that name; not, when that cannot be told.
bool isGone(const fs::path& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() == fs::file_type::not_found;
}

}  // namespace

std::string copyName(std::string_view name, std::string_view extension) {
    return std::string(name).append(".").append(extension);
}

std::vector<FileCopy> readCopies(const fs::path& folder, std::string_view name, FileFormat format,
                                 const CloudFetch& fetch, const DataListing* listing,
                                 const std::vector<fs::path>& elsewhere) {
    std::vector<FileCopy> copies;
    for (const std::string_view extension : format.readOrder()) {
        const std::string fileName = copyName(name, extension);
        if (listing && !listing->has(fileName)) continue;
        fs::path path = folder / fileName;
        FileRead file = readCopy(path, fetch);
        if (file.status != FileRead::Status::missing)
            copies.push_back({std::move(path), std::move(file), false});
    }
    for (const fs::path& path : elsewhere) {
        FileRead file = readStoredFile(path);
        if (file.status != FileRead::Status::missing) copies.push_back({path, std::move(file), false});
    }
    if (copies.size() > 1) readNote(copies, folder, name);
    // Readers take no lock. One that was taken in while they read is in the folder's copy by now.
    std::vector<fs::path> remaining = elsewhere;
    std::erase_if(remaining, isGone);
    return remaining.size() == elsewhere.size() ? copies
                                                : readCopies(folder, name, format, fetch, listing, remaining);
}

std::vector<FileCopy> readWholeCopies(const fs::path& folder, std::string_view name, FileFormat format,
                                      const CloudFetch& fetch, const std::vector<fs::path>& elsewhere) {
    auto copies = readCopies(folder, name, format, fetch, nullptr, elsewhere);
    for (const FileCopy& copy : copies) {
        if (copy.file.status == FileRead::Status::unreadable) refuse(copy.path, copy.file.error);
        if (firstInvalidUtf8(copy.file.text) != std::string_view::npos)
            refuse(copy.path, FolderError::notUtf8);
    }
    return copies;
}

void removeSuperseded(std::vector<FileCopy>& copies, const fs::path& folder, std::string_view name) {
    for (const FileCopy& copy : copies)
        if (copy.path == notePath(folder, name)) refuse(copy.path, copy.file.error);
    const auto stale = std::stable_partition(copies.begin(), copies.end(),
                                             [](const FileCopy& copy) { return !copy.isSuperseded; });
    if (stale == copies.end()) return;
    std::vector<fs::path> paths;
    std::for_each(stale, copies.end(), [&](const FileCopy& copy) { paths.push_back(copy.path); });
    copies.erase(stale, copies.end());
    removeMerged(paths, folder, name);
}

void forEachText(const std::vector<FileCopy>& copies, FileProblems* problems,
                 const std::function<void(std::string_view text)>& visit) {
    for (const FileCopy& copy : copies) {
        if (copy.isSuperseded) continue;
        const FatalContext context("adding", copy.path.native());
        if (copy.file.status == FileRead::Status::unreadable) {
            report(problems, copy.path, copy.file.error.message());
        } else if (firstInvalidUtf8(copy.file.text) == std::string_view::npos) {
            visit(copy.file.text);
        } else {
            report(problems, copy.path, "not UTF-8 text; what could be read of it counts");
            visit(repairedUtf8(copy.file.text));
        }
    }
}

void addNumbers(CountSum& sum, const std::vector<FileCopy>& copies) {
    for (const FileCopy& copy : copies)
        if (!copy.isSuperseded) sum.add(copy.file.text);
}

namespace {

/// Keeps what a copy is now under a name of its own beside it; what is there already stays. Returns
/// where.
fs::path keepAsItWas(const FileCopy& copy) {
    const std::string start = copy.path.stem().string().append(keptMark);
    for (int number = 1;; ++number) {
        const std::string name = number == 1 ? start : start + " " + std::to_string(number);
        fs::path kept = copy.path.parent_path() / (name + copy.path.extension().string());
        const FileRead known = readStoredFile(kept);
        if (known.status == FileRead::Status::missing) writeFile(kept, copy.file.text).requireSafe();
        else if (known.status != FileRead::Status::read || known.text != copy.file.text) continue;
        return kept;
    }
}

}  // namespace

void keepWhatIsSkipped(const std::vector<FileCopy>& copies, const SkippedLines& lines,
                       FileProblems* problems) {
    auto ofCopy = lines.begin();
    for (const FileCopy& copy : copies) {
        if (copy.isSuperseded) continue;
        const std::vector<SkippedRow>& skipped = *ofCopy++;
        if (skipped.empty()) continue;
        const std::string kept = keepAsItWas(copy).filename().string();
        for (const SkippedRow& row : skipped) report(problems, copy.path, "left out: " + row.why, row.line);
        report(problems, copy.path, "the old file is kept as " + kept);
    }
}

bool isKeptDayName(std::string_view name) {
    const std::size_t mark = name.find(keptMark);
    if (mark == std::string_view::npos || !isDayName(name.substr(0, mark))) return false;
    const std::string_view number = name.substr(mark + keptMark.size());
    return number.empty() || (number.front() == ' ' && parseInteger(number.substr(1)).value_or(0) > 1);
}

Written replaceCopies(const fs::path& folder, std::string_view name, FileFormat format, std::string_view text,
                      const std::vector<FileCopy>& copies) {
    const fs::path target = folder / copyName(name, format.fileExtension());
    std::vector<FileCopy> merged = copies;
    removeSuperseded(merged, folder, name);
    const bool isElsewhere = !merged.empty() && !isIn(folder, merged.front());
    if (merged.size() > 1 || isElsewhere) return mergeUnderNote(folder, name, target, text, merged);
    // The text does not depend on the name's ending for being read, so one rename of each is enough.
    const fs::path written = merged.empty() ? target : merged[0].path;
    return writeFile(written, text).then([&] {
        if (written != target) renameFile(written, target).requireSafe();
        removeTraces(folder, name);
    });
}

void removeTraces(const fs::path& folder, std::string_view name) {
    removeFile(
        notePath(folder, name));  // first: without the merged text, it would say that this took its place
    removeFile(mergedPath(folder, name));
}

std::vector<fs::path> supersededCopies(const fs::path& folder, FileProblems& problems) {
    std::vector<fs::path> superseded;
    for (const std::string& name : namesWithNotes(folder))
        for (const FileCopy& copy : readCopies(folder, name, FileFormat())) {
            if (copy.isSuperseded) superseded.push_back(copy.path);
            if (copy.path == notePath(folder, name))
                problems.push_back({copy.path, 0, copy.file.error.message()});
        }
    return superseded;
}

void removeOldNotes(const fs::path& folder) {
    for (const std::string& name : namesWithNotes(folder)) {  // what is not tidied up now is so later
        if (hasSeveralCopies(folder, name)) continue;
        flushFolder(folder).requireSafe();  // as in merging
        removeTraces(folder, name);
    }
}

}  // namespace tapcore
