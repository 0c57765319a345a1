#include "core/practice/practice_sums.h"

#include <algorithm>

#include "core/files/count_sum.h"
#include "core/files/folder_names.h"
#include "core/foundation/file_io.h"

namespace tapcore {

bool isAddable(const PracticeDay& day) {
    constexpr std::int64_t most = 1'000'000'000'000;
    std::int64_t largest = std::max(day.seconds, day.lessons);
    for (const auto& [letter, counts] : day.letters)
        largest = std::max({largest, counts.presses, counts.misses, counts.timed, counts.milliseconds});
    return largest <= most;
}

std::optional<std::filesystem::path> unaddablePractice(const Store& store) {
    for (const Day& day : store.practiceDays())
        for (const Store& part : store.readParts())
            for (const auto& copy : part.copies(practiceFolder, day.description())) {
                const std::string text = readStoredFile(copy).text;
                if (!countsFit(text) || !isAddable(PracticeDay(text))) return copy;
            }
    return std::nullopt;
}

}  // namespace tapcore
