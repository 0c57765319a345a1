#include "app/tappora/terminal_heatmap.h"

#include <gtest/gtest.h>

#include "tests/support/small_heatmap.h"

namespace tappora {
namespace {

/// The small board with these colours of a hot key, the text on it, an unused key and the text on that, each
/// as its code behind "38;" for text or "48;" for the ground. Dots above each other share a line.
std::string expected(const std::string& hot, const std::string& onHot, const std::string& cold,
                     const std::string& onCold) {
    const auto ground = [](const std::string& colour) { return "\033[0;48;" + colour + "m"; };
    const auto ink = [](const std::string& colour, const std::string& on) {
        return "\033[0;38;" + colour + (on.empty() ? "" : ";48;" + on) + "m";
    };
    const std::string off = "\033[0m ";
    return ground(hot) + " " + ink(onHot, hot) + "A" + ground(hot) + "  " + off + ground(cold) +
           "    \033[0m\n" + ink(onHot, hot) + "1.2G" + off + ground(cold) + " " + ink(onCold, cold) + "S" +
           ground(cold) + "  " + off + " ⇥\n" + ink(hot, "") + "▀▀▀▀" + off + ink(cold, "") + "▀▀▀▀\033[0m\n";
}

TEST(HeatBoard, FillsKeysWithTheirColoursAndWritesInTheInkThatStandsOut) {
    const auto drawn = [](bool dark, ColourDepth depth) {
        return heatBoard(smallHeatmap(dark), {.colours = true, .unicode = true, .depth = depth, .width = 15});
    };
    EXPECT_EQ(drawn(false, ColourDepth::full),
              expected("2;107;19;6", "2;255;255;255", "2;228;228;228", "2;90;90;90"));
    EXPECT_EQ(drawn(true, ColourDepth::full),
              expected("2;255;53;25", "2;0;0;0", "2;58;58;58", "2;170;170;170"));
    EXPECT_EQ(drawn(false, ColourDepth::indexed), expected("5;52", "5;231", "5;254", "5;240"));
}

}  // namespace
}  // namespace tappora
