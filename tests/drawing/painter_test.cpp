#include "drawing/painter.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "core/foundation/owned.h"
#include "drawing/outline.h"

namespace drawing {
namespace {

const Style red = Style::given({1, 0, 0}, {0, 0, 1});

/// The pixels of a PNG file, as 0xAARRGGBB with colours multiplied by their opacity.
class Pixels {
  public:
    explicit Pixels(std::string bytes) : bytes_(std::move(bytes)) {
        surface_ = cairo_image_surface_create_from_png_stream(read, this);
    }
    Pixels(const Pixels&) = delete;
    Pixels& operator=(const Pixels&) = delete;
    ~Pixels() { cairo_surface_destroy(surface_); }

    int width() const { return cairo_image_surface_get_width(surface_); }
    int height() const { return cairo_image_surface_get_height(surface_); }
    std::uint32_t at(int x, int y) const {
        std::uint32_t pixel = 0;
        std::memcpy(
            &pixel,
            cairo_image_surface_get_data(surface_) + y * cairo_image_surface_get_stride(surface_) + 4 * x,
            sizeof pixel);
        return pixel;
    }
    /// How many pixels are not fully transparent.
    int inked() const {
        int count = 0;
        for (int y = 0; y < height(); ++y)
            for (int x = 0; x < width(); ++x) count += at(x, y) != 0;
        return count;
    }

  private:
    static cairo_status_t read(void* self, unsigned char* data, unsigned int length) {
        auto& pixels = *static_cast<Pixels*>(self);
        if (pixels.bytes_.size() - pixels.taken_ < length) return CAIRO_STATUS_READ_ERROR;
        std::memcpy(data, pixels.bytes_.data() + pixels.taken_, length);
        pixels.taken_ += length;
        return CAIRO_STATUS_SUCCESS;
    }

    std::string bytes_;
    std::size_t taken_ = 0;
    cairo_surface_t* surface_ = nullptr;
};

Picture picture(Node content) { return {{10, 10}, std::move(content)}; }
Node square(double x, double y, double side) { return filled(roundedRectangle({x, y, side, side}, 0), red); }

TEST(Painter, PaintsAtTheScaleAndInTheThemeItIsAskedFor) {
    const Pixels twice(png(picture(square(2, 2, 4)), {}, 2));
    EXPECT_EQ(twice.width(), 20);
    EXPECT_EQ(twice.at(4, 4), 0xFFFF0000);
    EXPECT_EQ(twice.at(11, 11), 0xFFFF0000);
    EXPECT_EQ(twice.inked(), 8 * 8);
    EXPECT_EQ(Pixels(png(picture(square(2, 2, 4)), {.theme = Theme::dark}, 1)).at(3, 3), 0xFF0000FF);
    EXPECT_EQ(Pixels(png(picture(square(0, 0, 1)), {}, 1.01)).width(), 11);
}

TEST(Painter, FadesAGroupAsOne) {
    const Pixels faded(png(picture(group({square(0, 0, 6), square(2, 2, 6)}, {}, 0.5)), {}, 1));
    EXPECT_EQ(faded.at(1, 1), faded.at(4, 4));
    EXPECT_EQ(faded.at(4, 4) >> 24, 0x80u);
}

TEST(Painter, StaysWithinThePictureOnAContextOfAnotherSize) {
    const tapcore::Owned<cairo_surface_t, cairo_surface_destroy> surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 30, 30));
    const tapcore::Owned<cairo_t, cairo_destroy> window(cairo_create(surface.get()));
    cairo_translate(window.get(), 5, 5);
    paint(window.get(), picture(square(-5, -5, 100)), {});
    cairo_surface_flush(surface.get());
    const unsigned char* pixels = cairo_image_surface_get_data(surface.get());
    const auto alpha = [&](int x, int y) {
        return pixels[y * cairo_image_surface_get_stride(surface.get()) + 4 * x + 3];
    };
    EXPECT_EQ(alpha(5, 5), 255);
    EXPECT_EQ(alpha(14, 14), 255);
    EXPECT_EQ(alpha(4, 5), 0);
    EXPECT_EQ(alpha(15, 15), 0);
}

TEST(Painter, DrawsTextThatKeepsToItsRoom) {
    const Text text{.text = "MMMMMMMM",
                    .font = {.size = 8},
                    .style = {},
                    .at = {10, 10},
                    .alignment = Alignment::trailing,
                    .width = 8,
                    .minimumScale = 0.1};
    const Pixels pixels(png({{20, 20}, {text, {}}}, {}, 1));
    EXPECT_GT(pixels.inked(), 0);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 1; ++x) EXPECT_EQ(pixels.at(x, y), 0u);
        for (int x = 11; x < 20; ++x) EXPECT_EQ(pixels.at(x, y), 0u);
    }
}

/// From which to which column a text at x = 50 is inked.
std::pair<int, int> inkOf(const Text& text) {
    const Pixels pixels(png({{100, 30}, {text, {}}}, {}, 1));
    int first = 100, last = -1;
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 100; ++x)
            if (pixels.at(x, y) != 0) first = std::min(first, x), last = std::max(last, x);
    return {first, last};
}

TEST(Painter, AlignsTextAtItsPlace) {
    Text text{.text = "HIH", .font = {.size = 14}, .style = {}, .at = {50, 20}};
    const auto [leading, leadingEnd] = inkOf(text);
    text.alignment = Alignment::centre;
    const auto [centre, centreEnd] = inkOf(text);
    text.alignment = Alignment::trailing;
    const auto [trailing, trailingEnd] = inkOf(text);
    EXPECT_GE(leading, 50);
    EXPECT_LE(leading, 53);
    EXPECT_NEAR((centre + centreEnd) / 2.0, 49.5, 1.5);
    EXPECT_GE(trailingEnd, 46);
    EXPECT_LE(trailingEnd, 50);
    EXPECT_NEAR(leadingEnd - leading, trailingEnd - trailing, 1);
}

TEST(Painter, ShowsWeightsAndWidthsOfAFont) {
    const TextWidth width = systemTextWidth();
    const Font plain{.size = 20};
    const Font monospaced{.size = 20, .design = Design::monospaced};
    EXPECT_DOUBLE_EQ(width("iii", monospaced), width("MMM", monospaced));
    EXPECT_LT(width("iii", plain), width("MMM", plain));
    EXPECT_NEAR(width("MM", plain), 2 * width("M", plain), 0.01);
    EXPECT_NEAR(width("MM", plain.withSize(40)), 2 * width("MM", plain), 0.1);
    EXPECT_EQ(width("MM", plain.withSize(0)), 0);
    EXPECT_EQ(width("", plain), 0);
    EXPECT_DOUBLE_EQ(width("111", plain.withMonospacedDigits()), width("888", plain.withMonospacedDigits()));
}

TEST(Painter, BearsAbsurdNumbers) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    Node node =
        group({square(nan, 0, 1),
               square(1e308, 1e308, 1e308),
               group({square(0, 0, 5)}, Transform::scaled(1e300)),
               group({square(0, 0, 5)}, Transform::scaled(0)),
               group({square(0, 0, 5)}, {}, nan),
               stroked(line({0, 0}, {5, 5}), {}, nan),
               {Text{.text = "\xFF\x01", .font = {.size = 1e308}, .style = {}, .at = {}, .width = 5}, {}},
               {Text{.text = "x", .font = {.size = nan}, .style = {}, .at = {}}, {}},
               square(3, 3, 1)});
    EXPECT_EQ(Pixels(png(picture(node), {}, 1)).at(3, 3), 0xFFFF0000);
    EXPECT_NE(pdf(picture(node), {}), "");
}

TEST(Painter, RefusesASizeNoPictureCanHave) {
    const Size sizes[] = {
        {0, 10}, {-1, 10}, {std::numeric_limits<double>::quiet_NaN(), 10}, {1e308, 1}, {20000, 20000}};
    for (const Size& size : sizes) EXPECT_THROW(png({size, group({})}, {}, 1), PaintError);
    for (const double side : {1e308, 1e7, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_THROW(svg({{10, side}, group({})}, {}, {}), PaintError);
    EXPECT_EQ(Pixels(png({{1, 1}, square(0, 0, 5)}, {}, 0.01)).width(), 1);
}

TEST(Painter, WritesAPdfOfOnePageWithItsTitle) {
    const std::string bytes = pdf(picture(labelled(square(0, 0, 5), "Heat map")), {});
    EXPECT_TRUE(bytes.starts_with("%PDF-"));
    EXPECT_NE(bytes.find("/Title (Heat map)"), std::string::npos);
    EXPECT_NE(bytes.find("/MediaBox [ 0 0 10 10 ]"), std::string::npos);
}

TEST(PainterDeathTest, BearsASystemWithoutAnyFont) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            setenv("FONTCONFIG_FILE", "/nowhere/fonts.conf", 1);
            setenv("FONTCONFIG_PATH", "/nowhere", 1);
            setenv("XDG_DATA_HOME", "/nowhere", 1);
            png(picture({Text{.text = "Ж⌘1", .font = {}, .style = {}, .at = {1, 9}, .width = 3}, {}}), {}, 1);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace drawing
