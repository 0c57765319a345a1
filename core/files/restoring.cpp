#include "core/files/restoring.h"

#include <algorithm>
#include <cerrno>
#include <map>
#include <set>
#include <string>
#include <system_error>
#include <utility>

#include "core/files/file_copies.h"
#include "core/files/file_kind.h"
#include "core/files/folder_config.h"
#include "core/files/folder_names.h"
#include "core/files/mac_folder.h"
#include "core/files/table_reader.h"
#include "core/files/taken_note.h"
#include "core/foundation/digest.h"
#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/json_once.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// A kept file and where it belongs here.
struct Step {
    const KeptFile* file;
    fs::path base;  ///< the part of the folder
    FileKind kind;
    bool isOwn;  ///< of this machine, or of the top

    fs::path to() const { return base / file->nameInPart(); }
    /// The folder and the name of a day: "laptop/days/2026-09-20".
    fs::path day() const { return fs::path(to()).replace_extension(); }
};

/// The rows of a text, with the sections they are in: the same in each format.
std::vector<std::string> rowsOf(std::string_view text) {
    std::vector<std::string> rows;
    for (TableReader reader(text); reader.next();) {
        std::string row = reader.section();
        if (!reader.isHeading())
            for (const std::string_view cell : reader.cells()) row.append("|").append(cell);
        rows.push_back(std::move(row));
    }
    return rows;
}

bool saysTheSame(std::string_view a, std::string_view b) { return a == b || rowsOf(a) == rowsOf(b); }

/// Where machines' folders of a backup are here: by their marks, else under their names, with a number where
/// that is taken.
std::map<std::string_view, fs::path> basesOf(const std::vector<KeptFile>& files, const fs::path& root) {
    std::map<std::string_view, fs::path> bases;
    for (const KeptFile& file : files) {
        const auto mark =
            file.nameInPart() == MacFolder::marker ? MacFolder::parseMark(file.text) : std::nullopt;
        if (!mark) continue;
        const std::string wished(file.part());
        std::string name = MacFolder::find(root, mark->id).value_or("");
        for (int number = 2; name.empty(); ++number) {
            const std::string free = number == 2 ? wished : wished + " " + std::to_string(number - 1);
            if (!existsOrThrow(root / free)) name = free;
        }
        bases[file.part()] = root / name;
    }
    return bases;
}

/// Marks first, so that a part is one from the beginning; then months, which are older than their days.
int orderOf(const Step& step) {
    if (step.file->nameInPart() == MacFolder::marker) return 0;
    return step.kind == FileKind::month ? 1 : step.kind == FileKind::day ? 2 : 3;
}

/// Whether no other file can be written either.
bool isOfDisk(const std::error_code& error) {
    return error == std::errc::no_space_on_device || error == std::errc::read_only_file_system ||
           error == std::errc::file_too_large || error == std::errc::io_error ||
           error == std::error_code(EDQUOT, std::generic_category());
}

/// Why settings of a folder cannot be taken; "" when they can.
std::string whyNotSettings(std::string_view text) {
    try {
        (void)FolderConfig::decode(text);
        requireEachOnce(text);
        return "";
    } catch (const JsonError& error) {
        return std::string("not settings of a folder: ") + error.what();
    }
}

class Plan {
  public:
    Plan(const std::vector<KeptFile>& files, const Store& store)
        : store_(store), isShared_(areShared(files)), bases_(basesOf(files, store.root)) {
        for (const KeptFile& file : files) add(file);
        std::stable_sort(steps.begin(), steps.end(),
                         [](const Step& a, const Step& b) { return orderOf(a) < orderOf(b); });
    }

    std::vector<Step> steps;

  private:
    void add(const KeptFile& file) {
        const fs::path name = file.nameInPart();
        const bool isDirect = std::distance(name.begin(), name.end()) == 2;
        const std::string folder = isDirect ? name.begin()->string() : "";
        const bool isOfMachine =
            std::find(dataFolders.begin(), dataFolders.end(), folder) != dataFolders.end();
        fs::path base = !file.part().empty()        ? bases_.at(file.part())
                        : isOfMachine && !isShared_ ? store_.base()
                                                    : store_.root;
        const bool isOwn = base == store_.base() || base == store_.root;
        steps.push_back({&file, std::move(base), fileKindOf(name, folder), isOwn});
    }

    const Store& store_;
    bool isShared_;
    std::map<std::string_view, fs::path> bases_;
};

class Restorer {
  public:
    Restorer(const Store& store, DaysHere days, FileProblems& left)
        : store_(store), days_(days), left_(left) {}

    void restore(const std::vector<Step>& steps, const Progress& progress) {
        for (const Step& step : steps)
            if (step.kind == FileKind::day) kept_[step.day()].insert(step.file->text);
        std::size_t done = 0;
        for (const Step& step : steps) {
            result.isWhole = shouldContinue(progress, done++, steps.size());
            if (!result.isWhole) return;
            take(step);
        }
    }

    Restored result;

  private:
    /// What cannot be taken is left and named; all else is taken.
    void take(const Step& step) {
        try {
            if (step.kind == FileKind::day) takeDay(step);
            else takeOther(step);
        } catch (const fs::filesystem_error& error) {
            if (isOfDisk(error.code())) throw;
            leave(step, error.path1() == step.to() ? error.code().message()
                                                   : error.path1().string() + ": " + error.code().message());
        }
    }

    void takeOther(const Step& step) {
        const fs::path to = step.to();
        if (!existsOrThrow(to) && !existsOrThrow(cloudPlaceholder(to))) {
            if (step.kind == FileKind::month && hasDaysOf(to)) return;  // it is summed from those
            const bool isConfig = to == FolderConfig::url(store_.root);
            if (const auto why = isConfig ? whyNotSettings(step.file->text) : ""; !why.empty())
                return leave(step, why);
            store_.warnUnlessSafe(writeFile(to, step.file->text, step.file->lastWritten));
            ++result.placed;
        } else if (orderOf(step) == 0 ||
                   readBytes(to).text == step.file->text) {  // a mark may have a new name
            ++result.same;
        } else if (to == FolderConfig::url(store_.root)) {
            result.settingsDiffer = true;
        } else if (step.kind != FileKind::month) {
            leave(step, "a different file of that name is here already");
        }
    }

    void takeDay(const Step& step) {
        TakenNote& note = noteOf(step.base);
        const std::string key = hexDigest(step.file->text).append(" ").append(step.file->nameInPart());
        if (note.has(key)) return findTaken(step, note, key);
        const auto here = copiesHere(step);
        const bool isHere = std::any_of(here.begin(), here.end(), [&](const FileCopy& copy) {
            return saysTheSame(copy.file.text, step.file->text);
        });
        if (!isHere && !mayTake(step, here)) return;
        if (!note.isBegun()) note.begin();
        if (isHere) return note.noteAsTaken(key, step.file->text, step.to()), void(++result.same);
        store_.warnUnlessSafe(note.take(key, step.file->text, step.to(), step.file->lastWritten));
        if (note.isWaiting(key)) return leave(step, inEveryFormat);
        ++(hasOthers(step, here) ? result.added : result.placed);
    }

    void findTaken(const Step& step, const TakenNote& note, const std::string& key) {
        if (note.isWaiting(key)) leave(step, inEveryFormat);
        else ++result.same;
    }

    /// The copies of a day in its part; of this machine's also those at the top, from before it had a part.
    std::vector<FileCopy> copiesHere(const Step& step) const {
        const fs::path day = step.day();
        auto copies = readCopies(day.parent_path(), day.filename().string(), store_.format);
        const fs::path top = store_.root / day.parent_path().filename();
        if (step.isOwn && top != day.parent_path())
            for (FileCopy& copy : readCopies(top, day.filename().string(), store_.format))
                copies.push_back(std::move(copy));
        return copies;
    }

    /// Whether there are other counts of the day here than this backup's.
    bool hasOthers(const Step& step, const std::vector<FileCopy>& here) const {
        return std::any_of(here.begin(), here.end(), [&](const FileCopy& copy) {
            return !kept_.at(step.day()).contains(copy.file.text);
        });
    }

    bool mayTake(const Step& step, const std::vector<FileCopy>& here) {
        for (const FileCopy& copy : here)
            if (const auto why = copy.file.failure()) return leave(step, why.message()), false;
        if (!hasOthers(step, here)) return true;
        if (!step.isOwn)
            return leave(step, "another machine's, with other counts; restore it on that machine"), false;
        if (days_ == DaysHere::left) {
            leave(step, "here with other counts");
            result.mayAdd = true;
        }
        return days_ == DaysHere::added;
    }

    TakenNote& noteOf(const fs::path& base) {
        const auto known = notes_.find(base);
        if (known != notes_.end()) return known->second;
        TakenNote& note = notes_.emplace(base, TakenNote::ofBackups(base)).first->second;
        note.placeWaiting();  // of an earlier one, which was cut off
        return note;
    }

    void leave(const Step& step, std::string why) { left_.push_back({step.to(), 0, std::move(why)}); }

    static constexpr const char* inEveryFormat =
        "that day is here in every format; tappora folder convert first";

    const Store& store_;
    DaysHere days_;
    FileProblems& left_;
    std::map<fs::path, std::set<std::string_view>> kept_;  ///< the texts of each day, by where it belongs
    std::map<fs::path, TakenNote> notes_;
};

}  // namespace

Restored restore(const std::vector<KeptFile>& files, const Store& store, DaysHere days,
                 const Progress& progress, FileProblems& left) {
    const Plan plan(files, store);
    Restorer restorer(store, days, left);
    restorer.restore(plan.steps, progress);
    return restorer.result;
}

}  // namespace tapcore
