#include "widgets/views.h"

#include "drawing/chart.h"
#include "widgets/view_parts.h"

namespace tapwidgets {

using drawing::Style;

std::optional<drawing::Node> WeekWidget::drawing() const {
    if (snapshot.week.empty()) return std::nullopt;
    const tapcore::Words& words = canvas.words;
    const drawing::Rect room = belowCaption(canvas.size);
    const Style style = Style{.role = Style::Role::accent}.asAccentable();
    drawing::BarChart chart{.size = {room.width, room.height},
                            .label = words.text("chart.keystrokes") + ", " + words.text("chart.day"),
                            .bars = {},
                            .number = [&](double value) { return wholeNumber(value, words); }};
    for (const auto& bar : snapshot.week)
        chart.bars.push_back({{bar.label, static_cast<double>(bar.keystrokes), words.number(bar.keystrokes)},
                              bar.today ? style : style.withOpacity(0.55)});
    return drawing::group({caption(words.text("widget.week"), canvas.size.width),
                           drawing::group({drawing::barChart(chart)}, drawing::Transform::moved(0, room.y))});
}

}  // namespace tapwidgets
