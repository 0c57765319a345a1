#include "app/common/folder/date_style.h"

#include <gtest/gtest.h>

#include "tests/support/environment.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

TEST(DateStyle, NamesHoursByEitherClock) {
    const std::pair<std::size_t, const char*> twelve[] = {{0, "12 AM"},  {1, "1 AM"},  {11, "11 AM"},
                                                          {12, "12 PM"}, {13, "1 PM"}, {23, "11 PM"}};
    for (const auto& [hour, text] : twelve) {
        EXPECT_EQ((DateStyle{.twelveHours = true}.hour(hour)), text);
        EXPECT_EQ(DateStyle{}.hour(hour), std::to_string(hour));
    }
}

TEST(DateStyle, IsThatOfTheFirstVariableThatNamesALocale) {
    const tapcore::TemporaryFolder home;
    const auto isTwelve = [&](Variables variables) {
        variables.insert({{"HOME", home.path().string()}, {"XDG_CONFIG_HOME", (home / "config").string()}});
        return DateStyle::of(environmentWith(std::move(variables))).twelveHours;
    };
    EXPECT_TRUE(isTwelve({{"LC_ALL", "en_US.UTF-8"}, {"LC_TIME", "de_DE.UTF-8"}}));
    EXPECT_FALSE(isTwelve({{"LC_ALL", ""}, {"LC_TIME", "de_DE.UTF-8"}, {"LANG", "en_US.UTF-8"}}));
    EXPECT_TRUE(isTwelve({{"LANG", "en_US.UTF-8"}}));
    EXPECT_FALSE(isTwelve({{"LANG", "en_GB.UTF-8"}}));
    EXPECT_FALSE(isTwelve({{"LANG", "C.UTF-8"}}));
    EXPECT_FALSE(isTwelve({}));
    home.put("config/tappora/settings.json", R"({"appearance.hours": "24"})");
    EXPECT_FALSE(isTwelve({{"LANG", "en_US.UTF-8"}}));
    home.put("config/tappora/settings.json", R"({"appearance.hours": "12"})");
    EXPECT_TRUE(isTwelve({{"LANG", "de_DE.UTF-8"}}));
}

TEST(DateStyle, AddsTheChoicesOfItsUserToALocale) {
    const tapcore::TemporaryFolder home;
    const Environment environment =
        environmentWith({{"HOME", home.path().string()}, {"XDG_CONFIG_HOME", (home / "config").string()}});
    EXPECT_EQ(withDateStyle("de", environment), "de");
    home.put("config/tappora/settings.json", R"({"appearance.firstWeekday": "sunday"})");
    EXPECT_EQ(withDateStyle("de", environment), "de@fw=sun");
    EXPECT_EQ(withDateStyle("th@calendar=buddhist", environment), "th@calendar=buddhist;fw=sun");
    home.put("config/tappora/settings.json",
             R"({"appearance.firstWeekday": "sunday", "appearance.hours": "12"})");
    EXPECT_EQ(withDateStyle("de", environment), "de@fw=sun;hours=h12");
}

}  // namespace
}  // namespace tappora
