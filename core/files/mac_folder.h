#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/foundation/progress.h"
#include "core/foundation/written.h"

namespace tapcore {

class Store;

/// The sub-folder of a shared data folder that one machine writes into, claimed by a marker file in it.
namespace MacFolder {

/// The marker's name.
inline constexpr std::string_view marker = ".keys-mac";

/// What a marker says.
struct Mark {
    std::string id;    ///< of the machine; stays for good
    std::string name;  ///< of the machine, as its user sees it

    /// The marker's text.
    std::string text() const;

    bool operator==(const Mark&) const = default;
};

/// What the marker in a folder says; nothing when there is none or it does not decode. `why`, when given,
/// says in the latter case what is wrong, and is empty otherwise.
std::optional<Mark> readMark(const std::filesystem::path& folder, std::string* why = nullptr);

/// The same of a marker's text.
std::optional<Mark> parseMark(std::string_view text, std::string* why = nullptr);

/// A folder name made of a machine's name: "/" and ":" become "-", white space at the ends and leading dots
/// go; "Mac" when nothing is left, " (Mac)" added to a name that the data folder needs itself, at most 60
/// characters.
std::string sanitized(std::string_view name);

/// The name of the sub-folder in `root` whose marker has this id; nothing when there is none.
std::optional<std::string> find(const std::filesystem::path& root, std::string_view id);

/// The name of this machine's sub-folder in `root`: the one whose marker has its id, whatever its name, else
/// a new one named after the machine, with a number from 2 where that is taken. A new one is made and marked.
/// Throws std::filesystem::filesystem_error with the path. `told` hears of what is not yet safe.
std::string resolve(const std::filesystem::path& root, std::string_view id, std::string_view name,
                    const WriteTold& told = {});

/// What came of taking over another folder's files.
enum class Adoption {
    done,
    interrupted,  ///< by `progress`; a repeat copies what is missing
    sameFolder,   ///< the other folder is this one
    nothing,      ///< the other folder holds no days
    holdsDays,    ///< this machine's folder holds days of its own already
};

/// Takes over the files of another data folder, when it is another one, holds days, and this machine's folder
/// holds none but those of an earlier adoption of it that was interrupted. See `copy`.
Adoption adopt(const std::filesystem::path& oldRoot, const Store& store, const Progress& progress = {});

/// Copies days, months and practice of `from` into the machine's sub-folder of `into` (its top without one),
/// and the settings, reports and conversations to its top: file by file, never over one that is there
/// already, so that after an interruption a repeat copies what is missing. Links are not followed. False when
/// it was interrupted. Throws filesystem_error with the path.
bool copy(const std::filesystem::path& from, const std::filesystem::path& into,
          const std::optional<std::string>& mac, const Progress& progress = {}, const WriteTold& told = {});

}  // namespace MacFolder

}  // namespace tapcore
