// Practice days: the members of Store that read and write them.

#include "core/files/file_copies.h"
#include "core/files/folder_names.h"
#include "core/files/store.h"
#include "core/practice/practice_day.h"
#include "core/practice/practice_history.h"

namespace tapcore {

std::filesystem::path Store::practiceURL(const Day& day) const {
    return base() / practiceFolder / copyName(day.description(), format.fileExtension());
}

std::vector<Day> Store::practiceDays(FileProblems* problems) const {
    return daysIn(practiceFolder, problems);
}

PracticeDay Store::readPractice(const Day& day, FileProblems* problems) const {
    PracticeDay sum;
    for (const std::filesystem::path& folder : foldersToRead(practiceFolder, problems))
        mergeCopies(sum, readCopies(folder, day.description(), format, fetch_), problems);
    return sum;
}

PracticeHistory Store::practiceHistory(FileProblems* problems) const {
    PracticeHistory history;
    for (const Day& day : practiceDays(problems)) history.days.emplace(day, readPractice(day, problems));
    return history;
}

void Store::addPractice(const PracticeDay& practised, const Day& day, FileProblems* problems) const {
    const auto add = [&](PracticeDay& sum) {
        sum.merge(practised);
        if (practised.layout) sum.layout = practised.layout;
    };
    changePractice(day, add, problems);
}

void Store::changePractice(const Day& day, const std::function<void(PracticeDay&)>& change,
                           FileProblems* problems) const {
    const std::filesystem::path folder = base() / practiceFolder;
    const auto copies = readWholeCopies(folder, day.description(), format, fetch_);
    PracticeDay sum;
    SkippedLines lines;
    mergeCopies(sum, copies, nullptr, &lines);
    change(sum);
    keepWhatIsSkipped(copies, lines, problems);
    warnUnlessSafe(replaceCopies(folder, day.description(), format, sum.text(day, format), copies));
}

void Store::convertPractice(const std::string& name) const {
    changePractice(*Day::parse(name), [](PracticeDay&) {});
}

}  // namespace tapcore
