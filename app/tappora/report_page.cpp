#include "app/tappora/report_page.h"

#include <fmt/format.h>

#include <cmath>

#include "app/tappora/page_parts.h"
#include "app/tappora/page_pictures.h"
#include "core/counting/chords.h"
#include "core/foundation/date_text.h"
#include "core/foundation/weekday_names.h"
#include "core/reports/compared_figures.h"
#include "core/reports/finding_text.h"
#include "core/reports/report_title.h"

namespace tappora {
namespace {

using tapcore::Report;
using tapcore::ReportPeriod;

constexpr std::size_t mostRows = 20;

/// What all sections are made from.
class Page {
  public:
    Page(const Report& report, const tapcore::ReportKeyboard& keyboard, const tapcore::Words& words,
         const PageStyle& style)
        : report_(report), keyboard_(keyboard), words_(words), style_(style) {}

    std::string text() const {
        const std::string title = word("report.page.title", {{"name", titleOf(report_.period)}});
        return "<!doctype html>\n<html lang=\"" + escaped(words_.language()) +
               "\">\n<head>\n<meta charset=\"utf-8\">\n"
               "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
               "'unsafe-inline'\">\n"
               "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
               escaped(title) + "</title>\n<style>" + styleSheet(heatStyles(style_.color)) +
               "</style>\n</head>\n<body>\n<header><h1>" + escaped(title) + "</h1>\n<p>" + escaped(dates()) +
               "</p></header>\n<main>\n" + sections() + "</main>\n<footer><p>" +
               escaped(word("report.page.footer")) + "</p></footer>\n</body>\n</html>\n";
    }

  private:
    std::string word(std::string_view key, tapcore::Words::Values values = {}) const {
        return words_.text(key, values);
    }
    std::string titleOf(const ReportPeriod& period) const {
        return tapcore::titleOf(period, words_, style_.locale);
    }
    std::string number(std::int64_t value) const { return words_.number(value); }

    std::string date(const tapcore::Day& day) const {
        return tapcore::dateText({day.year, day.month, day.day}, style_.locale);
    }

    std::string dates() const {
        const ReportPeriod& period = report_.period;
        std::string text =
            period.first == period.last
                ? date(period.first)
                : word("report.page.dates", {{"from", date(period.first)}, {"to", date(period.last)}});
        if (!report_.isOver) text += "; " + word("report.page.up_to", {{"to", date(report_.passed.last)}});
        return text + " · " + keyboard_.board.name + " · " + keyboard_.layoutName;
    }

    std::string sections() const {
        return titled("findings", findings()) + titled("figures", figures()) +
               titled("compared", compared()) + titled(isLong() ? "year" : "days", days()) +
               titled("hours", hours()) + titled("keyboard", keys()) + "<div class=\"two\">" +
               titled("shortcuts", shortcuts()) + titled("kinds", kinds()) + "</div>" +
               titled("fingers", fingers()) + titled("practice", practice());
    }

    std::string titled(const std::string& name, const std::string& content) const {
        return section(name, word("report.section." + name), content);
    }

    bool isLong() const { return report_.days.size() > 62; }

    std::string findings() const {
        std::string items;
        for (const tapcore::Finding& finding : report_.findings)
            items += "<li>" + escaped(textOf(finding, keyboard_.legends, words_)) + "</li>\n";
        for (const std::string& advice : adviceOf(report_, keyboard_, words_, 3))
            items += "<li>" + escaped(advice) + "</li>\n";
        return items.empty() ? "" : "<ol class=\"findings\">\n" + items + "</ol>\n";
    }

    std::string figure(const std::string& name, const std::string& value) const {
        return "<div><dt>" + escaped(word("report.figure." + name)) + "</dt><dd>" + escaped(value) +
               "</dd></div>\n";
    }

    std::string figures() const {
        const tapcore::Summary& summary = report_.figures.summary;
        const tapcore::Tally::MouseHour mouse = summary.mouseTotal();
        std::string items = figure("keystrokes", number(summary.keystrokes)) +
                            figure("active_hours", number(summary.activeHours)) +
                            figure("per_hour", number(summary.averagePerActiveHour()));
        if (summary.peakPerMinute > 0) items += figure("busiest_minute", number(summary.peakPerMinute));
        items += figure("typing_days", number(report_.figures.typingDays));
        if (!mouse.isEmpty()) {
            items += figure("clicks", number(summary.clicks())) + figure("scrolls", number(mouse.scrolls)) +
                     figure("metres", words_.number(summary.movedMetres(), 0));
            if (const auto share = summary.keyboardShare()) items += figure("keyboard_share", number(*share));
        }
        return "<dl class=\"figures\">\n" + items + "</dl>\n";
    }

    std::string signedText(std::int64_t change, bool isDifference = false) const {
        return (change > 0   ? "+"
                : change < 0 ? "−"
                             : "") +
               number(std::abs(change)) + (isDifference ? "" : " %");
    }

    std::string change(double then) const {
        if (then <= 0) return "";
        const double now = static_cast<double>(report_.figures.summary.keystrokes);
        return signedText(std::llround((now - then) * 100 / then));
    }

    std::string rounded(double value) const { return number(std::int64_t{std::llround(value)}); }

    std::string compared() const {
        PageTable table{word("report.section.compared"),
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
        return (table.rows.empty() ? "" : html(table)) + askedFor();
    }

    /// The period that --compare asked for.
    std::string askedFor() const {
        if (!report_.compared) return "";
        const std::string name = titleOf(report_.compared->period);
        if (!report_.compared->figures)
            return "<p>" + escaped(word("report.compared.few", {{"name", name}})) + "</p>\n";
        PageTable table{word("report.compared.with", {{"name", name}}),
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
        return "<h3>" + escaped(table.caption) + "</h3>\n" + html(table);
    }

    void addTotals(PageTable& table, std::string_view key,
                   const std::optional<Report::Totals>& totals) const {
        if (!totals) return;
        table.rows.push_back({{word(key, {{"name", titleOf(totals->period)}})},
                              {number(totals->keystrokes), true},
                              {change(static_cast<double>(totals->keystrokes)), true},
                              {number(totals->activeHours), true}});
    }

    std::string days() const {
        if (report_.days.size() < 2) return "";
        PageTable table{word("report.section.days"),
                        {{word("report.column.date")},
                         {word("report.figure.keystrokes"), true},
                         {word("report.figure.active_hours"), true},
                         {word("report.figure.clicks"), true}},
                        {}};
        for (const Report::DayLine& line : report_.days)
            table.rows.push_back(
                {{date(line.day)},
                 {line.keystrokes ? number(*line.keystrokes) : word("report.page.no_data"), true},
                 {line.keystrokes ? number(line.activeHours) : "", true},
                 {line.keystrokes ? number(line.clicks) : "", true}});
        const std::string picture = isLong() ? yearPicture(report_, words_, style_.locale)
                                             : daysPicture(report_, words_, style_.locale);
        return picture + behindButton(table, words_);
    }

    std::string hours() const {
        const auto names = tapcore::weekdayNames(style_.locale);
        const std::size_t first = tapcore::firstWeekday(style_.locale);
        PageTable table{word("report.section.hours"), {{word("report.column.hour")}}, {}};
        for (std::size_t i = 0; i < 7; ++i) table.header.push_back({names[(first + i) % 7], true});
        for (std::size_t hour = 0; hour < tapcore::Tally::hours; ++hour) {
            if (report_.figures.summary.byHour[hour] == 0) continue;
            std::vector<PageCell> row = {{std::to_string(hour)}};
            for (std::size_t i = 0; i < 7; ++i)
                row.push_back({number(report_.figures.byWeekdayAndHour[(first + i) % 7][hour]), true});
            table.rows.push_back(std::move(row));
        }
        if (table.rows.empty()) return "";
        return hoursPicture(report_, words_, style_.locale) + behindButton(table, words_);
    }

    std::string shareOf(std::int64_t part, std::int64_t all) const {
        return percentOf(all == 0 ? 0 : static_cast<double>(part) / static_cast<double>(all), words_) + " %";
    }

    std::string keys() const {
        const std::string picture = keyboardPicture(report_, keyboard_, words_);
        if (picture.empty()) return "";
        const auto& counts = report_.figures.summary.byKey;
        const std::int64_t all = tapcore::sumOfCounts(counts);
        PageTable table{word("report.section.keyboard"),
                        {{word("report.column.key")},
                         {word("report.column.count"), true},
                         {word("report.column.share"), true}},
                        {}};
        for (const tapcore::KeyRow& row : tapcore::topKeys(counts, keyboard_.legends, counts.size()))
            table.rows.push_back({{row.name}, {number(row.count), true}, {shareOf(row.count, all), true}});
        std::string text = "<p class=\"hint\">" + escaped(word("report.page.hint")) + "</p>\n" + picture;
        if (report_.load.offBoard > 0)
            text += "<p class=\"hint\">" +
                    escaped(word("report.page.off_board", {{"n", number(report_.load.offBoard)}})) + "</p>\n";
        return text + behindButton(table, words_);
    }

    std::string shortcuts() const {
        PageTable table{word("report.section.shortcuts"),
                        {{word("report.section.shortcuts")}, {word("report.column.count"), true}},
                        {}};
        for (const tapcore::ChordRow& row :
             tapcore::Chords::top(report_.figures.summary.byChord, keyboard_.legends, std::int64_t{mostRows}))
            table.rows.push_back({{tapcore::Chords::compact(row.keys)}, {number(row.count), true}});
        return table.rows.empty() ? "" : html(table);
    }

    std::string kinds() const {
        const std::int64_t all = tapcore::sumOfCounts(report_.figures.summary.byKey);
        PageTable table{word("report.section.kinds"),
                        {{word("report.column.kind")},
                         {word("report.column.count"), true},
                         {word("report.column.share"), true}},
                        {}};
        for (std::size_t i = 0; i < tapcore::keyClasses; ++i)
            if (report_.classes[i] > 0)
                table.rows.push_back({{word("report.kind." + std::string(tapcore::keyClassWords.words[i]))},
                                      {number(report_.classes[i]), true},
                                      {shareOf(report_.classes[i], all), true}});
        return table.rows.empty() ? "" : html(table);
    }

    std::string fingers() const {
        const tapcore::Load& load = report_.load;
        if (load.all.presses == 0) return "";
        PageTable table{word("report.section.fingers"),
                        {{word("report.column.finger")},
                         {word("report.column.count"), true},
                         {word("report.column.share"), true},
                         {word("report.column.metres"), true}},
                        {}};
        for (const auto& [striker, part] : load.byFinger)
            table.rows.push_back({{nameOf(striker, words_)},
                                  {number(part.presses), true},
                                  {shareOf(part.presses, load.all.presses), true},
                                  {load.hasHome(striker) ? rounded(part.metres) : "", true}});
        return handsPicture(report_, words_) + behindButton(table, words_);
    }

    std::string practice() const {
        const Report::Practice& practised = report_.practice;
        if (practised.seconds == 0) return "";
        std::string items = figure("lessons", number(practised.lessons)) +
                            figure("minutes", number((practised.seconds + 30) / 60));
        if (practised.best > 0) items += figure("best", number(practised.best));
        if (!practised.newLetters.empty())
            items += figure("new_letters", fmt::format("{}", fmt::join(practised.newLetters, " ")));
        return "<dl class=\"figures\">\n" + items + "</dl>\n";
    }

    const Report& report_;
    const tapcore::ReportKeyboard& keyboard_;
    const tapcore::Words& words_;
    const PageStyle& style_;
};

}  // namespace

std::string reportPage(const Report& report, const tapcore::ReportKeyboard& keyboard,
                       const tapcore::Words& words, const PageStyle& style) {
    return Page(report, keyboard, words, style).text();
}

}  // namespace tappora
