#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "core/foundation/written.h"

namespace tapcore {

/// The hidden note ".adopting" in a machine's folder, which says which folder is being taken over, and which
/// of its days were taken by now. It stays until all of them are, so that a repeat takes each of them once,
/// also when counts were added to them here meanwhile.
///
/// A day is first written to a hidden file, then it is in the note, then that file gets its place: one that
/// is in the note and still has its hidden file was cut off there, and gets its place when the note is read.
class TakenNote {
  public:
    /// Reads the note of a folder, when it has one.
    TakenNote(const std::filesystem::path& folder, const std::filesystem::path& oldRoot);

    /// Whether the note is of that old folder.
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
    Written take(std::string_view name, std::string_view text, const std::filesystem::path& place);

    /// Whether a day that was taken still waits for its place: every format of it is there.
    bool isWaiting(std::string_view name) const;

    /// Removes the note of a folder, whatever is taken over, and the days that wait for their place: what is
    /// cleared does not come back, and another adoption takes all days again.
    static void forget(const std::filesystem::path& folder);

    /// Removes what waits for its place of one day of counts, which stays in the note: what is cleared does
    /// not come back. Days that were cut off before they were in the note go too: they are taken again.
    static void forgetDay(const std::filesystem::path& folder, std::string_view day);

  private:
    struct Taken {
        std::string text;   ///< its digest
        std::string place;  ///< relative to the machine's folder
    };

    /// A name as it is on a line of its own.
    static std::string keyOf(std::string_view name);
    std::filesystem::path hidden(const std::string& key) const;
    Written putInPlace(const std::string& key) const;
    void read();
    void write() const;
    void append(std::string_view line);

    std::filesystem::path folder_;
    std::filesystem::path path_;
    std::string oldRoot_;
    bool isBegun_ = false;
    bool isTorn_ = false;                              ///< its last line failed to be written
    std::map<std::string, Taken, std::less<>> taken_;  ///< by key
};

}  // namespace tapcore
