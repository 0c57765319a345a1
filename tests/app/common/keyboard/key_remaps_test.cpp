#include "app/common/keyboard/key_remaps.h"

#include <gtest/gtest.h>

#include "app/common/keyboard/key_names.h"
#include "app/common/program.h"
#include "tests/support/message_of.h"

namespace tappora {
namespace {

using tapcore::KeyCode;
using tapcore::KeyRemap;
using Codes = std::set<KeyCode>;

/// Two controls, one option that its user calls otherwise, caps lock, and keys that print digits and letters.
const tapcore::LegendSet layout = {"test",
                                   "Test",
                                   {{59, {"control"}},
                                    {62, {"control"}},
                                    {58, {"option"}},
                                    {57, {"caps lock"}},
                                    {18, {"1", "!"}},
                                    {0, {"a", "A"}},
                                    {24, {"=", "+"}},
                                    {14, {"e", "E"}}},
                                   {{58, {"Hyper"}}, {14, {"a"}}}};

TEST(KeyNames, AreOwnWordsElseWhatIsPrintedElseCodes) {
    const std::pair<const char*, Codes> cases[] = {
        {"hyper", {58}},
        {"option", {58}},
        {"Caps Lock", {57}},
        {"control", {59, 62}},
        {"left control", {59}},
        {"right CONTROL", {62}},
        {"left caps lock", {}},
        {"a", {0, 14}},
        {"e", {14}},
        {"1", {18}},
        {"key 1", {1}},
        {"59", {59}},
        {"70000", {}},
        {"", {}},
        {"nosuch", {}},
    };
    for (const auto& [name, codes] : cases) EXPECT_EQ(keysNamed(name, layout), codes) << name;
}

TEST(KeyRemaps, AreStoredByCodesThatMeanTheSameEverywhere) {
    const std::pair<const char*, KeyRemap> cases[] = {
        {"caps lock=control", {{57, 59}}},
        {" Caps Lock = right control ,1=key 1", {{57, 62}, {18, 1}}},
        {"control=hyper", {{59, 58}, {62, 58}}},
        {"caps lock=control,control=caps lock", {{57, 59}, {59, 57}, {62, 57}}},
        {"key 24=0", {{24, 0}}},
    };
    for (const auto& [text, remap] : cases) {
        EXPECT_EQ(parseRemaps(text, layout), remap) << text;
        EXPECT_EQ(parseRemaps(remapsText(remap), {}), remap) << text;
    }
    EXPECT_EQ(remapsText({{57, 59}, {1, 2}}), "key 1=key 2, key 57=key 59");
}

TEST(KeyRemaps, RefuseWhatNamesNoTwoKeys) {
    const std::string form =
        ": not KEY=KEY, such as caps lock=control; a key may be named by its code, as key 24";
    const std::pair<const char*, std::string> cases[] = {
        {"a", "a" + form},
        {"a=", "a=" + form},
        {"a=b=c", "a=b=c" + form},
        {"a=nosuch", "no such key: nosuch; see tappora keys"},
        {"x=a", "no such key: x; see tappora keys"},
        {"a=1,e=1", "e=1: that key is named twice"},
    };
    for (const auto& [text, why] : cases)
        EXPECT_EQ(tapcore::messageOf<UsageError>([&] { return parseRemaps(text, layout); }), why) << text;
}

}  // namespace
}  // namespace tappora
