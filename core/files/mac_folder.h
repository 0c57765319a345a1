#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/file_problem.h"
#include "core/foundation/written.h"

namespace tapcore {

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

/// What a marker's text says; nothing when it does not decode.
std::optional<Mark> parseMark(std::string_view text);

/// What the marker in a folder says; nothing when there is no marker. One that cannot be read or does not
/// decode is named in `problems`, and says nothing either.
std::optional<Mark> readMark(const std::filesystem::path& folder, FileProblems* problems = nullptr);

/// A folder name made of a machine's name: "/" and ":" become "-", white space at the ends and leading dots
/// are left out; "Mac" when nothing remains, " (Mac)" added to a name that the data folder needs itself, at
/// most 60 characters.
std::string sanitized(std::string_view name);

/// The names in `root` of folders that have a marker, even one that cannot be read, sorted. A `root` that
/// cannot be listed, and a folder in it that cannot be looked into, are named in `problems`.
std::vector<std::string> marked(const std::filesystem::path& root, FileProblems* problems = nullptr);

/// The name of the sub-folder in `root` whose marker has this id; nothing when no marker has. Throws
/// std::filesystem::filesystem_error with the path when `root` cannot be listed.
std::optional<std::string> find(const std::filesystem::path& root, std::string_view id);

/// The name of this machine's sub-folder in `root`: the one whose marker has its id, whatever its name, else
/// a new one named after the machine, with a number from 2 where that is taken. A new one is made and marked.
/// Throws std::filesystem::filesystem_error with the path. `told` hears of what is not yet safe.
std::string resolve(const std::filesystem::path& root, std::string_view id, std::string_view name,
                    const WriteTold& told = {});

}  // namespace MacFolder

}  // namespace tapcore
