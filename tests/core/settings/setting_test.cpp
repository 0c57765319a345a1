#include "core/settings/setting.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <set>

namespace tapcore {
namespace {

using nlohmann::json;
using testing::IsEmpty;

TEST(SettingTable, NamesEachSettingOnceAndKeepsGroupsTogether) {
    std::set<std::string_view> keys, groups;
    std::string_view group;
    for (const Setting& setting : allSettings()) {
        EXPECT_TRUE(keys.insert(setting.key).second) << setting.key;
        if (setting.group() != group) {
            EXPECT_TRUE(groups.insert(setting.group()).second) << setting.key;
        }
        group = setting.group();
        EXPECT_EQ(findSetting(setting.key), &setting) << "another one comes first: " << setting.key;
    }
}

TEST(SettingTable, AcceptsItsOwnDefaultsAndWords) {
    for (const Setting& setting : allSettings()) {
        EXPECT_NE(setting.usual.empty(), setting.usualWords.empty()) << setting.key;
        EXPECT_FALSE(setting.does.empty() || setting.usedBy.empty() || setting.does.ends_with('.'))
            << setting.key;
        if (!setting.usual.empty()) {
            ASSERT_TRUE(setting.parse(setting.usual)) << setting.key;
            EXPECT_EQ(settingText(setting.usualValue()), setting.usual);
        }
        EXPECT_EQ(setting.type == Setting::Type::word, setting.words != nullptr) << setting.key;
        if (!setting.words) continue;
        for (const std::string& word : setting.words())
            EXPECT_EQ(setting.parse(word), json(word)) << setting.key;
    }
}

TEST(Setting, ReadsWhatUsersWrite) {
    const struct {
        const char* key;
        const char* text;
        json value;  ///< null: refused
    } cases[] = {
        {"practice.length", "45", 45},
        {"practice.length", "5", 5},
        {"practice.length", "200", 200},
        {"practice.length", "4", nullptr},
        {"practice.length", "201", nullptr},
        {"practice.length", "45.0", nullptr},
        {"practice.length", " 45", nullptr},
        {"practice.length", "9223372036854775808", nullptr},
        {"practice.length", "", nullptr},
        {"practice.digits", "true", true},
        {"practice.digits", "TRUE", nullptr},
        {"practice.digits", "1", nullptr},
        {"appearance.hours", "12", "12"},
        {"appearance.hours", "13", nullptr},
        {"ai.provider", "apple", nullptr},
        {"format", "markdown", "markdown"},
        {"format", "Markdown", nullptr},
        {"learned.planck/qwerty/12", "q Q", {{"plain", "q"}, {"shifted", "Q"}}},
        {"learned.planck/qwerty/12", "q", {{"plain", "q"}, {"shifted", ""}}},
        {"learned.planck/qwerty/12", " Q", nullptr},
        {"learned.planck/qwerty/12", "q Q R", nullptr},
        {"learned.planck/qwerty/12", "", nullptr},
    };
    for (const auto& [key, text, value] : cases) {
        const auto parsed = settingOf(key).parse(text);
        EXPECT_EQ(parsed.value_or(json()), value) << key << " " << text;
        EXPECT_EQ(parsed ? settingText(*parsed) : text, text) << key;
    }
}

TEST(Setting, AcceptsOfAFileOnlyItsOwnType) {
    const struct {
        const char* key;
        const char* value;
        bool isAccepted;
    } cases[] = {
        {"practice.length", "45", true},
        {"practice.length", "45.0", true},
        {"practice.length", "45.5", false},
        {"practice.length", "1e400", false},
        {"practice.length", "true", false},
        {"practice.length", "\"45\"", false},
        {"practice.opened.en.qwerty", "0", true},
        {"practice.opened.en.qwerty", "9223372036854775807", true},
        {"practice.opened.en.qwerty", "-1", false},
        {"practice.digits", "1", false},
        {"practice.digits", "false", true},
        {"widgets.shown", "[\"today\"]", false},
        {"ai.model", "\"\"", true},
        {"ai.model", "{}", false},
        {"appearance.mapColor", "\"pink\"", false},
        {"appearance.mapColor", "\"teal\"", true},
        {"learned.a/b/1", R"({"plain": "q"})", true},
        {"learned.a/b/1", R"({"plain": 1})", false},
        {"learned.a/b/1", "\"q\"", false},
    };
    for (const auto& [key, value, isAccepted] : cases)
        EXPECT_EQ(settingOf(key).accepts(json::parse(value, nullptr, false)), isAccepted)
            << key << " " << value;
}

TEST(Setting, FindsTheFamilyOfAKey) {
    const std::pair<const char*, const char*> cases[] = {
        {"practice.layout.de", "practice.layout.LANGUAGE"},
        {"practice.layout.", ""},
        {"practice.layout", ""},
        {"practice.opened.en.qwerty", "practice.opened.COURSE.LAYOUT"},
        {"practice.opened.en", ""},
        {"practice.opened..", ""},
        {"widgets.place.today:small", "widgets.place.WIDGET"},
        {"widgets.place.today:small@DP-1", "widgets.place.WIDGET@CONNECTOR"},
        {"labels.planck/36", "labels.BOARD/KEYCODE"},
        {"labels.planck", ""},
        {"learned.planck/qwerty/12", "learned.BOARD/LAYOUT/KEYCODE"},
        {"learned.planck/12", ""},
        {"Practice.length", ""},
        {"", ""},
    };
    for (const auto& [key, family] : cases) {
        const Setting* const found = findSetting(key);
        EXPECT_EQ(found ? found->key : "", family) << key;
    }
}

TEST(Setting, SaysWhatItMayBe) {
    EXPECT_EQ(settingOf("practice.length").bounds(), "a whole number from 5 to 200");
    EXPECT_EQ(settingOf("practice.opened.en.qwerty").bounds(), "a whole number from 0 up");
    EXPECT_EQ(settingOf("appearance.hours").bounds(), "12, 24 or locale");
    EXPECT_EQ(settingOf("learned.a/b/1").bounds(), "one or two texts with a blank between them");
}

}  // namespace
}  // namespace tapcore
