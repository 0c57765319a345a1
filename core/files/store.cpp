#include "core/files/store.h"

#include <algorithm>

#include "core/files/data_listing.h"
#include "core/files/file_copies.h"
#include "core/files/folder_error.h"
#include "core/files/folder_names.h"
#include "core/files/mac_folder.h"
#include "core/files/row_reader.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// Whether two names are of one folder.
bool isSame(const fs::path& a, const fs::path& b) {
    std::error_code error;
    return a == b || fs::equivalent(a, b, error);
}

}  // namespace

fs::path Store::base() const { return mac ? root / *mac : root; }

Store Store::fetching(CloudFetch fetch) const {
    Store store = *this;
    store.fetch_ = std::move(fetch);
    return store;
}

Store Store::telling(WriteTold told) const {
    Store store = *this;
    store.told_ = std::move(told);
    return store;
}

Store Store::remapping(KeyRemap remap) const {
    Store store = *this;
    store.remap_ = std::move(remap);
    return store;
}

Store Store::waitingIn(fs::path folder) const {
    Store store = *this;
    store.waiting_ = std::move(folder);
    return store;
}

Store Store::single(fs::path folder) const {
    Store part(folder, format);
    if (folder == base()) part.waiting_ = waiting_;
    part.single_ = true;
    part.fetch_ = fetch_;
    part.told_ = told_;
    return part;
}

/// The marked sub-folders, each once: a disk that ignores case, or a link, may show one under two names.
std::vector<std::string> Store::markedFolders(FileProblems* problems) const {
    std::vector<std::string> marked;
    const auto isKnown = [&](const std::string& name) {
        return std::any_of(marked.begin(), marked.end(),
                           [&](const std::string& known) { return isSame(root / known, root / name); });
    };
    for (const std::string& name : MacFolder::marked(root, problems))
        if (!isKnown(name)) marked.push_back(name);
    return marked;
}

std::vector<Store> Store::parts() const { return parts(nullptr); }

std::vector<Store> Store::parts(FileProblems* problems) const {
    if (single_) return {*this};
    std::vector<Store> parts;
    bool hasOwn = false;
    for (const std::string& name : markedFolders(problems)) {
        parts.push_back(single(root / name));
        if (!mac || !isSame(root / name, base())) continue;
        parts.back().waiting_ = waiting_;
        hasOwn = true;
    }
    if (!hasOwn) parts.push_back(single(base()));
    return parts;
}

std::vector<Store> Store::readParts(FileProblems* problems) const {
    std::vector<Store> all = parts(problems);
    if (!single_ && mac) all.push_back(single(root));
    return all;
}

std::vector<std::string> Store::macs() const {
    std::vector<std::string> names;
    const std::vector<Store> all = parts();
    for (const Store& part : all)
        if (all.size() > 1 && part.root != root) names.push_back(part.root.filename().string());
    return names;
}

std::vector<Store> Store::partsToRead(std::string_view folder, FileProblems* problems) const {
    std::vector<Store> parts = readParts(problems);
    std::erase_if(parts, [&](const Store& part) {
        const std::error_code why = whyUnlisted(part.root / folder);
        if (why && problems) problems->push_back({part.root / folder, 0, why.message()});
        return bool(why);
    });
    return parts;
}

std::vector<fs::path> Store::foldersToRead(std::string_view folder, FileProblems* problems) const {
    std::vector<fs::path> folders;
    for (const Store& part : partsToRead(folder, problems)) folders.push_back(part.root / folder);
    return folders;
}

std::set<std::string> Store::names(std::string_view folder, FileProblems* problems) const {
    std::set<std::string> names;
    FileProblems unlisted;
    for (const Store& part : readParts(&unlisted))
        for (ListedFile& file : dataFiles(part.root / folder, unlisted)) names.insert(std::move(file.name));
    if (folder == daysFolder)
        for (const WaitingHour& hour : waitingHours(&unlisted)) names.insert(hour.day.description());
    report(problems, unlisted);
    return names;
}

std::vector<Day> Store::days(FileProblems* problems) const { return daysIn(daysFolder, problems); }

std::vector<Day> Store::daysIn(std::string_view folder, FileProblems* problems) const {
    std::vector<Day> days;
    for (const std::string& name : names(folder, problems))
        if (isDayName(name)) days.push_back(*Day::parse(name));
    return days;
}

bool Store::hasData() const {
    return std::any_of(dataFolders.begin(), dataFolders.end(),
                       [&](std::string_view folder) { return !names(folder).empty(); });
}

fs::path Store::url(const Day& day) const {
    return base() / daysFolder / copyName(day.description(), format.fileExtension());
}

fs::path Store::urlForMonth(std::string_view month) const {
    return base() / monthsFolder / copyName(month, format.fileExtension());
}

std::vector<fs::path> Store::copies(std::string_view folder, std::string_view name) const {
    std::vector<fs::path> found;
    for (const std::string_view extension : format.readOrder()) {
        fs::path path = base() / folder / copyName(name, extension);
        fetchIfInCloud(path, fetch_);
        if (isThere(path)) found.push_back(std::move(path));
    }
    return found;
}

DayFile Store::read(const Day& day, FileProblems* problems) const {
    DayFile sum;
    for (const Store& part : partsToRead(daysFolder, problems))
        mergeCopies(sum, part.copiesOf(day, part.waitingHours(problems)), problems);
    return sum;
}

DayFile Store::readShown(const Day& day, FileProblems* problems) const { return shown(read(day, problems)); }

DayFile Store::shown(DayFile file) const {
    if (remap_) file.tally = remapped(file.tally, *remap_);
    return file;
}

DayFile Store::readOwn(const Day& day, FileProblems* problems) const {
    return single(base()).read(day, problems);
}

void Store::add(const Tally& tally, std::int64_t peakPerMinute, std::int64_t pausedMinutes,
                const std::optional<std::string>& board, const std::optional<std::string>& layout,
                const Day& day) const {
    requireFits(day, tally);
    change(day, UnusedLines::kept, [&](DayFile& file) {
        file.merge(tally, peakPerMinute, pausedMinutes);
        if (board) file.board = board;
        if (layout) file.layout = layout;
    });
}

void Store::addNumbers(CountSum& sum, const Day& day) const {
    for (const Store& part : readParts())
        tapcore::addNumbers(sum, part.copiesOf(day, part.waitingHours(nullptr)));
}

void Store::requireFits(const Day& day, const Tally& more) const {
    DayFile added;
    added.tally = more;
    CountSum sum;
    sum.add(added.text(format, day));
    const auto copies = copiesOf(day, waitingHours());
    tapcore::addNumbers(sum, copies);
    if (!sum.fits()) refuse(copies.empty() ? url(day) : copies.front().path, FolderError::countsTooLarge);
}

void Store::change(const Day& day, UnusedLines unused, const std::function<void(DayFile&)>& change,
                   const std::vector<WaitingHour>& takenIn) const {
    changeRead(day, copiesToChange(day, takenIn), unused, change);
}

void Store::changeRead(const Day& day, const std::vector<FileCopy>& copies, UnusedLines unused,
                       const std::function<void(DayFile&)>& change) const {
    const fs::path folder = base() / daysFolder;
    const std::string place = (folder / day.description()).string();
    const FatalContext context("changing", place);
    CountSum sum;
    tapcore::addNumbers(sum, copies);
    if (!sum.fits()) refuse(copies.front().path, FolderError::countsTooLarge);
    DayFile file;
    SkippedLines lines;
    mergeCopies(file, copies, nullptr, &lines);
    change(file);
    if (unused == UnusedLines::kept) keepWhatIsSkipped(copies, lines, nullptr);
    const Written written = replaceCopies(folder, day.description(), format, file.text(format, day), copies);
    // What was to be forgotten may still be in what remains.
    unused == UnusedLines::dropped ? written.requireSafe() : warnUnlessSafe(written);
}

Written Store::write(std::string_view text, const fs::path& url) { return writeFile(url, text); }

void Store::removeOthers(std::string_view folder, std::string_view name, const fs::path& keep) const {
    for (const FileFormat other : FileFormat::allCases) {
        const fs::path path = base() / folder / copyName(name, other.fileExtension());
        if (path != keep) removeFile(path);
    }
}

Summary Store::summary(std::int64_t days, const Day& endingOn, const Calendar& calendar,
                       FileProblems* problems) const {
    constexpr std::int64_t worthListing = 40;  // for fewer days, asking for each is faster in a full folder
    struct DaysFolder {
        Store part;
        std::vector<WaitingHour> waiting;
        std::optional<DataListing> listing;
    };
    FileProblems unlisted;
    std::vector<DaysFolder> folders;
    for (Store& part : partsToRead(daysFolder, &unlisted)) {
        auto waiting = part.waitingHours(&unlisted);
        folders.push_back({std::move(part), std::move(waiting), {}});
        if (days >= worthListing)
            folders.back().listing.emplace(folders.back().part.root / daysFolder, unlisted);
    }
    report(problems, unlisted);
    Summary sum;
    for (std::int64_t before = days - 1; before >= 0; --before) {
        const Day day = endingOn.adding(-before, calendar);
        const std::string place = (root / daysFolder / day.description()).string();
        const FatalContext context("summing up", place);
        DayFile file;
        for (const DaysFolder& folder : folders)
            mergeCopies(
                file, folder.part.copiesOf(day, folder.waiting, folder.listing ? &*folder.listing : nullptr),
                problems);
        sum.add(day, file);
    }
    return sum.remapped(remap_);
}

}  // namespace tapcore
