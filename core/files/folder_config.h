#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "core/counting/key_face.h"
#include "core/files/file_format.h"
#include "core/files/file_problem.h"
#include "core/foundation/written.h"

namespace tapcore {

/// A key whose legends the user taught by typing it.
struct LearnedKey {
    std::string plain;
    std::string shifted;

    bool operator==(const LearnedKey&) const = default;
};

/// The settings that travel with a data folder, in its ".keys/config.json". Several machines may write it:
/// the last one counts.
struct FolderConfig {
    FileFormat format = FileFormat::org;
    std::string board = "auto";
    std::string layout = "auto";
    std::map<std::string, std::string> labels;  ///< the user's own words for keys, by "BOARD/KEYCODE"
    bool namedKeys = false;                     ///< show the names of keys that have no single character
    std::map<std::string, LearnedKey> learned;  ///< by "BOARD/LAYOUT/KEYCODE"

    /// root/".keys/config.json".
    static std::filesystem::path url(const std::filesystem::path& root);

    /// The settings that a file's text holds. Throws JsonError for what is not as it should be: one member of
    /// a wrong type is enough.
    static FolderConfig decode(std::string_view text);
    /// The settings that a file's text holds; all defaults when it does not decode.
    static FolderConfig parse(std::string_view text);
    /// The file's text.
    std::string text() const;

    /// The settings of a folder; all defaults when the file is missing. So they are when it cannot be read or
    /// does not decode, which is named in `problems`.
    static FolderConfig read(const std::filesystem::path& root, FileProblems* problems = nullptr);

    /// The settings of a folder, for changing them: throws filesystem_error with the path when the file
    /// cannot be read, since what it holds would be lost.
    static FolderConfig readToChange(const std::filesystem::path& root);

    /// Writes the file whole, and its folder when missing. Throws std::filesystem::filesystem_error with the
    /// path.
    Written write(const std::filesystem::path& root) const;

    /// Sets the user's own label of a key on a board; an empty one removes it.
    void setLabel(std::uint16_t keyCode, std::string_view boardID, std::string_view label);
    /// The label of a key on a board, when it has one.
    std::optional<std::string> label(std::uint16_t keyCode, std::string_view boardID) const;

    /// All labels of a board.
    Legends labelsOf(std::string_view boardID) const;

    /// Keeps what a key types, plain or with shift, on a board under a layout.
    void setLearned(std::uint16_t keyCode, bool shift, std::string_view text, std::string_view boardID,
                    std::string_view layoutID);
    /// Forgets all keys learned on a board, under any layout.
    void forgetLearned(std::string_view boardID);
    /// The keys learned on a board under a layout, as legends.
    Legends learnedKeys(std::string_view boardID, std::string_view layoutID) const;
    /// How many keys were learned on a board, under all layouts.
    std::size_t learnedCount(std::string_view boardID) const;
    /// Files the keys learned before layouts were told apart ("BOARD/KEYCODE") under this layout; what was
    /// learned under it since counts.
    void migrateLearned(std::string_view layoutID);

    /// The board's id, "/", the layout's id: what the names of learned keys start with.
    static std::string learnedID(std::string_view boardID, std::string_view layoutID);

    bool operator==(const FolderConfig&) const = default;
};

}  // namespace tapcore
