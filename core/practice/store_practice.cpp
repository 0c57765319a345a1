#include "core/files/file_copies.h"
#include "core/files/file_texts.h"
#include "core/files/store.h"
#include "core/practice/practice_day.h"
#include "core/practice/practice_history.h"

namespace tapcore {
namespace {

constexpr std::string_view practiceFolder = "practice";

void addFiles(PracticeDay& day, const std::vector<FileCopy>& copies, FileProblems* problems) {
    forEachText(copies, problems, [&](std::string_view text) { day.merge(PracticeDay(text)); });
}

}  // namespace

std::filesystem::path Store::practiceURL(const Day& day) const {
    return base() / practiceFolder / day.description().append(".").append(format.fileExtension());
}

std::vector<Day> Store::practiceDays() const { return daysIn(practiceFolder); }

PracticeDay Store::readPractice(const Day& day, FileProblems* problems) const {
    PracticeDay sum;
    for (const Store& part : readParts())
        addFiles(sum, readCopies(part.root / practiceFolder, day.description(), format), problems);
    return sum;
}

PracticeHistory Store::practiceHistory(FileProblems* problems) const {
    PracticeHistory history;
    for (const Day& day : practiceDays()) history.days.emplace(day, readPractice(day, problems));
    return history;
}

void Store::addPractice(const PracticeDay& practised, const Day& day) const {
    const std::filesystem::path folder = base() / practiceFolder;
    const auto copies = readCopies(folder, day.description(), format);
    requireWhole(copies);
    PracticeDay sum;
    addFiles(sum, copies, nullptr);
    sum.merge(practised);
    if (practised.layout) sum.layout = practised.layout;
    replaceCopies(folder, day.description(), format, sum.text(day, format), copies);
}

}  // namespace tapcore
