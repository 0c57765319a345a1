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
    const std::string inMiddle = "font-weight=\"500\" text-anchor=\"middle\" ";
    EXPECT_EQ(keys(false),
              "<g role=\"img\">\n<title>A</title>\n<desc>1,234,567,890 presses, 100 %</desc>\n"
              "<g transform=\"translate(-3.24 -3.24)\">\n"
              "<path d=\"CAP\" fill=\"#6b1306\"/>\n"
              "<text x=\"27\" y=\"26.06\" font-size=\"16.2\" " + inMiddle +
              "fill=\"#ffffff\" fill-opacity=\"0.95\">A</text>\n"
              "<text x=\"27\" y=\"38.17\" font-size=\"6.15\" style=\"font-variant-numeric:tabular-nums\" "
              "text-anchor=\"middle\" fill=\"#ffffff\" fill-opacity=\"0.95\">1,234,567,890</text>\n"
              "</g>\n</g>\n"
              "<g role=\"img\">\n<title>S</title>\n<desc>0 presses, 0 %</desc>\n"
              "<g transform=\"translate(50.76 -3.24)\">\n"
              "<path d=\"CAP\" fill=\"#000000\" fill-opacity=\"0.09\"/>\n"
              "<text x=\"27\" y=\"32.75\" font-size=\"16.2\" " + inMiddle +
              "fill=\"#000000\" fill-opacity=\"0.6\">S</text>\n"
              "</g>\n</g>\n"
              "<g role=\"img\">\n<title>tab</title>\n<desc>5 presses, left out</desc>\n"
              "<g transform=\"translate(104.76 -3.24)\">\n"
              "<path d=\"CAP\" fill=\"none\" stroke=\"#000000\" stroke-opacity=\"0.3\" stroke-width=\"1\" "
              "stroke-linecap=\"round\" stroke-linejoin=\"round\"/>\n"
              "<text x=\"27\" y=\"32.75\" font-size=\"16.2\" " + inMiddle +
              "fill=\"#000000\" fill-opacity=\"0.6\">⇥</text>\n"
              "</g>\n</g>\n");
    EXPECT_NE(keys(true).find("<path d=\"CAP\" fill=\"#ff3519\""), std::string::npos) << keys(true);
    EXPECT_NE(keys(true).find("fill=\"#000000\" fill-opacity=\"0.95\">A</text>"), std::string::npos);
}

}  // namespace
}  // namespace tappora
