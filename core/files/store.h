#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/files/day_file.h"
#include "core/files/file_format.h"
#include "core/files/summary.h"

namespace tapcore {

struct Layout;

/// Something about a file that its owner may want to know: what was read all the same, or what was left out.
struct FileProblem {
    std::filesystem::path path;
    std::size_t line = 0;  ///< from 1; 0 when it is about the whole file
    std::string why;

    bool operator==(const FileProblem&) const = default;
};
using FileProblems = std::vector<FileProblem>;

/// The one reader and writer of the data folder. It hides that a file may exist in either text format, and that a
/// shared folder holds a sub-folder for each machine, whose files are added together when read. It writes only into
/// this machine's own sub-folder.
///
/// It holds no state: everything is read from disk on each call. A folder that does not exist reads as empty. It does
/// no locking: callers serialise what reads, changes and writes. What fails to write, make or remove something throws
/// std::filesystem::filesystem_error with the path, and leaves the former file in place.
class Store {
  public:
    std::filesystem::path root;      ///< the data folder
    FileFormat format;               ///< of what this machine writes; reading takes both
    std::optional<std::string> mac;  ///< this machine's sub-folder, in a folder that is shared

    /// The file in a machine's sub-folder that marks it as one.
    static constexpr std::string_view marker = ".keys-mac";

    Store(std::filesystem::path folder, FileFormat written, std::optional<std::string> subfolder = std::nullopt)
        : root(std::move(folder)), format(written), mac(std::move(subfolder)) {}

    /// Where this machine writes: `root`, or its sub-folder.
    std::filesystem::path base() const;

    /// The folders whose files are added together, each as a store of its own: the machines' sub-folders, by name, and
    /// the own one.
    std::vector<Store> parts() const;

    /// The names of the machines' sub-folders; none when only one machine writes here.
    std::vector<std::string> macs() const;

    /// The names, without extension, of the data files in "days", "months", "practice" or "reports" of every part.
    /// Files that iCloud Drive has not brought here yet count.
    std::set<std::string> names(std::string_view folder) const;

    /// The days that have a file, ascending.
    std::vector<Day> days() const;

    std::filesystem::path url(const Day& day) const;

    /// The files of folder/name that exist in this one folder, in reading order.
    std::vector<std::filesystem::path> copies(std::string_view folder, std::string_view name) const;

    /// A day's counts, of all parts and copies added; empty without a file. Board, layout and other rows are those of the
    /// first part that has them. A file that cannot be read or is not UTF-8 is named in `problems`; its valid rows
    /// count.
    DayFile read(const Day& day, FileProblems* problems = nullptr) const;
    /// The same of this machine's own files alone.
    DayFile readOwn(const Day& day, FileProblems* problems = nullptr) const;

    /// Adds counts to the own file of a day: the larger peak stands, paused minutes add, and board and layout are those
    /// given, when given. Both formats become one. Throws, and changes nothing, when a file there cannot be read whole.
    void add(const Tally& tally, std::int64_t peakPerMinute, std::int64_t pausedMinutes,
             const std::optional<std::string>& board, const std::optional<std::string>& layout, const Day& day) const;

    /// Writes a file whole, and its folder when missing.
    static void write(std::string_view text, const std::filesystem::path& url);

    /// Removes the copy of base/folder/name in the format not written, `keep` excepted.
    void removeOthers(std::string_view folder, std::string_view name, const std::filesystem::path& keep) const;

    /// So many days up to and with `endingOn`, added up in ascending order: one entry a day, all machines together, a
    /// day without a file as an empty one.
    Summary summary(std::int64_t days, const Day& endingOn, const Calendar& calendar,
                    FileProblems* problems = nullptr) const;

    // The user's own layouts, a file "ID.json" each. Defined beside the record of a layout.

    /// Where this machine writes them.
    std::filesystem::path ownLayoutsURL() const;
    /// Those of all parts; of two with one id, this machine's. A file that is no layout, or whose name is not
    /// its id, is named in `problems` and left out.
    std::vector<Layout> ownLayouts(FileProblems* problems = nullptr) const;
    /// Whether an id may name a file and a setting: 1 to 64 of a-z, 0-9, "-" and "_", the first a letter or a
    /// digit; and not "auto", which stands for the system's layout.
    static bool isSafeLayoutID(std::string_view id);
    /// Writes a layout, over the one of its id. Returns where. Throws LayoutProblem for an id that is not safe.
    std::filesystem::path saveOwnLayout(const Layout& layout) const;

  private:
    /// A store of one folder alone.
    Store single(std::filesystem::path folder) const;
    /// All that is read: the parts, and what lies at the top of a shared folder from before it was shared.
    std::vector<Store> readParts() const;
    std::vector<std::string> markedFolders() const;

    bool single_ = false;
};

}  // namespace tapcore
