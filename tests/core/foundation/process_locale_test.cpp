#include <gtest/gtest.h>
#include <unicode/uloc.h>

#include "core/foundation/characters.h"
#include "core/foundation/date_text.h"
#include "core/foundation/language_rules.h"
#include "core/foundation/weekday_names.h"

// The locale that a program runs in has no say in what the core writes: the language is always a parameter.

namespace tapcore {
namespace {

/// Runs as on a Turkish machine, where an "I" is the capital of "ı".
class OnATurkishMachine : public testing::Test {
  protected:
    OnATurkishMachine() { setDefault("tr_TR"); }
    ~OnATurkishMachine() override { setDefault(before_.c_str()); }

  private:
    static void setDefault(const char* locale) {
        UErrorCode status = U_ZERO_ERROR;
        uloc_setDefault(locale, &status);
        EXPECT_TRUE(U_SUCCESS(status));
    }
    const std::string before_ = uloc_getDefault();
};

TEST_F(OnATurkishMachine, WeekdaysAreThoseOfTheLanguageAskedForOrEnglish) {
    const std::pair<const char*, const char*> sundays[] = {
        {"en", "Sun"}, {"en_GB", "Sun"}, {"de-AT", "So"}, {"nb", "søn."}, {"fr_CA", "dim."},
        {"tr", "Paz"}, {"iw", "יום א׳"}, {"xx", "Sun"},   {"", "Sun"},    {"no such locale", "Sun"},
    };
    for (const auto& [locale, name] : sundays) EXPECT_EQ(weekdayNames(locale).front(), name) << locale;
}

TEST_F(OnATurkishMachine, NumbersOfALanguageThatIsNotKnownArePlain) {
    EXPECT_EQ(LanguageRules("tr").number(1'234'567), "1.234.567");
    EXPECT_EQ(LanguageRules("en").number(1'234'567), "1,234,567");
    EXPECT_EQ(LanguageRules("xx").number(1'234'567), "1234567");
    EXPECT_EQ(LanguageRules("xx").number(1234.5, 1), "1234.5");
}

TEST_F(OnATurkishMachine, DatesAreThoseOfTheLanguageAskedForOrEnglish) {
    const CivilDate date{2026, 9, 20};
    const std::pair<const char*, const char*> dates[] = {
        {"en", "Sep 20, 2026"}, {"de@fw=sun", "20. Sept. 2026"}, {"nb_NO", "20. sep. 2026"},
        {"tr", "20 Eyl 2026"},  {"xx", "Sep 20, 2026"},          {"no such locale", "Sep 20, 2026"},
        {"", "Sep 20, 2026"},
    };
    for (const auto& [locale, text] : dates) EXPECT_EQ(dateText(date, locale), text) << locale;
    EXPECT_EQ(firstWeekday("xx"), firstWeekday("en"));
    EXPECT_EQ(dateRangeText(date, {2026, 9, 22}, "xx"), dateRangeText(date, {2026, 9, 22}, "en"));
}

TEST_F(OnATurkishMachine, LettersKeepTheirCaseRules) {
    EXPECT_EQ(uppercased("i"), "I");
    EXPECT_EQ(lowercased("I"), "i");
}

}  // namespace
}  // namespace tapcore
