#include "app/practice/history.h"

#include <algorithm>

#include "app/common/folder/data_folder.h"

namespace tappora {

tapcore::PracticeHistory readHistory(const tapcore::Store& store) {
    tapcore::FileProblems problems;
    tapcore::PracticeHistory history = store.practiceHistory(&problems);
    const bool isEmpty = std::all_of(history.days.begin(), history.days.end(),
                                     [](const auto& item) { return item.second == tapcore::PracticeDay(); });
    requireAnswer(problems, isEmpty);
    return history;
}

}  // namespace tappora
