#include <gtest/gtest.h>

#include <functional>

#include "app/common/keyboard/board_counts.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/report/report_keyboard.h"
#include "app/common/widget/widget_file.h"
#include "core/assistant/assistant_tools.h"
#include "core/practice/own_letters.h"
#include "core/reports/report.h"
#include "tests/support/environment.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

using tapcore::KeyCode;
using Presses = std::function<std::int64_t(KeyCode)>;

constexpr KeyCode a = 0, s = 1;
const tapcore::Day today(2026, 9, 20);

/// 2,000 presses of A and 3 of S, of which the user wants A counted as S.
class RemappedFigures : public testing::Test {
  protected:
    RemappedFigures() {
        data.put("days/2026-09-20.org",
                 "* Keys\n| 9 | 0 | 2000 |\n| 9 | 1 | 3 |\n* Chords\n| 9 | cmd | 0 | 7 |\n");
        home.put(
            "tappora/settings.json",
            R"({"keys.remaps": "key 0=key 1", "keyboard.board": "macbook-ansi", "keyboard.layout": "qwerty"})");
    }
    tapcore::Store store() const { return openShown(folder, environment); }

    tapcore::TemporaryFolder data, home;
    Environment environment = environmentWith({{"HOME", home.path()},
                                               {"XDG_CONFIG_HOME", home.path()},
                                               {"XDG_RUNTIME_DIR", home.path()},
                                               {"TAPPORA_RESOURCES", RESOURCES}});
    FolderOptions folder{.folder = data.path().string(), .today = "2026-09-20"};
};

/// How large the heat of a key is that the widgets show.
std::int64_t stepOf(KeyCode code, const tapcore::WidgetSnapshot& snapshot, const tapcore::Board& board) {
    for (std::size_t i = 0; i < board.keys.size(); ++i)
        if (board.keys[i].keyCode == code) return snapshot.heat.at(i).step;
    return -1;
}

TEST_F(RemappedFigures, AreTheSameEverywhere) {
    const auto before = data.files();
    BoardCountsOptions onBoard;
    onBoard.folder = folder;
    const auto summary = store().summary(7, today, environment.calendar);
    const auto counts = boardCounts(onBoard, environment);
    const auto keyboard = reportKeyboard({}, store(), environment);
    const auto period = tapcore::ReportPeriod::containing(tapcore::ReportPeriod::Kind::week, today);
    const auto report = reportOf(store(), {.period = period, .today = today, .keyboard = keyboard});
    const auto snapshot = widgetSnapshot(folder, environment, nullptr);
    const auto shown = store().readShown(today).tally.byKey();
    const std::pair<const char*, Presses> figures[] = {
        {"the glance", [&](KeyCode code) { return shown.valueOr(code, 0); }},
        {"the summary", [&](KeyCode code) { return summary.byKey.valueOr(code, 0); }},
        {"heat map and fingers", [&](KeyCode code) { return counts.counts.valueOr(code, 0); }},
        {"the report", [&](KeyCode code) { return report.figures.summary.byKey.valueOr(code, 0); }},
    };
    for (const auto& [where, presses] : figures) {
        EXPECT_EQ(presses(a), 0) << where;
        EXPECT_EQ(presses(s), 2003) << where;
    }
    EXPECT_EQ(summary.byChord.begin()->first.keyCode, s);
    EXPECT_EQ(stepOf(a, snapshot, counts.board), 0);
    EXPECT_GT(stepOf(s, snapshot, counts.board), 0);
    EXPECT_EQ(tapcore::ownLetters(summary.byKey, keyboard.legends, {"a", "s"}),
              (tapcore::OwnLetters{{"a", 0}, {"s", 2003}}));
    EXPECT_EQ(store().read(today).tally.byKey().valueOr(a, 0), 2000) << "what is in the file";
    EXPECT_EQ(data.files(), before);
}

}  // namespace
}  // namespace tappora
