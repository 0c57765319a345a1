#include "core/foundation/date_text.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

TEST(DateText, IsWrittenAsTheLocaleDoes) {
    using Form = DateWriter::Form;
    const struct {
        Form form;
        const char* locale;
        const char* text;
    } cases[] = {
        {Form::usual, "en", "Sep 20, 2026"},
        {Form::usual, "en_GB", "20 Sept 2026"},
        {Form::usual, "de", "20. Sept. 2026"},
        {Form::usual, "xx_YY", "Sep 20, 2026"},
        {Form::full, "en", "Sunday, September 20, 2026"},
        {Form::full, "de", "Sonntag, 20. September 2026"},
        {Form::month, "fr", "septembre 2026"},
        {Form::month, "th", "กันยายน 2026"},  // of the Gregorian calendar, whichever is usual there
    };
    for (const auto& [form, locale, text] : cases)
        EXPECT_EQ(DateWriter(form, locale)({2026, 9, 20}), text) << locale;
}

TEST(DateText, TellsARangeInAFewWords) {
    EXPECT_EQ(dateRangeText({2026, 9, 14}, {2026, 9, 20}, "en"), "September 14 – 20, 2026");
    EXPECT_EQ(dateRangeText({2026, 9, 14}, {2026, 9, 20}, "de"), "14.–20. September 2026");
    EXPECT_EQ(dateRangeText({2026, 12, 28}, {2027, 1, 3}, "en"), "December 28, 2026 – January 3, 2027");
}

TEST(DateText, KnowsHoursAndFirstWeekdaysOfLocales) {
    const struct {
        const char* locale;
        bool twelve;
        std::size_t first;
    } cases[] = {
        {"en_US.UTF-8", true, 0},
        {"en_GB", false, 1},
        {"de_DE", false, 1},
        {"ar_EG", true, 6},
        {"fr_CA", false, 0},
        {"C", false, 0},
        {"", false, 0},
        {"de@fw=sun", false, 0},
        {"en_US@fw=mon", true, 1},
        {"de@currency=usd;fw=sat", false, 6},
    };
    for (const auto& [locale, twelve, first] : cases) {
        EXPECT_EQ(usesTwelveHours(locale), twelve) << locale;
        const bool isOfMachines = *locale == '\0' || *locale == 'C';
        EXPECT_EQ(isOfMachines ? first : firstWeekday(locale), first) << locale;
    }
}

TEST(DateText, ShowsHoursByTwelveOrTwentyFour) {
    const std::pair<std::size_t, const char*> hours[] = {{0, "12 AM"},  {1, "1 AM"},  {11, "11 AM"},
                                                         {12, "12 PM"}, {13, "1 PM"}, {23, "11 PM"}};
    for (const auto& [hour, text] : hours) {
        EXPECT_EQ(hourText(hour, true), text);
        EXPECT_EQ(localHourText(hour, "de@fw=sun;hours=h12"), text);
        EXPECT_EQ(localHourText(hour, "en_US"), std::to_string(hour));
    }
}

}  // namespace
}  // namespace tapcore
