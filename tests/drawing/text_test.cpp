#include "drawing/text.h"

#include <gtest/gtest.h>

#include "core/foundation/characters.h"

namespace drawing {
namespace {

/// A font whose letters are all half an em wide.
double halfAnEm(std::string_view text, const Font& font) {
    return static_cast<double>(tapcore::characterCount(text)) * font.size / 2;
}

Text word(std::string text, double width, double minimumScale) {
    return {.text = std::move(text),
            .font = {.size = 20},
            .style = {},
            .at = {5, 50},
            .width = width,
            .minimumScale = minimumScale};
}

TEST(Text, ShrinksBeforeItIsCut) {
    const struct {
        Text text;
        std::string fits;
        double size;
    } cases[] = {
        {word("12345", 50, 0.5), "12345", 20},
        {word("12345", 40, 0.5), "12345", 16},
        {word("12345", 25, 0.5), "12345", 10},
        {word("12345", 20, 0.5), "123…", 10},
        {word("12345", 20, 1), "1…", 20},
        {word("12345", 0, 1), "12345", 20},
        {word("a b c", 30, 1), "a…", 20},
        {word("éééé", 30, 1), "éé…", 20},
        {word("12345", 9, 1), "", 20},
        {word("12345", 1, 0), "12345", 0.4},
        {word("\xFF\xFE", 0, 1), "\uFFFD\uFFFD", 20},
    };
    for (const auto& c : cases)
        EXPECT_EQ(fitted(c.text, halfAnEm), (FittedText{c.fits, Font{.size = c.size}, {5, 50}})) << c.fits;
}

}  // namespace
}  // namespace drawing
