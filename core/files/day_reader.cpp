#include "core/files/day_reader.h"

#include "core/files/file_copies.h"
#include "core/files/folder_names.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

std::vector<WaitingHour> waitingOf(const Store& part, FileProblems& problems) try {
    return part.waitingHours();
} catch (const fs::filesystem_error& error) {
    problems.push_back({error.path1(), 0, error.code().message()});
    return {};
}

}  // namespace

DayReader::DayReader(const Store& store, FileProblems* problems) {
    FileProblems unlisted;
    for (Store& part : store.readParts(&unlisted)) {
        const std::size_t before = unlisted.size();
        DataListing days(part.base() / daysFolder, unlisted);
        if (unlisted.size() == before) {
            auto waiting = waitingOf(part, unlisted);
            parts_.push_back({std::move(part), std::move(days), std::move(waiting)});
        }
    }
    report(problems, unlisted);
}

DayFile DayReader::read(const Day& day, FileProblems* problems) const {
    DayFile sum;
    for (const Part& part : parts_) {
        std::vector<fs::path> elsewhere;
        for (const WaitingHour& hour : part.waiting)
            if (hour.day == day) elsewhere.push_back(part.store.url(hour));
        mergeCopies(sum,
                    readCopies(part.store.base() / daysFolder, day.description(), part.store.format, {},
                               &part.days, elsewhere),
                    problems);
    }
    return sum;
}

}  // namespace tapcore
