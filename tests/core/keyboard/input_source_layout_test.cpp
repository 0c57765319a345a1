#include "core/keyboard/input_source_layout.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

TEST(InputSourceLayout, TakesTheFirstRuleThatHolds) {
    const struct {
        std::string_view source;
        std::optional<std::string_view> layoutID;
    } cases[] = {
        {"com.apple.keylayout.Colemak-DH-Ortho", "colemak-dh-matrix"},
        {"org.colemakDHmatrix.us", "colemak-dh-matrix"},
        {"org.Colemak-DH.german", "colemak-dh"},
        {"com.apple.keylayout.Colemak", "colemak"},
        {"colemak.matrix", "colemak"},
        {"com.apple.keylayout.DVORAK-LEFT", std::nullopt},
        {"com.apple.keylayout.Dvorak-Right.us", std::nullopt},
        {"com.apple.keylayout.DVORAK-QWERTYCMD", "dvorak"},
        {"com.apple.keylayout.US", "qwerty"},
        {"com.apple.keylayout.ABC", "qwerty"},
        {"workman.us", "qwerty"},
        {"org.Workman-P.german", "workman"},
        {"com.apple.keylayout.Russian", "russian"},
        {"com.apple.keylayout.Russian-PC", "russian"},
        {"com.apple.keylayout.RussianWin", "russian"},
        {"com.apple.keylayout.Russian-Phonetic", std::nullopt},
        {"com.apple.keylayout.Ukrainian", "ukrainian"},
        {"com.apple.keylayout.Ukrainian-PC", "ukrainian"},
        {"com.apple.keylayout.Spanish", "spanish"},
        {"com.apple.keylayout.Spanish-ISO", "spanish"},
        {"com.apple.keylayout.German", "qwertz"},
        {"com.apple.keylayout.German-DIN", "qwertz"},
        {"com.apple.keylayout.ABC-QWERTZ", "qwertz"},
        {"com.apple.keylayout.SwissGerman", std::nullopt},
        {"com.apple.keylayout.French", "azerty"},
        {"com.apple.keylayout.French-numerical", "azerty"},
        {"com.apple.keylayout.ABC-AZERTY", "azerty"},
        {"com.apple.keylayout.USExtended", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [source, layoutID] : cases)
        EXPECT_EQ(InputSourceLayout::layoutID(source), layoutID) << source;
}

}  // namespace
}  // namespace tapcore
