#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "core/files/file_problem.h"
#include "core/files/store.h"
#include "core/foundation/progress.h"
#include "core/foundation/written.h"

namespace tapcore::MacFolder {

/// What came of taking over another folder's files.
enum class Adoption {
    done,
    incomplete,   ///< something was not taken, as `problems` say; a repeat takes what it can by then
    interrupted,  ///< by `progress`; a repeat takes what is missing
    sameFolder,   ///< the other folder is this one, or a part of it
    nothing,      ///< the other folder holds no days
    holdsDays,    ///< this machine's folder holds days of its own already
};

/// Takes over the files of another data folder, when it is another one, holds days, and this machine's folder
/// holds no days, or is in the middle of taking that folder over. See `copy`; apart from that:
///
/// - A day that is in both, since it was counted while the adoption was interrupted, becomes a copy in
///   another format, and so is added. A note says until the end what was taken, so that nothing is twice.
/// - Of a folder that several machines write, what this machine wrote is taken, and what is at its top, when
///   the store's folder is shared too; else all of it.
///
/// What cannot be taken is named in `problems`, and the rest is taken: files that are not here yet, cannot be
/// read or cannot be written here, symbolic links, what other machines wrote, files of which another with
/// that name is here. Throws filesystem_error with the path when nothing can be taken.
Adoption adopt(const std::filesystem::path& oldRoot, const Store& store, const Progress& progress = {},
               FileProblems* problems = nullptr);

/// Copies days, months and practice of `from` into the machine's sub-folder of `into` (its top without one),
/// and the settings, reports and conversations to its top: file by file, never over one that is there
/// already, so that after an interruption a repeat copies what is missing. Links are not followed, hidden
/// files not copied, and months older than their days, so that they are made again. False when it was
/// interrupted. Tells of what is not yet safe from a power cut. What is not copied is named in `problems`,
/// and so is what cannot be written here, with the reason.
bool copy(const std::filesystem::path& from, const std::filesystem::path& into,
          const std::optional<std::string>& mac, const Progress& progress = {}, const WriteTold& told = {},
          FileProblems* problems = nullptr);

}  // namespace tapcore::MacFolder
