#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "core/foundation/written.h"

namespace tapcore {

/// A hidden note in a machine's folder, which says which days were taken from elsewhere, so that a repeat
/// takes each of them once, also when counts were added to them here meanwhile. There are two: ".adopting" is
/// of a folder that is being taken over, and stays until all of its days are; ".restored" is of backups, and
/// stays.
///
/// A day is first written to a hidden file, then it is in the note, then that file gets its place: one that
/// is in the note and still has its hidden file was cut off there, and gets its place when the note is read.
class TakenNote {
  public:
    /// Reads the note of a folder being taken over, when there is one.
    TakenNote(const std::filesystem::path& folder, const std::filesystem::path& oldRoot);

    /// Reads the note of what was restored into a folder from backups, when there is one.
    static TakenNote ofBackups(const std::filesystem::path& folder);

    /// Whether there is a note, of that old folder.
    bool isBegun() const { return isBegun_; }

    /// Gives their place to the days that wait for it, also when the note is of another old folder. Throws
    /// filesystem_error with the path, as all below.
    void placeWaiting() const;

    /// Writes the note as far as it goes, and gives their place to the days that wait for it. A note of
    /// another old folder is replaced.
    void begin();

    /// Whether a day of the old folder was taken; or taken with that text. `name` is its path in that folder.
    bool has(std::string_view name) const { return taken_.contains(keyOf(name)); }
    bool has(std::string_view name, std::string_view text) const;

    /// Puts a day in its place, or beside what is there, as a copy in another format, which readers add; and
    /// notes it. One that fails to be noted is not taken; one that fails after it waits for its place.
    Written take(std::string_view name, std::string_view text, const std::filesystem::path& place,
                 std::optional<std::chrono::nanoseconds> lastWritten = std::nullopt);

    /// Notes a day as taken that is here already.
    void noteAsTaken(std::string_view name, std::string_view text, const std::filesystem::path& place);

    /// Whether a day that was taken still waits for its place: every format of it is there.
    bool isWaiting(std::string_view name) const;

    /// Removes both notes of a folder, whatever is taken over, and the days that wait for their place: what
    /// is cleared does not come back, and another adoption takes all days again.
    static void forget(const std::filesystem::path& folder);

    /// Removes what waits for its place of one day of counts, which stays in the note: what is cleared does
    /// not come back. Days that were cut off before they were in the note go too: they are taken again.
    static void forgetDay(const std::filesystem::path& folder, std::string_view day);

  private:
    struct Taken {
        std::string text;   ///< its digest
        std::string place;  ///< relative to the machine's folder
    };

    TakenNote(const std::filesystem::path& folder, std::string_view noteName, std::string source);

    void forgetDay(std::string_view day) const;
    /// A name as it is on a line of its own.
    static std::string keyOf(std::string_view name);
    static std::string lineOf(const std::string& key, const Taken& taken);
    std::filesystem::path hidden(const std::string& key) const;
    Written putInPlace(const std::string& key) const;
    void read();
    void write() const;
    void append(std::string_view line);

    std::filesystem::path folder_;
    std::filesystem::path path_;
    std::string source_;  ///< the old folder, or what stands for backups
    bool isBegun_ = false;
    bool isTorn_ = false;                              ///< its last line failed to be written
    std::map<std::string, Taken, std::less<>> taken_;  ///< by key
};

}  // namespace tapcore
