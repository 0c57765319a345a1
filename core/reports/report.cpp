#include "core/reports/report.h"

#include <algorithm>
#include <set>

#include "core/files/day_reader.h"
#include "core/foundation/checked.h"
#include "core/practice/practice_history.h"
#include "core/reports/changes.h"

namespace tapcore {
namespace {

/// By how many days a stretch is moved back so that weekdays agree and it does not meet itself.
std::int64_t wholeWeeks(const Stretch& stretch) { return (stretch.days() + 6) / 7 * 7; }

std::vector<Stretch> earlierStretches(const ReportPeriod& period, const Stretch& passed) {
    std::vector<Stretch> stretches;
    if (period.days() > longestWithUsual) return stretches;
    for (std::int64_t times = 1; times <= mostEarlier; ++times)
        stretches.push_back(passed.earlier(times * wholeWeeks(passed)));
    return stretches;
}

/// Reads the days of stretches that have a file, each once.
TypingDays daysOf(const Store& store, const std::vector<Stretch>& stretches, FileProblems* problems,
                  const Progress& progress) {
    std::vector<Day> wanted;
    for (const Day& day : store.days(problems))
        if (std::any_of(stretches.begin(), stretches.end(),
                        [&](const Stretch& stretch) { return stretch.first <= day && day <= stretch.last; }))
            wanted.push_back(day);
    const DayReader reader(store);  // what cannot be listed was named above
    TypingDays days;
    for (std::size_t i = 0; i < wanted.size() && shouldContinue(progress, i, wanted.size()); ++i) {
        const std::string place = store.url(wanted[i]).replace_extension().string();
        const FatalContext context("summing up", place);
        days.emplace_hint(days.end(), wanted[i], store.shown(reader.read(wanted[i], problems)));
    }
    return days;
}

std::vector<Report::DayLine> linesOf(const TypingDays& days, const Stretch& passed) {
    std::vector<Report::DayLine> lines;
    for (Day day = passed.first; day <= passed.last; day = daysLater(day, 1)) {
        Report::DayLine line{.day = day, .keystrokes = std::nullopt};
        if (days.contains(day)) {
            const Summary summary =
                figuresOf(days, {day, day, day == passed.last ? passed.hoursOfLast : 24}).summary;
            line.keystrokes = summary.keystrokes;
            line.activeHours = summary.activeHours;
            line.clicks = summary.clicks();
        }
        lines.push_back(line);
    }
    return lines;
}

/// Whether another period has typing on at least half as many days: otherwise counting had not begun, or
/// somebody was away.
bool hasEnough(const StretchFigures& figures, std::int64_t typingDays) {
    return figures.typingDays * 2 >= typingDays && figures.summary.keystrokes > 0;
}

/// What another period adds up to, where that is enough to compare with.
std::optional<Report::Totals> totalsOf(const TypingDays& days, const ReportPeriod& period,
                                       const ReportPeriod& own, const Stretch& passed,
                                       std::int64_t typingDays) {
    const Stretch stretch = sameStretch(period, own, passed);
    const StretchFigures figures = figuresOf(days, stretch);
    if (!hasEnough(figures, typingDays)) return std::nullopt;
    return Report::Totals{period,
                          stretch,
                          figures.summary.keystrokes,
                          figures.summary.activeHours,
                          figures.typingDays,
                          figures.summary.clicks()};
}

std::optional<ComparedPeriod> comparedOf(const TypingDays& days, const ReportQuestion& question,
                                         const Stretch& passed, std::int64_t typingDays) {
    if (!question.comparedWith) return std::nullopt;
    ComparedPeriod compared{
        *question.comparedWith, sameStretch(*question.comparedWith, question.period, passed), {}};
    StretchFigures figures = figuresOf(days, compared.stretch);
    if (hasEnough(figures, typingDays)) compared.figures = std::move(figures);
    return compared;
}

std::optional<Report::UsualTotals> usualOf(const std::vector<CountedStretch>& earlier) {
    std::vector<double> keystrokes;
    std::vector<double> activeHours;
    for (const CountedStretch& each : earlier) {
        if (each.figures.summary.keystrokes == 0) continue;
        keystrokes.push_back(static_cast<double>(each.figures.summary.keystrokes));
        activeHours.push_back(static_cast<double>(each.figures.summary.activeHours));
    }
    const auto usualKeystrokes = tapcore::usualOf(keystrokes);
    if (!usualKeystrokes) return std::nullopt;
    return Report::UsualTotals{*usualKeystrokes, *tapcore::usualOf(activeHours)};
}

/// The day with more keystrokes than any other from `since` to the end of `now`, when that is one of `now`.
/// All days between are among `days`, unless nobody counted.
std::optional<Finding> recordOf(const CountedStretch& now, const TypingDays& days, const Day& since) {
    constexpr std::ptrdiff_t enoughForRecord = 60;
    const auto first = days.lower_bound(since), end = days.upper_bound(now.stretch.last);
    if (std::distance(first, end) < enoughForRecord) return std::nullopt;
    const auto most = std::max_element(first, end, [](const auto& a, const auto& b) {
        return a.second.tally.total() < b.second.tally.total();
    });
    const auto isAsMuch = [&](const auto& item) {
        return item.second.tally.total() == most->second.tally.total();
    };
    if (most->first < now.stretch.first || std::count_if(first, end, isAsMuch) > 1) return std::nullopt;
    const Stretch all{first->first, now.stretch.last, now.stretch.hoursOfLast};
    return Finding{.kind = Finding::Kind::record,
                   .value = static_cast<double>(most->second.tally.total()),
                   .stretches = {now.stretch, all},
                   .day = most->first};
}

/// What is so of the period itself, whatever is usual.
void addFacts(std::vector<Finding>& findings, const CountedStretch& now, const TypingDays& days,
              const Day& since) {
    const auto hour = now.figures.busiestHour();
    if (!hour) return;
    findings.push_back(
        {.kind = Finding::Kind::busiestHour,
         .value = static_cast<double>(now.figures.summary.byHour[static_cast<std::size_t>(*hour)]) /
                  static_cast<double>(now.figures.summary.keystrokes),
         .stretches = {now.stretch},
         .hour = *hour});
    if (auto record = recordOf(now, days, since)) findings.push_back(std::move(*record));
}

Report::Practice practiceOf(const PracticeHistory& history, const Stretch& passed) {
    Report::Practice practice;
    std::set<std::string> known;
    LetterStats all;
    for (const auto& [day, practised] : history.days) {
        const bool isInside = passed.first <= day && day <= passed.last;
        if (isInside && practised.seconds > 0) ++practice.days;
        for (const auto& [letter, stats] : practised.letters) {
            if (day > passed.last || stats.presses == 0) continue;
            if (known.insert(letter).second && isInside) practice.newLetters.push_back(letter);
            if (isInside) all += stats;
        }
        if (!isInside) continue;
        addChecked(practice.seconds, practised.seconds);
        addChecked(practice.lessons, practised.lessons);
        practice.best = std::max(practice.best, practised.best);
    }
    constexpr std::int64_t millisecondsPerWordAMinute = 12000;  // a word is five letters
    if (const auto pace = all.averageMilliseconds(); pace && *pace > 0)
        practice.pace = millisecondsPerWordAMinute / *pace;
    return practice;
}

std::optional<Report::LayoutOffer> otherLayoutOf(const ReportKeyboard& keyboard,
                                                 const Tally::KeyCounts& counts) {
    const LegendSet today{keyboard.layout, keyboard.layoutName, keyboard.legends};
    const auto ranking = rankLayouts(
        {.board = keyboard.board, .today = today, .layouts = keyboard.layouts, .letters = keyboard.letters},
        counts);
    const LayoutStanding* better = ranking ? ranking->clearlyBetter() : nullptr;
    if (!better) return std::nullopt;
    return Report::LayoutOffer{ranking->today, *better};
}

void add(Report::DayLine& month, const Report::DayLine& day) {
    if (!day.keystrokes) return;
    month.keystrokes = checkedSum(month.keystrokes.value_or(0), *day.keystrokes);
    addChecked(month.activeHours, day.activeHours);
    addChecked(month.clicks, day.clicks);
}

}  // namespace

std::vector<Report::DayLine> monthLines(const std::vector<Report::DayLine>& days) {
    std::vector<Report::DayLine> months;
    for (const Report::DayLine& day : days) {
        const Day first(day.day.year, day.day.month, 1);
        if (months.empty() || months.back().day != first)
            months.push_back({.day = first, .keystrokes = std::nullopt});
        add(months.back(), day);
    }
    return months;
}

Report reportOf(const Store& store, const ReportQuestion& question, FileProblems* problems,
                const Progress& progress) {
    Report report;
    report.period = question.period;
    report.isOver = question.today > question.period.last;
    const auto passed = passedOf(question.period, question.today, question.hoursPassed);
    if (!passed) return report;
    report.passed = *passed;
    const ReportPeriod before = question.period.previous();
    const ReportPeriod yearBefore = question.period.yearBefore();
    const std::vector<Stretch> earlier = earlierStretches(question.period, *passed);
    const Day since = earlier.empty() ? passed->first : earlier.back().first;
    std::vector<Stretch> read = {{since, passed->last}};
    read.insert(read.end(), {sameStretch(before, question.period, *passed),
                             sameStretch(yearBefore, question.period, *passed)});
    if (question.comparedWith) read.push_back(sameStretch(*question.comparedWith, question.period, *passed));
    const TypingDays days = daysOf(store, read, problems, progress);

    const CountedStretch now{*passed, figuresOf(days, *passed)};
    std::vector<CountedStretch> counted;
    for (const Stretch& each : earlier) counted.push_back({each, figuresOf(days, each)});
    const ReportKeyboard& keyboard = question.keyboard;
    report.figures = now.figures;
    report.days = linesOf(days, *passed);
    report.classes = countsByClass(now.figures.summary.byKey, keyboard.legends);
    report.load = Load(keyboard.board, keyboard.legends, now.figures.summary.byKey, {});
    report.usual = usualOf(counted);
    report.before = totalsOf(days, before, question.period, *passed, now.figures.typingDays);
    if (yearBefore != before && !yearBefore.meets(question.period))
        report.yearBefore = totalsOf(days, yearBefore, question.period, *passed, now.figures.typingDays);
    report.compared = comparedOf(days, question, *passed, now.figures.typingDays);
    report.findings = changes(now, counted, keyboard.board);
    addFacts(report.findings, now, days, since);
    const PracticeHistory history = store.practiceHistory(problems);
    report.practice = practiceOf(history, *passed);
    constexpr std::int64_t recent = 90;
    report.gains = letterGains(now.figures.summary.byKey, keyboard.legends,
                               history.recent(daysLater(passed->last, -recent), keyboard.layout),
                               now.figures.typingDays);
    report.otherLayout = otherLayoutOf(keyboard, now.figures.summary.byKey);
    return report;
}

}  // namespace tapcore
