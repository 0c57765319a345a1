#include "core/files/store.h"

#include <algorithm>

#include "core/files/file_copies.h"
#include "core/files/file_texts.h"
#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view daysFolder = "days";
constexpr std::string_view cloudEnding = ".icloud";

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

/// The name of the file that a name in a listing stands for: a placeholder of iCloud Drive,
/// ".2026-09-17.org.icloud", stands for the file to come.
std::string_view fileNamed(std::string_view listed) {
    if (!listed.starts_with('.') || !listed.ends_with(cloudEnding) || listed.size() <= cloudEnding.size())
        return listed;
    listed.remove_suffix(cloudEnding.size());
    return listed.substr(1);
}

bool isWritten(std::string_view extension) {
    return std::any_of(FileFormat::allCases.begin(), FileFormat::allCases.end(),
                       [&](FileFormat format) { return format.fileExtension() == extension; });
}

void addNames(std::set<std::string>& names, const fs::path& folder) {
    for (const std::string& listed : namesIn(folder)) {
        const std::string_view name = fileNamed(listed);
        const std::size_t dot = name.rfind('.');
        if (dot != std::string_view::npos && dot > 0 && isWritten(name.substr(dot + 1)))
            names.emplace(name.substr(0, dot));
    }
}

void addFiles(DayFile& day, const std::vector<FileCopy>& copies, FileProblems* problems) {
    forEachText(copies, problems, [&](std::string_view text) { day.merge(DayFile(text)); });
}

}  // namespace

fs::path Store::base() const { return mac ? root / *mac : root; }

Store Store::single(fs::path folder) const {
    Store part(std::move(folder), format);
    part.single_ = true;
    return part;
}

std::vector<std::string> Store::markedFolders() const {
    std::vector<std::string> marked = namesIn(root);
    std::erase_if(marked, [&](const std::string& name) { return !isThere(root / name / marker); });
    return marked;
}

std::vector<Store> Store::parts() const {
    if (single_) return {*this};
    std::vector<Store> parts;
    bool hasOwn = false;
    for (const std::string& name : markedFolders()) {
        hasOwn = hasOwn || name == mac;
        parts.push_back(single(root / name));
    }
    if (!hasOwn) parts.push_back(single(base()));
    return parts;
}

std::vector<Store> Store::readParts() const {
    std::vector<Store> all = parts();
    if (!single_ && mac) all.push_back(single(root));
    return all;
}

std::vector<std::string> Store::macs() const {
    if (single_) return {};
    std::vector<std::string> names = markedFolders();
    const bool hasOwn = mac && std::find(names.begin(), names.end(), *mac) != names.end();
    if (names.size() + (hasOwn ? 0 : 1) < 2) return {};
    if (mac && !hasOwn) names.push_back(*mac);
    return names;
}

std::set<std::string> Store::names(std::string_view folder) const {
    std::set<std::string> names;
    for (const Store& part : readParts()) addNames(names, part.root / folder);
    return names;
}

std::vector<Day> Store::days() const { return daysIn(daysFolder); }

std::vector<Day> Store::daysIn(std::string_view folder) const {
    std::vector<Day> days;
    for (const std::string& name : names(folder))
        if (const auto day = Day::parse(name)) days.push_back(*day);
    std::stable_sort(days.begin(), days.end());
    return days;
}

fs::path Store::url(const Day& day) const {
    return base() / daysFolder / day.description().append(".").append(format.fileExtension());
}

std::vector<fs::path> Store::copies(std::string_view folder, std::string_view name) const {
    std::vector<fs::path> found;
    for (const std::string_view extension : format.readOrder()) {
        fs::path path = base() / folder / std::string(name).append(".").append(extension);
        if (isThere(path)) found.push_back(std::move(path));
    }
    return found;
}

DayFile Store::read(const Day& day, FileProblems* problems) const {
    DayFile sum;
    for (const Store& part : readParts())
        addFiles(sum, readCopies(part.root / daysFolder, day.description(), format), problems);
    return sum;
}

DayFile Store::readOwn(const Day& day, FileProblems* problems) const {
    return single(base()).read(day, problems);
}

void Store::add(const Tally& tally, std::int64_t peakPerMinute, std::int64_t pausedMinutes,
                const std::optional<std::string>& board, const std::optional<std::string>& layout,
                const Day& day) const {
    const fs::path folder = base() / daysFolder;
    const auto copies = readCopies(folder, day.description(), format);
    requireWhole(copies);
    DayFile file;
    addFiles(file, copies, nullptr);
    file.merge(tally, peakPerMinute, pausedMinutes);
    if (board) file.board = board;
    if (layout) file.layout = layout;
    replaceCopies(folder, day.description(), format, file.text(format, day), copies);
}

void Store::write(std::string_view text, const fs::path& url) { writeFile(url, text); }

void Store::removeOthers(std::string_view folder, std::string_view name, const fs::path& keep) const {
    for (const FileFormat other : FileFormat::allCases) {
        const fs::path path = base() / folder / std::string(name).append(".").append(other.fileExtension());
        if (path != keep) removeFile(path);
    }
}

Summary Store::summary(std::int64_t days, const Day& endingOn, const Calendar& calendar,
                       FileProblems* problems) const {
    Summary sum;
    for (std::int64_t before = days - 1; before >= 0; --before) {
        const Day day = endingOn.adding(-before, calendar);
        sum.add(day, read(day, problems));
    }
    return sum;
}

}  // namespace tapcore
