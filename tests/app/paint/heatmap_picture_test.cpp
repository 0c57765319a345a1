#include "app/paint/heatmap_picture.h"

#include <gtest/gtest.h>

#include <regex>

#include "drawing/painter.h"
#include "tests/support/small_heatmap.h"

namespace tappora {
namespace {

/// The keys of the small board as SVG, "CAP" for the outline that they share.
std::string keys(bool dark) {
    const auto halfAnEm = [](std::string_view text, const drawing::Font& font) {
        return static_cast<double>(text.size()) * font.size / 2;
    };
    const drawing::Appearance appearance{.theme = dark ? drawing::Theme::dark : drawing::Theme::light};
    const std::string svg = drawing::svg(heatmapPicture(smallHeatmap(dark)), appearance, halfAnEm);
    const auto start = svg.find("<title>Keys</title>\n") + 20;
    return std::regex_replace(svg.substr(start, svg.find("</g>\n<g transform=\"translate(0 ") - start),
                              std::regex("\"M40\\.39 [^\"]*\""), "\"CAP\"");
}

TEST(HeatmapPicture, FillsKeysWithTheirColoursAndTellsOfEach) {
    const auto key = [](const std::string& name, const std::string& said, const std::string& x,
                        const std::string& cap, const std::string& texts) {
        return "<g role=\"img\">\n<title>" + name + "</title>\n<desc>" + said +
               "</desc>\n<g transform=\"translate(" + x + " -3.24)\">\n<path d=\"CAP\" " + cap + "/>\n" +
               texts + "</g>\n</g>\n";
    };
    const auto text = [](const std::string& y, const std::string& font, const std::string& ink) {
        return "<text x=\"27\" y=\"" + y + "\" font-size=\"" + font +
               " text-anchor=\"middle\" fill=\"" + ink + "</text>\n";
    };
    const std::string face = "16.2\" font-weight=\"500\"";
    EXPECT_EQ(keys(false),
              key("A", "1,234,567,890 presses, 100 %", "-3.24", "fill=\"#6b1306\"",
                  text("26.06", face, "#ffffff\" fill-opacity=\"0.95\">A") +
                      text("38.17", "6.15\" style=\"font-variant-numeric:tabular-nums\"",
                           "#ffffff\" fill-opacity=\"0.95\">1,234,567,890")) +
                  key("S", "0 presses, 0 %", "50.76", "fill=\"#000000\" fill-opacity=\"0.09\"",
                      text("32.75", face, "#000000\" fill-opacity=\"0.6\">S")) +
                  key("tab", "5 presses, left out", "104.76",
                      "fill=\"none\" stroke=\"#000000\" stroke-opacity=\"0.3\" stroke-width=\"1\" "
                      "stroke-linecap=\"round\" stroke-linejoin=\"round\"",
                      text("32.75", face, "#000000\" fill-opacity=\"0.6\">⇥")));
    EXPECT_NE(keys(true).find("<path d=\"CAP\" fill=\"#ff3519\""), std::string::npos) << keys(true);
    EXPECT_NE(keys(true).find("fill=\"#000000\" fill-opacity=\"0.95\">A</text>"), std::string::npos);
}

}  // namespace
}  // namespace tappora
