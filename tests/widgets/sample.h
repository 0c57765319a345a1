#pragma once

#include "core/widget/widget_snapshot.h"
#include "core/words/words.h"
#include "drawing/painter.h"

namespace tapwidgets {

inline constexpr tapcore::Instant tenOClock =
    std::chrono::sys_days(std::chrono::year(2026) / 9 / 20) + std::chrono::hours(10);
inline const tapcore::Words english = tapcore::Words::load(RESOURCES "/Words", "en");
inline const tapcore::Words german = tapcore::Words::load(RESOURCES "/Words", "de");
inline const drawing::TextWidth measured = drawing::systemTextWidth();

inline tapcore::WidgetSnapshot sample() {
    tapcore::WidgetSnapshot snapshot;
    snapshot.day = "2026-09-20";
    snapshot.today = 12345;
    snapshot.byHour = {(1LL << 53) + 1, 1500};
    snapshot.comparison = -7;
    snapshot.week = {{"Sa", 1000, false}, {"So", 12345, true}};
    snapshot.boardName = "Acme Two";
    snapshot.bounds = tapcore::Board::Rect{1, 2, 2, 1};
    snapshot.heat = {{.x = 1, .y = 2, .w = 1, .h = 1, .step = 3}, {.x = 2, .y = 2, .w = 1, .h = 1, .r = 90}};
    snapshot.language = "de";
    return snapshot;
}

}  // namespace tapwidgets
