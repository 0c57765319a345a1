#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/count_sum.h"
#include "core/files/data_listing.h"
#include "core/files/file_format.h"
#include "core/files/file_problem.h"
#include "core/foundation/file_io.h"

namespace tapcore {

/// One of the copies that a data file may have beside each other: NAME.org, NAME.md, NAME.tsv.
struct FileCopy {
    std::filesystem::path path;
    FileRead file;
    /// Its content is already in another copy, into which it was being merged when the program was
    /// interrupted.
    bool isSuperseded = false;
};

/// A copy's file name: "2026-09-20.org".
std::string copyName(std::string_view name, std::string_view extension);

/// The copies of `name` that exist in a folder, in the format's reading order, unreadable ones included; and
/// last, when it cannot be read, the note that says which of them are merged. One that is only there as a
/// placeholder of iCloud Drive is unreadable, as FolderError::notHereYet, and `fetch` is told of it, when it
/// is given. With a listing of the folder, only what that lists is looked for. Files in `elsewhere`, outside
/// of the folder, are further copies, where they exist.
std::vector<FileCopy> readCopies(const std::filesystem::path& folder, std::string_view name,
                                 FileFormat format, const CloudFetch& fetch = {},
                                 const DataListing* listing = nullptr,
                                 const std::vector<std::filesystem::path>& elsewhere = {});

/// The copies of `name`, for replacing them: throws filesystem_error with the path when one cannot be read,
/// is not UTF-8, or is not here yet, since what it holds would be lost.
std::vector<FileCopy> readWholeCopies(const std::filesystem::path& folder, std::string_view name,
                                      FileFormat format, const CloudFetch& fetch = {},
                                      const std::vector<std::filesystem::path>& elsewhere = {});

/// What would be left out when texts are replaced by what was read from them: of each, as `forEachText` hands
/// them out.
using SkippedLines = std::vector<std::vector<SkippedRow>>;

/// Hands out the texts of copies, in order. One that cannot be read is named in `problems`, when given, and
/// left out; so is named one that is not UTF-8, of which the repaired text is handed out. Should `visit` end
/// the program, it says with which file.
void forEachText(const std::vector<FileCopy>& copies, FileProblems* problems,
                 const std::function<void(std::string_view text)>& visit);

/// Merges the records of copies into one, read as `forEachText` hands their texts out. What each text holds
/// that the record does not is added to `lines`, when given.
template <class Record>
void mergeCopies(Record& sum, const std::vector<FileCopy>& copies, FileProblems* problems,
                 SkippedLines* lines = nullptr) {
    forEachText(copies, problems, [&](std::string_view text) {
        sum.merge(Record(text, lines ? &lines->emplace_back() : nullptr));
    });
}

/// Adds the numbers of copies up, those left out that are superseded.
void addNumbers(CountSum& sum, const std::vector<FileCopy>& copies);

/// Writes `text`, which holds what `copies` held together, as the one copy of `name` in this format, and
/// removes those others. A crash at any moment leaves a folder that reads as before or as after: nothing is
/// lost or counted twice. `copies` are those that `readWholeCopies` gave. Throws filesystem_error with the
/// path when it is not done: the folder then reads as before.
Written replaceCopies(const std::filesystem::path& folder, std::string_view name, FileFormat format,
                      std::string_view text, const std::vector<FileCopy>& copies);

/// Ends a `replaceCopies` that was interrupted: removes the copies that are superseded, from the disk and
/// from the list, and what says so. Throws filesystem_error with the path, also when what says so cannot be
/// read.
void removeSuperseded(std::vector<FileCopy>& copies, const std::filesystem::path& folder,
                      std::string_view name);

/// The copies in a folder whose content is already in another one, as `replaceCopies`, interrupted, left
/// them. What cannot be read, so that this is not known of it, is named in `problems`.
std::vector<std::filesystem::path> supersededCopies(const std::filesystem::path& folder,
                                                    FileProblems& problems);

/// To be called before `replaceCopies`: of each copy, sees that what its replacement leaves out can still be
/// had. A copy that holds such lines is kept as it is now under a name that no count is read from,
/// "2026-09-20 as it was.org"; each line is named in `problems`, when given. Throws filesystem_error with the
/// path.
void keepWhatIsSkipped(const std::vector<FileCopy>& copies, const SkippedLines& lines,
                       FileProblems* problems);

/// Whether a file's name, without extension, is one under which a day's copy is kept.
bool isKeptDayName(std::string_view name);

/// Removes what an interrupted `replaceCopies` left of `name` beside the copies. Throws filesystem_error with
/// the path.
void removeTraces(const std::filesystem::path& folder, std::string_view name);

/// Removes what `replaceCopies`, interrupted when it was all but done, left in a folder: notes about copies
/// that are one by now. Throws filesystem_error with the path.
void removeOldNotes(const std::filesystem::path& folder);

/// What `replaceCopies` writes beside the copies while it merges several of them: the hidden note
/// "NAME.merging", by which `readCopies` tells, after a crash, which of them are already in `merged`.
std::string mergingNote(const std::filesystem::path& target, std::string_view merged,
                        const std::vector<FileCopy>& copies);

/// Where the text is that copies are merged into.
enum class MergedText {
    waits,         ///< in its hidden file
    tookItsPlace,  ///< in the file that the note names first, unless that is as it was before
};

/// Marks the copies that such a note says are merged into another one. A text that is not a note marks
/// nothing.
void markSuperseded(std::vector<FileCopy>& copies, std::string_view note, MergedText merged);

}  // namespace tapcore
