#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/files/file_problem.h"
#include "core/files/store.h"
#include "core/foundation/progress.h"
#include "core/keyboard/board.h"
#include "core/keyboard/legend_set.h"
#include "core/keyboard/load.h"
#include "core/reports/compared_figures.h"
#include "core/reports/finding.h"
#include "core/reports/key_class.h"
#include "core/reports/layout_ranking.h"
#include "core/reports/letter_gain.h"
#include "core/reports/report_period.h"
#include "core/reports/typing_days.h"
#include "core/reports/usual.h"

namespace tapcore {

/// The keyboard that a report lays the counts over.
struct ReportKeyboard {
    Board board;
    std::string layout;      ///< its id, as practice files name it
    std::string layoutName;  ///< for people
    Legends legends;
    Legends names = {};                     ///< what keys are called: by the user's own words too
    std::vector<LegendSet> layouts = {};    ///< what today's layout is compared with
    std::vector<std::string> letters = {};  ///< of the language that is typed
};

/// What a period of typing says.
struct Report {
    /// A day of the period: a gap when it has no file, which is not the same as a day without a press.
    struct DayLine {
        Day day;
        std::optional<std::int64_t> keystrokes;
        std::int64_t activeHours = 0;
        std::int64_t clicks = 0;

        bool operator==(const DayLine&) const = default;
    };

    /// Another period's totals.
    struct Totals {
        ReportPeriod period;
        Stretch stretch;  ///< as much of it as is over of the report's own
        std::int64_t keystrokes = 0;
        std::int64_t activeHours = 0;
        std::int64_t typingDays = 0;
        std::int64_t clicks = 0;

        bool operator==(const Totals&) const = default;
    };

    /// The same weekdays of the weeks before.
    struct UsualTotals {
        Usual keystrokes;
        Usual activeHours;

        bool operator==(const UsualTotals&) const = default;
    };

    /// Two layouts that the same counts were laid over.
    struct LayoutOffer {
        LayoutStanding today;
        LayoutStanding other;

        /// What part of today's travel the other one spares.
        double spared() const { return 1 - other.metres / today.metres; }
        bool operator==(const LayoutOffer&) const = default;
    };

    struct Practice {
        std::int64_t days = 0;
        std::int64_t seconds = 0;
        std::int64_t lessons = 0;
        std::int64_t best = 0;                ///< the fastest lesson, in words per minute
        std::optional<std::int64_t> pace;     ///< of all timed presses, in words per minute
        std::vector<std::string> newLetters;  ///< practised for the first time ever

        bool operator==(const Practice&) const = default;
    };

    ReportPeriod period;
    Stretch passed;  ///< what is over of the period
    bool isOver = true;
    StretchFigures figures;
    std::vector<DayLine> days;  ///< those that are over, without those after the last one counted today
    ClassCounts classes{};
    Load load{Board{}, {}, {}, {}};
    Practice practice;
    std::optional<UsualTotals> usual;  ///< of periods of up to 31 days, where three or more weeks have typing
    std::optional<Totals> before;      ///< nothing where too few days have typing
    std::optional<Totals> yearBefore;  ///< the same; nothing for a year, whose year before is the one before
    std::optional<ComparedPeriod> compared;  ///< the period that was asked for
    std::vector<Finding> findings;           ///< what changed, the farthest from usual first; then facts
    std::vector<LetterGain> gains;
    std::optional<LayoutOffer> otherLayout;  ///< one that would spare more than a fifth of the travel

    /// Whether nothing was counted or practised.
    bool isEmpty() const { return figures.summary.isEmpty() && practice.seconds == 0; }
};

/// What a report is asked of.
struct ReportQuestion {
    ReportPeriod period;
    Day today;
    std::int64_t hoursPassed = 24;  ///< whole hours of today, by the clock
    ReportKeyboard keyboard;
    std::optional<ReportPeriod> comparedWith = {};  ///< besides what a report is always compared with
};

/// Of more days than that, people are told by month: of a year, and the weeks that it begins and ends in.
inline constexpr std::size_t mostDayLines = 53 * 7;

/// The lines of whole months, each under its first day: a gap when none of its days has a file.
std::vector<Report::DayLine> monthLines(const std::vector<Report::DayLine>& days);

/// So many times a stretch is looked back for what is usual.
inline constexpr std::int64_t mostEarlier = 8;
/// What is usual is told of periods of up to so many days: of longer ones nobody has eight.
inline constexpr std::int64_t longestWithUsual = 31;

/// Reads what the report needs and works it out; a period that has not begun gives an empty one. Files that
/// cannot be read are named in `problems`, once each, and the rest is reported.
Report reportOf(const Store& store, const ReportQuestion& question, FileProblems* problems = nullptr,
                const Progress& progress = {});

}  // namespace tapcore
