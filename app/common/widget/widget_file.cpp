#include "app/common/widget/widget_file.h"
#include "app/common/keyboard/key_remaps.h"

#include <algorithm>
#include <optional>

#include "app/common/folder/language.h"
#include "app/common/keyboard/board_counts.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/program.h"
#include "app/common/system/directories.h"
#include "app/common/system/environment.h"
#include "core/files/comparison.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::FileProblems;
using tapcore::WidgetSnapshot;

constexpr std::int64_t weekDays = 7;

}  // namespace

WidgetSnapshot::SharedFolders sharedFolders(const Environment& environment) {
    return {.container = {}, .applicationSupport = dataDirectory(environment.variable)};
}

fs::path widgetFile(const Environment& environment) {
    return required(WidgetSnapshot::url(std::nullopt, sharedFolders(environment)),
                    ", and neither is XDG_DATA_HOME");
}

WidgetSnapshot widgetSnapshot(const FolderOptions& options, const Environment& environment,
                              FileProblems* problems) {
    const tapcore::Calendar& calendar = environment.calendar;
    const tapcore::Day day = today(options, environment, calendar);
    const tapcore::Store store = openShown(options, environment);
    // First, since it names the file of which the counts cannot be added up.
    const tapcore::Summary month = store.summary(BoardCounts::usualDays, day, calendar, problems);
    const tapcore::Tally counted = store.read(day).tally;
    const auto usual = tapcore::Comparison::usualDays(store, day, calendar);
    const auto comparison =
        tapcore::Comparison::percent(counted.byHour(), usual, hoursPassed(day, environment, calendar));
    const tapcore::Board board = Keyboards(environment, store).chosenBoard({});
    // Keys of a widget bear no legends, so that any layout gives the same.
    const tapcore::Heatmap heatmap(board, {}, month.byKey, {});
    const std::string language = chosenLanguage(environment);
    WidgetSnapshot snapshot(day, counted, comparison, store.summary(weekDays, day, calendar), &heatmap,
                            &board, language, language, calendar);
    snapshot.mapColor = chosenColor(std::nullopt, environment);
    return snapshot;
}

bool showsNothing(const WidgetSnapshot& snapshot) {
    return snapshot.today == 0 && std::all_of(snapshot.week.begin(), snapshot.week.end(),
                                              [](const auto& day) { return day.keystrokes == 0; });
}

void writeWidgetFile(const WidgetSnapshot& snapshot, const Environment& environment) try {
    const fs::path file = widgetFile(environment);
    const std::string data = snapshot.data();
    std::error_code none;
    const bool isSame = fs::is_regular_file(file, none) && fs::file_size(file, none) == data.size() &&
                        tapcore::readBytes(file).text == data;
    if (!isSame) (void)tapcore::writeFile(file, data);  // what a power cut undoes is soon made again
} catch (const fs::filesystem_error& error) {
    throw Failure(error);
}

}  // namespace tappora
