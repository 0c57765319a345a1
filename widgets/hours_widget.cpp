#include "widgets/views.h"

#include <algorithm>
#include <string>
#include <utility>

#include "core/counting/tally.h"
#include "drawing/chart.h"
#include "widgets/view_parts.h"

namespace tapwidgets {
namespace {

using drawing::Font;
using drawing::Node;
using drawing::Style;
using tapcore::Tally;

/// The title, and the total at the right.
Node header(std::int64_t today, const Canvas& canvas) {
    const Font font = Font::caption().withWeight(drawing::Weight::semibold).withMonospacedDigits();
    const std::string total = canvas.words.number(today);
    const double room = std::min(drawing::roughWidth(total, font), canvas.size.width / 2);
    Node number = {drawing::Text{.text = total,
                                 .font = font,
                                 .style = {},
                                 .at = {canvas.size.width, font.ascent()},
                                 .alignment = drawing::Alignment::trailing,
                                 .width = room,
                                 .minimumScale = 0.5},
                   {}};
    return drawing::group(
        {caption(canvas.words.text("widget.hours"), canvas.size.width - room - spacing), std::move(number)});
}

}  // namespace

std::optional<Node> HoursWidget::drawing() const {
    const tapcore::Words& words = canvas.words;
    const drawing::Rect room = belowCaption(canvas.size);
    drawing::AreaChart chart{.size = {room.width, room.height},
                             .label = words.text("widget.hours"),
                             .points = {},
                             .lastX = Tally::hours - 1,
                             .xMarks = {{0, "0"}, {6, "6"}, {12, "12"}, {18, "18"}},
                             .number = [&](double value) { return wholeNumber(value, words); },
                             .unit = words.text("chart.keystrokes"),
                             .style = Style{.role = Style::Role::accent}.asAccentable()};
    const std::string hour = words.text("chart.hour") + ' ';
    const std::size_t hours = std::min(snapshot.byHour.size(), Tally::hours);
    for (std::size_t i = 0; i < hours; ++i)
        chart.points.push_back({hour + std::to_string(i), static_cast<double>(snapshot.byHour[i]),
                                words.number(snapshot.byHour[i])});
    return drawing::group(
        {header(snapshot.today, canvas),
         drawing::group({drawing::areaChart(chart)}, drawing::Transform::moved(0, room.y))});
}

}  // namespace tapwidgets
