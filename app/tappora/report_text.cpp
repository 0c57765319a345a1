#include "app/tappora/report_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "app/common/keyboard/board_counts.h"
#include "app/common/keyboard/fingers_view.h"
#include "app/tappora/bar_chart.h"
#include "app/tappora/period_text.h"
#include "core/foundation/characters.h"
#include "core/foundation/integers.h"
#include "core/reports/compared_figures.h"
#include "core/reports/finding_text.h"
#include "core/reports/report_title.h"

namespace tappora {
namespace {

using tapcore::Report;

constexpr std::size_t leading = 3;  // findings that are shown first

std::string heading(std::string_view text, const Terminal& terminal) {
    return "\n" + terminal.bold(text) + "\n";
}

/// A text as a terminal shows it that has no more than ASCII.
std::string plain(std::string text) {
    for (const auto& [sign, instead] : {std::pair("•", "-"), std::pair("–", "-")})
        for (auto at = text.find(sign); at != text.npos; at = text.find(sign))
            text.replace(at, std::string_view(sign).size(), instead);
    return text;
}

/// "Week 38, September 14 – 20, 2026", and up to when, if it is not over.
std::string title(const Report& report, const ReportLanguage& language) {
    std::string text = titleOf(report.period, language.words, language.locale);
    if (report.isOver) return text;
    text += "; up to " + report.passed.last.description();
    return report.passed.hoursOfLast < 24 ? text + fmt::format(" {}:00", report.passed.hoursOfLast) : text;
}

/// Lines of words, none wider than the terminal unless a word is; all but the first are indented.
std::string wrapped(const std::string& text, std::size_t width) {
    std::string lines;
    std::string line = "  • ";
    const std::string indent = "    ";
    std::size_t from = 0;
    while (from < text.size()) {
        const std::size_t to = std::min(text.find(' ', from), text.size());
        const std::string word = text.substr(from, to - from);
        const bool isFirst = line == indent || line.ends_with("• ");
        if (!isFirst && tapcore::columnCount(line) + 1 + tapcore::columnCount(word) > width) {
            lines += line + "\n";
            line = indent + word;
        } else {
            line += (isFirst ? "" : " ") + word;
        }
        from = to + 1;
    }
    return lines + line + "\n";
}

std::string findingsText(const Report& report, const tapcore::ReportKeyboard& keyboard,
                         const tapcore::Words& words, const Terminal& terminal) {
    std::string text;
    for (std::size_t i = 0; i < std::min(leading, report.findings.size()); ++i)
        text += wrapped(textOf(report.findings[i], keyboard.names, words), terminal.width);
    for (const std::string& advice : adviceOf(report, keyboard, words, 1))
        text += wrapped(advice, terminal.width);
    if (!terminal.unicode) text = plain(text);
    return text.empty() ? "" : "\n" + text;
}

std::string changeText(std::int64_t now, double then) {
    if (then <= 0) return "";
    return fmt::format("{:+} %", std::llround((static_cast<double>(now) - then) * 100 / then));
}

std::string comparisonLine(const std::string& name, const std::string& value, const std::string& change) {
    return fmt::format("  {:<32}{:>16}{:>10}\n", name, value, change);
}

std::string comparisonText(const Report& report, const Terminal& terminal) {
    const std::int64_t now = report.figures.summary.keystrokes;
    const auto rounded = [](double value) { return tapcore::grouped(std::llround(value)); };
    std::string text;
    if (report.usual) {
        const tapcore::Usual& usual = report.usual->keystrokes;
        text += comparisonLine(fmt::format("usual (median of {})", usual.count), rounded(usual.median),
                               changeText(now, usual.median));
        text += comparisonLine("the middle half", rounded(usual.lower) + " to " + rounded(usual.upper), "");
    }
    if (report.before)
        text += comparisonLine("the one before, " + report.before->period.name(),
                               tapcore::grouped(report.before->keystrokes),
                               changeText(now, static_cast<double>(report.before->keystrokes)));
    if (report.yearBefore)
        text += comparisonLine("a year ago, " + report.yearBefore->period.name(),
                               tapcore::grouped(report.yearBefore->keystrokes),
                               changeText(now, static_cast<double>(report.yearBefore->keystrokes)));
    return text.empty() ? "" : heading("Keystrokes compared", terminal) + text;
}

/// What --compare asked for.
std::string comparedText(const Report& report, const ReportLanguage& language, const Terminal& terminal) {
    if (!report.compared) return "";
    const std::string name = titleOf(report.compared->period, language.words, language.locale);
    if (!report.compared->figures)
        return "\n" + language.words.text("report.compared.few", {{"name", name}}) + "\n";
    std::string text = heading(language.words.text("report.compared.with", {{"name", name}}), terminal);
    for (const tapcore::ComparedFigure& figure : comparedFigures(report.figures, *report.compared->figures)) {
        const auto change = figure.change();
        const std::string by =
            change ? fmt::format("{:+}{}", std::llround(*change), figure.isShare ? "" : " %") : "";
        text += fmt::format("  {:<24}{:>12}{:>12}{:>10}\n", figure.name,
                            tapcore::grouped(std::llround(figure.now)),
                            tapcore::grouped(std::llround(figure.then)), by);
    }
    return terminal.unicode ? text : plain(text);
}

std::string fingersText(const Report& report, const Terminal& terminal) {
    const tapcore::Load& load = report.load;
    if (load.all.presses == 0) return "";
    std::int64_t most = 1;
    for (const auto& [striker, part] : load.byFinger) most = std::max(most, part.presses);
    std::string text = heading("Fingers", terminal);
    for (const auto& [striker, part] : load.byFinger) {
        constexpr std::size_t barWidth = 30;
        const std::string drawn = bar(part.presses, most, barWidth, terminal);
        text += fmt::format("  {:<20}{:>8}{:>10}{}{}\n", fingerName(striker.hand, striker.finger),
                            percentText(part.presses, load.all.presses),
                            load.hasHome(striker) ? travelText(part.metres) : "", drawn.empty() ? "" : "  ",
                            drawn);
    }
    return text;
}

std::string kindsText(const Report& report, const Terminal& terminal) {
    const std::int64_t all = tapcore::sumOfCounts(report.figures.summary.byKey);
    if (all == 0) return "";
    std::string text = heading("Kinds of keys", terminal);
    for (std::size_t i = 0; i < tapcore::keyClasses; ++i)
        if (report.classes[i] > 0)
            text += fmt::format("  {:<14}{:>14}{:>9}\n", tapcore::keyClassWords.words[i],
                                tapcore::grouped(report.classes[i]), percentText(report.classes[i], all));
    return text;
}

std::string practiceText(const Report& report, const Terminal& terminal) {
    const Report::Practice& practice = report.practice;
    if (practice.seconds == 0) return "";
    std::string text = heading("Practice", terminal);
    text += fmt::format(
        "  {} on {}, {}", tapcore::counted(static_cast<std::size_t>(practice.lessons), "lesson", "lessons"),
        tapcore::counted(static_cast<std::size_t>(practice.days), "day", "days"),
        tapcore::counted(static_cast<std::size_t>((practice.seconds + 30) / 60), "minute", "minutes"));
    if (practice.best > 0) text += fmt::format("; fastest lesson {} wpm", practice.best);
    text += "\n";
    if (!practice.newLetters.empty())
        text += fmt::format("  new letters: {}\n", fmt::join(practice.newLetters, " "));
    return text;
}

/// A bar for each day, and none for a day without a file: that nobody counted does not mean that nobody
/// typed.
std::string eachDay(const Report& report, const Terminal& terminal) {
    std::int64_t most = 1;
    for (const Report::DayLine& line : report.days) most = std::max(most, line.keystrokes.value_or(0));
    std::string text = heading("Days", terminal);
    for (const Report::DayLine& line : report.days) {
        const std::string name = weekday(line.day) + " " + line.day.description();
        constexpr std::size_t barWidth = 40;
        const std::string drawn = bar(line.keystrokes.value_or(0), most, barWidth, terminal);
        const std::string value = line.keystrokes ? tapcore::grouped(*line.keystrokes) : "no data";
        text += fmt::format("  {:<14}{:>14}{}{}\n", name, value, drawn.empty() ? "" : " ", drawn);
    }
    return text;
}

std::string daysText(const Report& report, const Terminal& terminal) {
    constexpr std::size_t mostDays = 31;
    if (report.days.size() <= mostDays) return eachDay(report, terminal);
    std::size_t gaps = 0;
    for (const Report::DayLine& line : report.days) gaps += line.keystrokes ? 0 : 1;
    const std::string months = daysSection(report.figures.summary, terminal);
    return gaps == 0 ? months
                     : months + fmt::format("  {} without data\n", tapcore::counted(gaps, "day", "days"));
}

}  // namespace

std::string reportText(const Report& report, const tapcore::ReportKeyboard& keyboard,
                       const ReportLanguage& language, const Terminal& terminal) {
    const tapcore::Summary& summary = report.figures.summary;
    const std::string heading = title(report, language);
    std::string text = terminal.bold(terminal.unicode ? heading : plain(heading)) + "\n";
    text += findingsText(report, keyboard, language.words, terminal) + "\n" + figures(summary);
    text += comparisonText(report, terminal) + comparedText(report, language, terminal) +
            hoursSection(summary, language.dates, terminal);
    text += daysText(report, terminal) + topSection(summary, keyboard.names, 10, terminal);
    return text + kindsText(report, terminal) + fingersText(report, terminal) +
           practiceText(report, terminal);
}

}  // namespace tappora
