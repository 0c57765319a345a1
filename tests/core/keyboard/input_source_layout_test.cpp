#include "core/keyboard/input_source_layout.h"

#include <gtest/gtest.h>

#include <map>

namespace tapcore {
namespace {

TEST(InputSourceLayout, TakesTheFirstRuleThatHolds) {
    const std::map<std::string_view, std::string_view> cases{{"com.apple.keylayout.ABC", "qwerty"},
                                                             {"a.Colemak-DH-Ortho", "colemak-dh-matrix"},
                                                             {"a.Colemak-DH.german", "colemak-dh"},
                                                             {"colemak.matrix", "colemak"},
                                                             {"a.DVORAK-LEFT", "none"},
                                                             {"a.Dvorak-Right.us", "none"},
                                                             {"a.Dvorak.us", "dvorak"},
                                                             {"workman.us", "qwerty"},
                                                             {"a.Workman-P.german", "workman"},
                                                             {"a.RussianWin", "russian"},
                                                             {"a.Russian-Phonetic", "none"},
                                                             {"a.Ukrainian-PC", "ukrainian"},
                                                             {"a.Spanish-ISO", "spanish"},
                                                             {"a.German", "qwertz"},
                                                             {"a.SwissGerman", "none"},
                                                             {"a.French-numerical", "azerty"},
                                                             {"a.USExtended", "none"},
                                                             {"", "none"}};
    for (const auto& [source, id] : cases)
        EXPECT_EQ(InputSourceLayout::layoutID(source).value_or("none"), id) << source;
}

}  // namespace
}  // namespace tapcore
