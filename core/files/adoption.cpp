#include "core/files/adoption.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>
#include <vector>

#include "core/files/data_listing.h"
#include "core/files/file_copies.h"
#include "core/files/file_kind.h"
#include "core/files/file_tree.h"
#include "core/files/folder_config.h"
#include "core/files/folder_names.h"
#include "core/files/mac_folder.h"
#include "core/files/taken_note.h"
#include "core/foundation/file_io.h"

namespace tapcore::MacFolder {
namespace {

namespace fs = std::filesystem;

/// Months come first: days that are written after them show that they are to be summed again.
constexpr std::array<std::string_view, 3> machineFolders = {monthsFolder, daysFolder, practiceFolder};
constexpr std::array<std::string_view, 3> commonFolders = {settingsFolder, reportsFolder, assistantFolder};

struct CopyStep {
    fs::path from;
    fs::path to;
    FileKind kind;
};

bool isSamePlace(const fs::path& a, const fs::path& b) {
    std::error_code error;
    return fs::weakly_canonical(a, error) == fs::weakly_canonical(b, error);
}

/// What is to be taken, and what cannot be.
class Plan {
  public:
    explicit Plan(FileProblems& missing) : missing_(missing) {}

    /// The folders of one machine, or of a whole folder that is not shared.
    void addFolders(const fs::path& from, const fs::path& machine, const fs::path& common) {
        for (const std::string_view folder : machineFolders) addTree(from / folder, machine / folder, folder);
        for (const std::string_view folder : commonFolders) addTree(from / folder, common / folder);
    }

    const std::vector<CopyStep>& steps() const { return steps_; }

  private:
    void addTree(const fs::path& from, const fs::path& to, std::string_view folder = "") {
        for (const fs::path& file : filesBelow(from, missing_)) {
            const bool isDirect = file.parent_path() == from;
            steps_.push_back(
                {file, to / file.lexically_relative(from), fileKindOf(file, isDirect ? folder : "")});
        }
    }

    std::vector<CopyStep> steps_;
    FileProblems& missing_;
};

/// Copies files that are not there, and says which it left.
class Copier {
  public:
    Copier(const fs::path& into, WriteTold told, FileProblems& missing)
        : settings_(FolderConfig::url(into)), told_(std::move(told)), missing_(missing) {}

    void copy(const CopyStep& step) const {
        const FileRead file = readBytes(step.from);
        if (file.status != FileRead::Status::read) return leave(step, whyUnread(file));
        if (step.kind == FileKind::month && hasDaysOf(step.to)) return;
        if (!existsOrThrow(step.to) && !existsOrThrow(cloudPlaceholder(step.to)))
            return write(step, file.text);
        const bool isDifferent = readStoredFile(step.to).text != file.text;
        const bool ownStands = step.kind == FileKind::month || step.to == settings_;
        if (isDifferent && !ownStands) leave(step, "a different file of that name is here already");
    }

    void leave(const CopyStep& step, std::string why) const {
        missing_.push_back({step.from, 0, std::move(why)});
    }

    static std::string whyUnread(const FileRead& file) {
        return file.error ? file.error.message() : "gone meanwhile";
    }

    void tell(const Written& written) const { tellUnlessSafe(written, told_); }

  private:
    void write(const CopyStep& step, std::string_view text) const {
        std::optional<std::chrono::nanoseconds> lastWritten;
        if (step.kind == FileKind::month)
            lastWritten = FolderTimes(step.from.parent_path()).lastWritten(step.from.filename().string());
        tell(writeFile(step.to, text, lastWritten));
    }

    fs::path settings_;
    WriteTold told_;
    FileProblems& missing_;
};

/// Takes days, each once however often it is begun.
class DayTaker {
  public:
    DayTaker(TakenNote& note, const fs::path& oldRoot, FileFormat format, const Copier& copier)
        : note_(note), oldRoot_(oldRoot), format_(format), copier_(copier) {}

    void take(const CopyStep& step) {
        const auto copies = readCopies(step.from.parent_path(), step.from.stem().string(), format_);
        const auto copy = std::find_if(copies.begin(), copies.end(),
                                       [&](const FileCopy& each) { return each.path == step.from; });
        if (copy == copies.end()) return copier_.leave(step, "gone meanwhile");
        if (copy->file.status != FileRead::Status::read)
            return copier_.leave(step, Copier::whyUnread(copy->file));
        if (copy->isSuperseded) return;  // its counts are in another copy
        const std::string name = step.from.lexically_relative(oldRoot_).string();
        if (!note_.has(name)) copier_.tell(note_.take(name, copy->file.text, step.to));
        else if (!note_.has(name, copy->file.text))
            copier_.leave(step, "has changed since it was taken over; only what it was then is here");
        if (note_.isWaiting(name))
            copier_.leave(step, "that day is here in every format; tappora folder convert first");
    }

  private:
    TakenNote& note_;
    const fs::path& oldRoot_;
    FileFormat format_;
    const Copier& copier_;
};

/// Performs each step, and leaves one that fails: what can be taken is taken, and everything else is named.
bool perform(const Plan& plan, const Progress& progress, const Copier& copier,
             const std::function<void(const CopyStep&)>& perform) {
    std::size_t done = 0;
    for (const CopyStep& step : plan.steps()) {
        if (!shouldContinue(progress, done++, plan.steps().size())) return false;
        try {
            perform(step);
        } catch (const fs::filesystem_error& error) {
            copier.leave(step, error.path1().string() + ": " + error.code().message());
        }
    }
    return true;
}

/// What of a shared folder goes where: all of it into a folder that is this machine's alone; else what is
/// this machine's own, and what is at the top, which the machines have in common.
void addShared(Plan& plan, const fs::path& from, const std::vector<std::string>& macs, const Store& store,
               FileProblems& missing) {
    plan.addFolders(from, store.root, store.root);
    const auto own = store.mac ? readMark(store.base()) : std::nullopt;
    for (const std::string& mac : macs) {
        const auto mark = readMark(from / mac);
        const bool isOwn = own && mark && own->id == mark->id;
        if (isOwn || !store.mac) plan.addFolders(from / mac, store.base(), store.base());
        else missing.push_back({from / mac, 0, "another machine's: take it over there"});
    }
}

bool holdsDays(const fs::path& folder) {
    const auto files = allDataFiles(folder / daysFolder);
    return std::any_of(files.begin(), files.end(),
                       [](const ListedFile& file) { return isDayName(file.name); });
}

/// Whether a folder is one of those that the store reads.
bool isPartOf(const Store& store, const fs::path& folder) {
    const auto parts = store.readParts();
    return isSamePlace(folder, store.root) || std::any_of(parts.begin(), parts.end(), [&](const Store& part) {
               return isSamePlace(folder, part.root);
           });
}

}  // namespace

Adoption adopt(const fs::path& oldRoot, const Store& store, const Progress& progress,
               FileProblems* problems) {
    FileProblems missing;
    const std::vector<std::string> macs = marked(oldRoot, &missing);
    if (isPartOf(store, oldRoot) || std::any_of(macs.begin(), macs.end(), [&](const std::string& mac) {
            return isPartOf(store, oldRoot / mac);
        }))
        return Adoption::sameFolder;
    TakenNote note(store.base(), oldRoot);
    if (!note.isBegun()) {
        FileProblems unlisted;
        const bool hasDays = !Store(oldRoot, store.format).days(&unlisted).empty();
        if (!hasDays) report(problems, unlisted);
        if (!hasDays) return unlisted.empty() ? Adoption::nothing : Adoption::incomplete;
        note.placeWaiting();  // of another adoption, which was cut off: they are days of this folder
        if (holdsDays(store.base())) return Adoption::holdsDays;
    }
    note.begin();
    const auto told = [&](const Written& unsafe) { store.warnUnlessSafe(unsafe); };
    const Copier copier(store.root, told, missing);
    Plan plan(missing);
    if (macs.empty()) plan.addFolders(oldRoot, store.base(), store.root);
    else addShared(plan, oldRoot, macs, store, missing);
    DayTaker days(note, oldRoot, store.format, copier);
    const bool isWhole = perform(plan, progress, copier, [&](const CopyStep& step) {
        if (step.kind == FileKind::day) days.take(step);
        else copier.copy(step);
    });
    report(problems, missing);
    if (!isWhole) return Adoption::interrupted;
    if (!missing.empty()) return Adoption::incomplete;
    TakenNote::forget(store.base());
    return Adoption::done;
}

bool copy(const fs::path& from, const fs::path& into, const std::optional<std::string>& mac,
          const Progress& progress, const WriteTold& told, FileProblems* problems) {
    FileProblems missing;
    const Copier copier(into, told, missing);
    Plan plan(missing);
    plan.addFolders(from, mac ? into / *mac : into, into);
    const bool isWhole = perform(plan, progress, copier, [&](const CopyStep& step) { copier.copy(step); });
    report(problems, missing);
    return isWhole;
}

}  // namespace tapcore::MacFolder
