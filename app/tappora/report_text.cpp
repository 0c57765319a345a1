#include "app/tappora/report_text.h"

#include <algorithm>

#include "app/common/report/report_tables.h"
#include "app/tappora/bar_chart.h"
#include "app/tappora/terminal_table.h"
#include "core/foundation/date_text.h"
#include "core/foundation/weekday_names.h"
#include "core/reports/finding_text.h"
#include "core/reports/report_title.h"

namespace tappora {
namespace {

using tapcore::Report;
using Lines = std::vector<std::string>;

constexpr std::size_t topRows = 10;  // of keys and shortcuts

/// A text as a terminal shows it that has no more than ASCII.
std::string plain(std::string text) {
    for (const auto& [sign, instead] : {std::pair("•", "-"), std::pair("–", "-"), std::pair("−", "-")})
        for (auto at = text.find(sign); at != text.npos; at = text.find(sign))
            text.replace(at, std::string_view(sign).size(), instead);
    return text;
}

/// The sections of a report, each with its heading; nothing for one that has nothing to say.
class Sections {
  public:
    Sections(const Report& report, const tapcore::ReportKeyboard& keyboard, const ReportLanguage& language,
             const Terminal& terminal)
        : report_(report),
          keyboard_(keyboard),
          language_(language),
          terminal_(terminal),
          tables_(report, keyboard, language.words, language.locale) {}

    std::string text() const {
        return terminal_.bold(title()) + "\n" + findings() + "\n" + joined(figures(tables_.figures())) +
               compared() + hours() + days() + keys() + section("kinds", linesOf(tables_.kinds())) +
               fingers() + section("practice", figures(tables_.practice()));
    }

  private:
    Lines linesOf(const ReportTable& table, const std::vector<std::int64_t>& amounts = {}) const {
        return table.rows.empty() ? Lines{} : tappora::linesOf(table, terminal_, amounts);
    }

    std::string word(const std::string& key) const { return tables_.word("report.section." + key); }

    std::string section(const std::string& name, const Lines& lines) const {
        return lines.empty() ? "" : "\n" + terminal_.bold(word(name)) + "\n" + joined(lines);
    }

    /// "Week 38, September 14 – 20, 2026", and up to when, if it is not over.
    std::string title() const {
        std::string text = titleOf(report_.period, language_.words, language_.locale);
        if (report_.isOver) return text;
        const tapcore::Day& last = report_.passed.last;
        std::string to = tapcore::dateText({last.year, last.month, last.day}, language_.locale);
        if (const std::int64_t hours = report_.passed.hoursOfLast; hours < 24)
            to += " " + language_.dates.hour(static_cast<std::size_t>(hours)) +
                  (language_.dates.twelveHours ? "" : ":00");
        return text + "; " + tables_.word("report.page.up_to", {{"to", to}});
    }

    /// The first of what was found, and what could be done first.
    std::string findings() const {
        constexpr std::size_t leading = 3;
        Lines texts;
        for (std::size_t i = 0; i < std::min(leading, report_.findings.size()); ++i)
            texts.push_back(textOf(report_.findings[i], keyboard_.names, language_.words, language_.locale));
        for (std::string& advice : adviceOf(report_, keyboard_, language_.words, 1))
            texts.push_back(std::move(advice));
        std::string all;
        for (const std::string& text : texts) all += joined(wrapped(text, "  • ", terminal_.width));
        return all.empty() ? "" : "\n" + all;
    }

    Lines figures(const std::vector<ReportTables::Figure>& figures) const {
        ReportTable table{"", {{""}, {"", true}}, {}};
        for (const auto& [name, value] : figures) table.rows.push_back({{name}, {value, true}});
        Lines lines = linesOf(table);
        if (!lines.empty()) lines.erase(lines.begin());  // its header, which is empty
        return lines;
    }

    std::string compared() const {
        std::string text = section("compared", linesOf(tables_.compared()));
        if (const std::string tooFew = tables_.comparedWithTooFew(); !tooFew.empty())
            text += "\n" + joined(wrapped(tooFew, "", terminal_.width));
        if (const auto with = tables_.comparedWith())
            text += "\n" + terminal_.bold(with->caption) + "\n" + joined(linesOf(*with));
        return text;
    }

    std::string hours() const {
        const auto& byHour = report_.figures.summary.byHour;
        const std::string most = tables_.number(*std::max_element(byHour.begin(), byHour.end()));
        const std::string chart = hoursChart(byHour, most, language_.dates, terminal_);
        return chart.empty() ? "" : "\n" + terminal_.bold(word("hours_of_day")) + "\n" + chart;
    }

    /// A bar for each day or month. One without data has none: that nobody counted does not mean that nobody
    /// typed. Of many months, those without data are left out.
    std::string days() const {
        constexpr std::size_t mostLines = 31;
        const bool byMonth = report_.days.size() > mostLines;
        std::vector<Report::DayLine> lines = byMonth ? tapcore::monthLines(report_.days) : report_.days;
        if (lines.size() > mostLines)
            std::erase_if(lines, [](const Report::DayLine& line) { return !line.keystrokes; });
        const std::string name = byMonth ? "months" : "days";
        ReportTable table{word(name), {{word(name)}, {tables_.word("report.figure.keystrokes"), true}}, {}};
        std::vector<std::int64_t> amounts;
        const tapcore::DateWriter date(
            byMonth ? tapcore::DateWriter::Form::month : tapcore::DateWriter::Form::usual, language_.locale);
        const auto weekdays = tapcore::weekdayNames(language_.locale);
        for (const auto& line : lines) {
            const std::string weekday = byMonth ? "" : weekdays[line.day.weekday()] + " ";
            table.rows.push_back(
                {{weekday + date({line.day.year, line.day.month, line.day.day})},
                 {line.keystrokes ? tables_.number(*line.keystrokes) : tables_.word("report.page.no_data"),
                  true}});
            amounts.push_back(line.keystrokes.value_or(0));
        }
        Lines text = linesOf(table, amounts);
        if (!text.empty()) text.erase(text.begin());  // its header says what the heading does
        if (byMonth) addGaps(text);
        return section(name, text);
    }

    void addGaps(Lines& lines) const {
        const auto gaps = std::count_if(report_.days.begin(), report_.days.end(),
                                        [](const Report::DayLine& line) { return !line.keystrokes; });
        if (gaps > 0)
            lines.push_back("  " +
                            tables_.word("report.days.gaps", {{"n", tables_.number(std::int64_t{gaps})}}));
    }

    std::string keys() const {
        const auto names =
            terminal_.unicode ? ReportTables::ShortcutNames::signs : ReportTables::ShortcutNames::words;
        const Lines both =
            beside(linesOf(tables_.keys(topRows)), linesOf(tables_.shortcuts(topRows, names)), terminal_);
        return section("keyboard", report_.figures.summary.byKey.empty() ? Lines{} : both);
    }

    std::string fingers() const {
        std::vector<std::int64_t> amounts;
        for (const auto& [striker, part] : report_.load.byFinger) amounts.push_back(part.presses);
        return section("fingers", linesOf(tables_.fingers(), amounts));
    }

    const Report& report_;
    const tapcore::ReportKeyboard& keyboard_;
    const ReportLanguage& language_;
    const Terminal& terminal_;
    const ReportTables tables_;
};

}  // namespace

std::string reportText(const Report& report, const tapcore::ReportKeyboard& keyboard,
                       const ReportLanguage& language, const Terminal& terminal) {
    std::string text = Sections(report, keyboard, language, terminal).text();
    return terminal.unicode ? text : plain(std::move(text));
}

}  // namespace tappora
