#include "core/reports/compared_figures.h"

namespace tapcore {

std::optional<double> ComparedFigure::change() const {
    if (isShare) return now - then;
    if (then <= 0) return std::nullopt;
    return (now - then) * 100 / then;
}

std::vector<ComparedFigure> comparedFigures(const StretchFigures& now, const StretchFigures& then) {
    const Summary& a = now.summary;
    const Summary& b = then.summary;
    std::vector<ComparedFigure> figures;
    const auto add = [&](std::string_view name, std::string_view word, std::int64_t of, std::int64_t other) {
        if (of == 0 && other == 0) return;
        figures.push_back(
            {.name = name, .word = word, .now = static_cast<double>(of), .then = static_cast<double>(other)});
    };
    add("keystrokes", "report.figure.keystrokes", a.keystrokes, b.keystrokes);
    add("days with typing", "report.figure.typing_days", now.typingDays, then.typingDays);
    add("active hours", "report.figure.active_hours", a.activeHours, b.activeHours);
    add("per active hour", "report.figure.per_hour", a.averagePerActiveHour(), b.averagePerActiveHour());
    add("busiest minute", "report.figure.busiest_minute", a.peakPerMinute, b.peakPerMinute);
    add("clicks", "report.figure.clicks", a.clicks(), b.clicks());
    add("scroll steps", "report.figure.scrolls", a.mouseTotal().scrolls, b.mouseTotal().scrolls);
    const auto share = a.keyboardShare(), other = b.keyboardShare();
    if (share && other) {
        add("keyboard share, %", "report.figure.keyboard_share", *share, *other);
        figures.back().isShare = true;
    }
    return figures;
}

}  // namespace tapcore
