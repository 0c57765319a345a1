#include "core/reports/report_document.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <system_error>
#include <utility>

#include "core/counting/chords.h"
#include "core/files/folder_names.h"
#include "core/files/text_table.h"
#include "core/foundation/file_io.h"
#include "core/reports/finding_text.h"

namespace tapcore {
namespace {

constexpr std::size_t mostRows = 20;
constexpr std::array<std::string_view, 7> weekdays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

std::string decimal(std::int64_t value) { return std::to_string(value); }

std::string rounded(double value) { return decimal(std::int64_t{std::llround(value)}); }

/// With so many figures behind the point, whatever the locale.
std::string decimal(double value, int figures) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", figures, value);
    return text.data();
}

/// "12.5 %", of a total.
std::string shareText(std::int64_t part, std::int64_t total) {
    return decimal(total == 0 ? 0 : static_cast<double>(part) * 100 / static_cast<double>(total), 1) + " %";
}

/// A document that grows by its tables; those without rows are left out.
class Document {
  public:
    Document(FileFormat format, const std::string& title) : format_(format), text_(format.titleLine(title)) {}

    void add(std::string_view title, const TextTable& table) {
        if (!table.rows.empty()) text_ += "\n" + table.section(format_, title);
    }
    std::string text() && { return std::move(text_); }

  private:
    FileFormat format_;
    std::string text_;
};

TextTable totalsTable(const Report& report) {
    const Summary& summary = report.figures.summary;
    const Tally::MouseHour mouse = summary.mouseTotal();
    const std::int64_t gaps = report.passed.days() - static_cast<std::int64_t>(summary.byDay.size());
    TextTable table{{"figure", "value"}, {false, true}, {}};
    const auto add = [&](std::string name, std::string value) {
        table.rows.push_back({std::move(name), std::move(value)});
    };
    add("first day", report.period.first.description());
    add("last day", report.period.last.description());
    if (!report.isOver) add("up to", report.passed.last.description());
    add("keystrokes", decimal(summary.keystrokes));
    add("active hours", decimal(summary.activeHours));
    add("per active hour", decimal(summary.averagePerActiveHour()));
    if (summary.peakPerMinute > 0) add("busiest minute", decimal(summary.peakPerMinute));
    add("days with typing", decimal(report.figures.typingDays));
    add("days without data", decimal(gaps));
    if (mouse.isEmpty()) return table;
    add("clicks", decimal(summary.clicks()));
    add("scroll steps", decimal(mouse.scrolls));
    add("pointer, metres", decimal(summary.movedMetres(), 1));
    if (const auto share = summary.keyboardShare()) add("keyboard share", decimal(*share) + " %");
    return table;
}

std::string change(std::int64_t now, double then) {
    if (then <= 0) return "";
    const auto percent = std::llround((static_cast<double>(now) - then) * 100 / then);
    return (percent > 0 ? "+" : "") + decimal(std::int64_t{percent}) + " %";
}

TextTable comparisonTable(const Report& report) {
    TextTable table{{"with", "keystrokes", "change", "active hours"}, {false, true, true, true}, {}};
    const std::int64_t now = report.figures.summary.keystrokes;
    if (report.usual) {
        const auto& [keystrokes, hours] = *report.usual;
        table.rows.push_back({"usual, median of " + std::to_string(keystrokes.count),
                              rounded(keystrokes.median), change(now, keystrokes.median),
                              rounded(hours.median)});
        table.rows.push_back({"the middle half",
                              rounded(keystrokes.lower) + " to " + rounded(keystrokes.upper), "",
                              rounded(hours.lower) + " to " + rounded(hours.upper)});
    }
    const auto add = [&](const char* what, const std::optional<Report::Totals>& totals) {
        if (totals)
            table.rows.push_back({what + totals->period.name(), decimal(totals->keystrokes),
                                  change(now, static_cast<double>(totals->keystrokes)),
                                  decimal(totals->activeHours)});
    };
    add("the one before, ", report.before);
    add("a year ago, ", report.yearBefore);
    return table;
}

TextTable findingsTable(const Report& report, const ReportKeyboard& keyboard, const Words& words) {
    TextTable table{{"finding"}, {false}, {}};
    for (const Finding& finding : report.findings)
        table.rows.push_back({textOf(finding, keyboard.names, words, words.language())});
    for (std::string& advice : adviceOf(report, keyboard, words, 0))
        table.rows.push_back({std::move(advice)});
    return table;
}

TextTable daysTable(const Report& report) {
    TextTable table{
        {"date", "weekday", "keystrokes", "active_hours", "clicks"}, {false, false, true, true, true}, {}};
    const bool byMonth = report.days.size() > mostDayLines;
    for (const Report::DayLine& line : byMonth ? monthLines(report.days) : report.days) {
        const bool isCounted = line.keystrokes.has_value();
        table.rows.push_back({byMonth ? line.day.monthName() : line.day.description(),
                              byMonth ? "" : std::string(weekdays[line.day.weekday()]),
                              isCounted ? decimal(*line.keystrokes) : "no data",
                              isCounted ? decimal(line.activeHours) : "",
                              isCounted ? decimal(line.clicks) : ""});
    }
    return table;
}

/// Presses by hour and weekday, from Monday on, of the hours that have any.
TextTable hoursTable(const Report& report) {
    TextTable table{{"hour"}, {true}, {}};
    constexpr std::array<std::size_t, 7> fromMonday = {1, 2, 3, 4, 5, 6, 0};
    for (const std::size_t weekday : fromMonday) {
        table.header.emplace_back(weekdays[weekday]);
        table.alignRight.push_back(true);
    }
    for (std::size_t hour = 0; hour < Tally::hours; ++hour) {
        if (report.figures.summary.byHour[hour] == 0) continue;
        std::vector<std::string> row = {std::to_string(hour)};
        for (const std::size_t weekday : fromMonday)
            row.push_back(report.figures.countedDays[weekday] == 0
                              ? ""
                              : decimal(report.figures.byWeekdayAndHour[weekday][hour]));
        table.rows.push_back(std::move(row));
    }
    return table;
}

TextTable keysTable(const Report& report, const Legends& legends) {
    TextTable table{{"key", "keycode", "count", "share"}, {false, true, true, true}, {}};
    const std::int64_t all = sumOfCounts(report.figures.summary.byKey);
    for (const KeyRow& row : topKeys(report.figures.summary.byKey, legends, mostRows))
        table.rows.push_back(
            {row.name, std::to_string(row.keyCode), decimal(row.count), shareText(row.count, all)});
    return table;
}

TextTable shortcutsTable(const Report& report, const Legends& legends) {
    TextTable table{{"shortcut", "count"}, {false, true}, {}};
    for (const ChordRow& row : Chords::top(report.figures.summary.byChord, legends, std::int64_t{mostRows}))
        table.rows.push_back({Chords::compact(row.keys), decimal(row.count)});
    return table;
}

TextTable classesTable(const Report& report) {
    TextTable table{{"keys", "count", "share"}, {false, true, true}, {}};
    const std::int64_t all = sumOfCounts(report.figures.summary.byKey);
    for (std::size_t i = 0; i < keyClasses; ++i)
        if (report.classes[i] > 0)
            table.rows.push_back({std::string(keyClassWords.words[i]), decimal(report.classes[i]),
                                  shareText(report.classes[i], all)});
    return table;
}

TextTable fingersTable(const Report& report) {
    TextTable table{{"part", "presses", "share", "metres"}, {false, true, true, true}, {}};
    const Load& load = report.load;
    if (load.all.presses == 0) return table;
    const auto add = [&](const std::string& name, const Load::Part& part, bool hasWay) {
        table.rows.push_back({name, decimal(part.presses), shareText(part.presses, load.all.presses),
                              hasWay ? rounded(part.metres) : ""});
    };
    for (const auto& [striker, part] : load.byFinger)
        add(std::string(Board::hands.of(striker.hand)) + " " + std::string(Board::fingers.of(striker.finger)),
            part, load.hasHome(striker));
    for (const auto& [hand, part] : load.byHand)
        add(std::string(Board::hands.of(hand)) + " hand", part, true);
    for (const auto& [row, part] : load.byRow) add(std::string(Board::rows.of(row)) + " row", part, true);
    return table;
}

TextTable practiceTable(const Report& report) {
    TextTable table{{"figure", "value"}, {false, true}, {}};
    const Report::Practice& practice = report.practice;
    if (practice.seconds == 0) return table;
    table.rows = {{"days", decimal(practice.days)},
                  {"minutes", rounded(static_cast<double>(practice.seconds) / 60)},
                  {"lessons", decimal(practice.lessons)}};
    if (practice.best > 0) table.rows.push_back({"fastest lesson, wpm", decimal(practice.best)});
    if (practice.pace) table.rows.push_back({"pace of all presses, wpm", decimal(*practice.pace)});
    std::string letters;
    for (const std::string& letter : practice.newLetters) letters += (letters.empty() ? "" : " ") + letter;
    if (!letters.empty()) table.rows.push_back({"new letters", letters});
    return table;
}

TextTable gainsTable(const Report& report) {
    TextTable table{
        {"letter", "share", "ms", "minutes_a_day", "spared_a_day"}, {false, true, true, true, true}, {}};
    constexpr std::size_t most = 5;
    for (std::size_t i = 0; i < std::min(most, report.gains.size()); ++i) {
        const LetterGain& gain = report.gains[i];
        table.rows.push_back({gain.letter, decimal(gain.share * 100, 1) + " %", decimal(gain.milliseconds),
                              decimal(gain.minutesADay, 1), decimal(gain.sparedADay, 1)});
    }
    return table;
}

/// The tables of a document, without its sentences: these differ by language, and figures do not.
std::vector<TextTable::Section> figuresIn(std::string_view document) {
    std::vector<TextTable::Section> tables = TextTable::sections(document);
    std::erase_if(tables, [](const TextTable::Section& table) { return table.name == "findings"; });
    return tables;
}

}  // namespace

std::string documentOf(const Report& report, const ReportKeyboard& keyboard, const Words& words,
                       FileFormat format) {
    Document document(format, report.period.name());
    document.add("Findings", findingsTable(report, keyboard, words));
    document.add("Totals", totalsTable(report));
    document.add("Compared", comparisonTable(report));
    document.add("Days", daysTable(report));
    document.add("Hours", hoursTable(report));
    document.add("Keys", keysTable(report, keyboard.names));
    document.add("Kinds", classesTable(report));
    document.add("Shortcuts", shortcutsTable(report, keyboard.names));
    document.add("Fingers", fingersTable(report));
    document.add("Practice", practiceTable(report));
    document.add("Worth practising (estimates)", gainsTable(report));
    return std::move(document).text();
}

Store reportsAt(const Store& store) { return {store.root, store.format}; }

SavedReport saveReport(const Store& store, const std::string& name, const std::string& document) {
    const Store top = reportsAt(store);
    const std::filesystem::path folder = top.base() / reportsFolder;
    const std::filesystem::path file = folder / (name + "." + std::string(store.format.fileExtension()));
    SavedReport saved = SavedReport::written;
    bool isThere = false;
    for (const std::filesystem::path& copy : top.copies(reportsFolder, name)) {
        const std::string before = readFile(copy).text;
        isThere = isThere || (copy == file && before == document);
        saved = figuresIn(before) == figuresIn(document) ? SavedReport::reworded : SavedReport::changed;
    }
    if (!isThere) store.warnUnlessSafe(Store::write(document, file));
    top.removeOthers(reportsFolder, name, file);
    return isThere ? SavedReport::unchanged : saved;
}

}  // namespace tapcore
