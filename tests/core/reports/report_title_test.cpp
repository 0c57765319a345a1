#include "core/reports/report_title.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

TEST(ReportTitle, IsWhatPeopleCallAPeriodInTheirLanguage) {
    using Kind = ReportPeriod::Kind;
    const Day day(2026, 9, 20);
    const ReportPeriod week = ReportPeriod::containing(Kind::week, day);
    const struct {
        ReportPeriod period;
        const char* language;
        const char* locale;
        const char* title;
    } cases[] = {
        {week, "en", "en", "Week 38, September 14 – 20, 2026"},
        {week, "en", "en_GB", "Week 38, 14–20 September 2026"},
        {week, "de", "de_AT", "Woche 38, 14.–20. September 2026"},
        {week, "uk", "uk", "Тиждень 38, 14–20 вересня 2026 р."},
        {ReportPeriod::containing(Kind::week, {2027, 1, 1}), "en", "en",
         "Week 53, December 28, 2026 – January 3, 2027"},
        {ReportPeriod::containing(Kind::month, day), "fr", "fr", "septembre 2026"},
        {ReportPeriod::containing(Kind::month, day), "ru", "ru", "сентябрь 2026 г."},
        {ReportPeriod::containing(Kind::month, day), "en", "en_TH@calendar=buddhist", "September 2026"},
        {ReportPeriod::containing(Kind::year, day), "es", "es", "2026"},
        {ReportPeriod::containing(Kind::day, day), "es", "es", "domingo, 20 de septiembre de 2026"},
        {ReportPeriod::span({2026, 8, 30}, {2026, 9, 4}), "de", "de", "30. August – 4. September 2026"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(titleOf(each.period, Words::load(RESOURCES "/Words", each.language), each.locale),
                  each.title);
}

}  // namespace
}  // namespace tapcore
