#include "core/reports/report_period.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

using Kind = ReportPeriod::Kind;

TEST(ReportPeriod, IsNamedAndKnowsTheOnesBefore) {
    struct Case {
        Kind kind;
        Day day;
        const char *name, *first, *last, *previous, *yearBefore;
    };
    const Case cases[] = {
        {Kind::day, {2024, 2, 29}, "2024-02-29", "2024-02-29", "2024-02-29", "2024-02-28", "2023-02-28"},
        {Kind::week, {2026, 9, 20}, "2026-W38", "2026-09-14", "2026-09-20", "2026-W37", "2025-W38"},
        {Kind::week, {2026, 9, 21}, "2026-W39", "2026-09-21", "2026-09-27", "2026-W38", "2025-W39"},
        {Kind::week, {2027, 1, 3}, "2026-W53", "2026-12-28", "2027-01-03", "2026-W52", "2025-W52"},
        {Kind::week, {2024, 12, 30}, "2025-W01", "2024-12-30", "2025-01-05", "2024-W52", "2024-W01"},
        {Kind::month, {2024, 2, 5}, "2024-02", "2024-02-01", "2024-02-29", "2024-01", "2023-02"},
        {Kind::year, {2026, 9, 20}, "2026", "2026-01-01", "2026-12-31", "2025", "2025"},
    };
    for (const Case& each : cases) {
        const auto period = ReportPeriod::containing(each.kind, each.day);
        EXPECT_EQ(period.name(), each.name);
        EXPECT_EQ(period.first.description(), each.first) << each.name;
        EXPECT_EQ(period.last.description(), each.last) << each.name;
        EXPECT_EQ(period.previous().name(), each.previous) << each.name;
        EXPECT_EQ(period.yearBefore().name(), each.yearBefore) << each.name;
    }
    const auto span = ReportPeriod::span({2026, 9, 1}, {2026, 9, 14});
    EXPECT_EQ(span.name(), "2026-09-01_2026-09-14");
    EXPECT_EQ(span.previous().name(), "2026-08-18_2026-08-31");
    EXPECT_EQ(span.yearBefore().name(), "2025-09-01_2025-09-14");
}

TEST(ReportPeriod, ThatIsNotOverIsComparedWithTheSameStretch) {
    const auto month = ReportPeriod::containing(Kind::month, {2026, 3, 1});
    EXPECT_EQ(passedOf(month, {2026, 2, 28}, 5), std::nullopt);
    EXPECT_EQ(passedOf(month, {2026, 3, 1}, 0), std::nullopt) << "nothing of its first day is over";
    EXPECT_EQ(passedOf(month, {2026, 3, 2}, 0), (Stretch{{2026, 3, 1}, {2026, 3, 1}}));
    EXPECT_EQ(passedOf(month, {2026, 3, 31}, 9), (Stretch{{2026, 3, 1}, {2026, 3, 31}, 9}));
    EXPECT_EQ(passedOf(month, {2026, 4, 1}, 9), (Stretch{{2026, 3, 1}, {2026, 3, 31}}));
    EXPECT_EQ(sameStretch(month.previous(), month, {{2026, 3, 1}, {2026, 3, 5}, 9}),
              (Stretch{{2026, 2, 1}, {2026, 2, 5}, 9}));
    EXPECT_EQ(sameStretch(month.previous(), month, {{2026, 3, 1}, {2026, 3, 30}, 9}),
              (Stretch{{2026, 2, 1}, {2026, 2, 28}}))
        << "February is over by then";
}

TEST(ReportPeriod, ThatIsOverIsComparedWithAllOfAnotherHoweverLong) {
    struct Case {
        ReportPeriod period, other;
        Stretch stretch;
    };
    const auto of = [](Kind kind, const Day& day) { return ReportPeriod::containing(kind, day); };
    const Case cases[] = {
        {of(Kind::month, {2026, 2, 1}), of(Kind::month, {2026, 1, 1}), {{2026, 1, 1}, {2026, 1, 31}}},
        {of(Kind::month, {2026, 3, 1}), of(Kind::month, {2026, 2, 1}), {{2026, 2, 1}, {2026, 2, 28}}},
        {of(Kind::year, {2025, 5, 5}), of(Kind::year, {2024, 5, 5}), {{2024, 1, 1}, {2024, 12, 31}}},
        {of(Kind::week, {2026, 9, 20}), of(Kind::week, {2026, 9, 1}), {{2026, 8, 31}, {2026, 9, 6}}},
        {of(Kind::day, {2026, 9, 20}), of(Kind::day, {2026, 9, 1}), {{2026, 9, 1}, {2026, 9, 1}}},
    };
    for (const auto& [period, other, stretch] : cases)
        EXPECT_EQ(sameStretch(other, period, {period.first, period.last}), stretch) << period.name();
}

TEST(ReportPeriod, MeetsAnotherThatHasADayInCommon) {
    const auto span = ReportPeriod::span({2026, 9, 1}, {2026, 9, 14});
    struct Case {
        Day first, last;
        bool meets;
    };
    const Case cases[] = {
        {{2026, 8, 1}, {2026, 8, 31}, false},  {{2026, 8, 1}, {2026, 9, 1}, true},
        {{2026, 9, 5}, {2026, 9, 6}, true},    {{2026, 9, 14}, {2026, 9, 30}, true},
        {{2026, 9, 15}, {2026, 9, 15}, false}, {{2026, 1, 1}, {2026, 12, 31}, true},
    };
    for (const auto& [first, last, meets] : cases)
        EXPECT_EQ(span.meets(ReportPeriod::span(first, last)), meets) << first.description();
}

}  // namespace
}  // namespace tapcore
