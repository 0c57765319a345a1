#include "app/common/report/report_tables.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cmath>

#include "core/counting/chords.h"
#include "core/foundation/date_text.h"
#include "core/foundation/weekday_names.h"
#include "core/reports/compared_figures.h"
#include "core/reports/finding_text.h"
#include "core/reports/report_title.h"

namespace tappora {

using tapcore::Report;
using tapcore::ReportPeriod;

std::string percentOf(double share, const tapcore::Words& words) {
    const double inPercent = share * 100;
    return words.number(inPercent, inPercent < 9.95 && inPercent > 0 ? 1 : 0);
}

std::string ReportTables::title() const {
    return word("report.page.title", {{"name", titleOf(report_.period)}});
}

std::string ReportTables::subtitle() const {
    const ReportPeriod& period = report_.period;
    std::string text =
        period.first == period.last
            ? date(period.first)
            : word("report.page.dates", {{"from", date(period.first)}, {"to", date(period.last)}});
    if (!report_.isOver) text += "; " + word("report.page.up_to", {{"to", date(report_.passed.last)}});
    return text + " · " + keyboard_.board.name + " · " + keyboard_.layoutName;
}

std::vector<std::string> ReportTables::findings() const {
    std::vector<std::string> texts;
    for (const tapcore::Finding& finding : report_.findings)
        texts.push_back(textOf(finding, keyboard_.names, words_, locale_));
    for (std::string& advice : adviceOf(report_, keyboard_, words_, 3)) texts.push_back(std::move(advice));
    return texts;
}

ReportTables::Figure ReportTables::figure(const std::string& name, std::string value) const {
    return {word("report.figure." + name), std::move(value)};
}

std::vector<ReportTables::Figure> ReportTables::figures() const {
    const tapcore::Summary& summary = report_.figures.summary;
    const tapcore::Tally::MouseHour mouse = summary.mouseTotal();
    std::vector<Figure> items = {figure("keystrokes", number(summary.keystrokes)),
                                 figure("active_hours", number(summary.activeHours)),
                                 figure("per_hour", number(summary.averagePerActiveHour()))};
    if (summary.peakPerMinute > 0) items.push_back(figure("busiest_minute", number(summary.peakPerMinute)));
    items.push_back(figure("typing_days", number(report_.figures.typingDays)));
    if (mouse.isEmpty()) return items;
    items.push_back(figure("clicks", number(summary.clicks())));
    items.push_back(figure("scrolls", number(mouse.scrolls)));
    items.push_back(figure("metres", words_.number(summary.movedMetres(), 0)));
    if (const auto share = summary.keyboardShare()) items.push_back(figure("keyboard_share", number(*share)));
    return items;
}

std::vector<ReportTables::Figure> ReportTables::practice() const {
    const Report::Practice& practised = report_.practice;
    if (practised.seconds == 0) return {};
    std::vector<Figure> items = {figure("lessons", number(practised.lessons)),
                                 figure("minutes", number((practised.seconds + 30) / 60))};
    if (practised.best > 0) items.push_back(figure("best", number(practised.best)));
    if (!practised.newLetters.empty())
        items.push_back(figure("new_letters", fmt::format("{}", fmt::join(practised.newLetters, " "))));
    return items;
}

ReportTable ReportTables::compared() const {
    ReportTable table{word("report.section.compared"),
                      {{word("report.column.with")},
                       {word("report.figure.keystrokes"), true},
                       {word("report.column.change"), true},
                       {word("report.figure.active_hours"), true}},
                      {}};
    if (report_.usual) {
        const auto& [keystrokes, active] = *report_.usual;
        const auto count = static_cast<std::int64_t>(keystrokes.count);
        table.rows.push_back({{word("report.with.usual", {{"n", number(count)}})},
                              {rounded(keystrokes.median), true},
                              {change(keystrokes.median), true},
                              {rounded(active.median), true}});
        table.rows.push_back({{word("report.with.middle_half")},
                              {rounded(keystrokes.lower) + " – " + rounded(keystrokes.upper), true},
                              {"", true},
                              {rounded(active.lower) + " – " + rounded(active.upper), true}});
    }
    addTotals(table, "report.with.before", report_.before);
    addTotals(table, "report.with.year_before", report_.yearBefore);
    return table;
}

std::optional<ReportTable> ReportTables::comparedWith() const {
    if (!report_.compared || !report_.compared->figures) return std::nullopt;
    ReportTable table{word("report.compared.with", {{"name", titleOf(report_.compared->period)}}),
                      {{word("report.column.figure")},
                       {word("report.column.now"), true},
                       {word("report.column.then"), true},
                       {word("report.column.change"), true}},
                      {}};
    for (const tapcore::ComparedFigure& figure :
         comparedFigures(report_.figures, *report_.compared->figures)) {
        const auto by = figure.change();
        table.rows.push_back({{word(figure.word)},
                              {rounded(figure.now), true},
                              {rounded(figure.then), true},
                              {by ? signedText(std::llround(*by), figure.isShare) : "", true}});
    }
    return table;
}

std::string ReportTables::comparedWithTooFew() const {
    if (!report_.compared || report_.compared->figures) return "";
    return word("report.compared.few", {{"name", titleOf(report_.compared->period)}});
}

void ReportTables::addTotals(ReportTable& table, std::string_view key,
                             const std::optional<Report::Totals>& totals) const {
    if (!totals) return;
    table.rows.push_back({{word(key, {{"name", titleOf(totals->period)}})},
                          {number(totals->keystrokes), true},
                          {change(static_cast<double>(totals->keystrokes)), true},
                          {number(totals->activeHours), true}});
}

ReportTable ReportTables::days() const {
    const bool byMonth = bars_.kind == ReportBars::Kind::months;
    ReportTable table{word(byMonth ? "report.section.months" : "report.section.days"),
                      {{word(byMonth ? "report.column.month" : "report.column.date")},
                       {word("report.figure.keystrokes"), true},
                       {word("report.figure.active_hours"), true},
                       {word("report.figure.clicks"), true}},
                      {}};
    for (const auto& [line, name, label] : bars_.bars)
        table.rows.push_back(
            {{name},
             {line.keystrokes ? number(*line.keystrokes) : word("report.page.no_data"), true},
             {line.keystrokes ? number(line.activeHours) : "", true},
             {line.keystrokes ? number(line.clicks) : "", true}});
    return table;
}

ReportTable ReportTables::hours() const {
    const auto names = tapcore::weekdayNames(locale_);
    const std::size_t first = tapcore::firstWeekday(locale_);
    ReportTable table{word("report.section.hours"), {{word("report.column.hour")}}, {}};
    for (std::size_t i = 0; i < 7; ++i) table.header.push_back({names[(first + i) % 7], true});
    for (std::size_t hour = 0; hour < tapcore::Tally::hours; ++hour) {
        if (report_.figures.summary.byHour[hour] == 0) continue;
        std::vector<ReportCell> row = {{std::to_string(hour)}};
        for (std::size_t i = 0; i < 7; ++i) {
            const std::size_t weekday = (first + i) % 7;
            const bool isCounted = report_.figures.countedDays[weekday] > 0;
            row.push_back({isCounted ? number(report_.figures.byWeekdayAndHour[weekday][hour]) : "", true});
        }
        table.rows.push_back(std::move(row));
    }
    return table;
}

ReportTable ReportTables::keys(std::size_t most) const {
    const auto& counts = report_.figures.summary.byKey;
    const std::int64_t all = tapcore::sumOfCounts(counts);
    ReportTable table{word("report.section.keyboard"),
                      {{word("report.column.key")},
                       {word("report.column.count"), true},
                       {word("report.column.share"), true}},
                      {}};
    for (const tapcore::KeyRow& row : tapcore::topKeys(counts, keyboard_.names, most))
        table.rows.push_back({{row.name}, {number(row.count), true}, {shareOf(row.count, all), true}});
    return table;
}

ReportTable ReportTables::shortcuts(std::size_t most, ShortcutNames names) const {
    ReportTable table{word("report.section.shortcuts"),
                      {{word("report.section.shortcuts")}, {word("report.column.count"), true}},
                      {}};
    for (const tapcore::ChordRow& row : tapcore::Chords::top(report_.figures.summary.byChord, keyboard_.names,
                                                             static_cast<std::int64_t>(most)))
        table.rows.push_back(
            {{names == ShortcutNames::signs ? tapcore::Chords::compact(row.keys)
                                            : row.chord.modifiers.name() + "+" + row.keys.back()},
             {number(row.count), true}});
    return table;
}

ReportTable ReportTables::kinds() const {
    const std::int64_t all = tapcore::sumOfCounts(report_.figures.summary.byKey);
    ReportTable table{word("report.section.kinds"),
                      {{word("report.column.kind")},
                       {word("report.column.count"), true},
                       {word("report.column.share"), true}},
                      {}};
    for (std::size_t i = 0; i < tapcore::keyClasses; ++i)
        if (report_.classes[i] > 0)
            table.rows.push_back({{word("report.kind." + std::string(tapcore::keyClassWords.words[i]))},
                                  {number(report_.classes[i]), true},
                                  {shareOf(report_.classes[i], all), true}});
    return table;
}

ReportTable ReportTables::fingers() const {
    const tapcore::Load& load = report_.load;
    ReportTable table{word("report.section.fingers"),
                      {{word("report.column.finger")},
                       {word("report.column.count"), true},
                       {word("report.column.share"), true},
                       {word("report.column.metres"), true}},
                      {}};
    if (load.all.presses == 0) return table;
    for (const auto& [striker, part] : load.byFinger)
        table.rows.push_back({{nameOf(striker, words_)},
                              {number(part.presses), true},
                              {shareOf(part.presses, load.all.presses), true},
                              {load.hasHome(striker) ? rounded(part.metres) : "", true}});
    return table;
}

std::string ReportTables::offBoard() const {
    if (report_.load.offBoard == 0) return "";
    return word("report.page.off_board", {{"n", number(report_.load.offBoard)}});
}

std::string ReportTables::date(const tapcore::Day& day) const {
    return tapcore::dateText({day.year, day.month, day.day}, locale_);
}

std::string ReportTables::titleOf(const ReportPeriod& period) const {
    return tapcore::titleOf(period, words_, locale_);
}

std::string ReportTables::rounded(double value) const { return number(std::int64_t{std::llround(value)}); }

std::string ReportTables::shareOf(std::int64_t part, std::int64_t all) const {
    return percentOf(all == 0 ? 0 : static_cast<double>(part) / static_cast<double>(all), words_) + " %";
}

std::string ReportTables::signedText(std::int64_t change, bool isDifference) const {
    const char* sign = change > 0 ? "+" : change < 0 ? "−" : "";
    return sign + number(std::abs(change)) + (isDifference ? "" : " %");
}

std::string ReportTables::change(double then) const {
    if (then <= 0) return "";
    const double now = static_cast<double>(report_.figures.summary.keystrokes);
    return signedText(std::llround((now - then) * 100 / then));
}

}  // namespace tappora
