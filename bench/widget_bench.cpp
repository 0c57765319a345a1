// Promises: a snapshot of a 104-key board is built and encoded in under 200 microseconds, and decoded in as
// much; each view becomes a drawing in under 100 microseconds; the heat board is painted at twice the scale
// in under 10 milliseconds.

#include <benchmark/benchmark.h>
#include <cairo.h>

#include <nlohmann/json.hpp>

#include "core/widget/widget_snapshot.h"
#include "drawing/painter.h"
#include "widgets/bundle.h"

namespace {

using namespace tapcore;

constexpr KeyCode keys = 104;

struct Counted {
    Calendar calendar{"UTC"};
    Day day{2026, 9, 20};
    Tally tally;
    Summary week;
    Board board{.id = "full", .name = "Full size", .maker = "Generic"};

    Counted() {
        for (KeyCode code = 0; code < keys; ++code) {
            board.keys.push_back({.id = "key-" + std::to_string(code),
                                  .keyCode = code,
                                  .x = 1.25 * (code % 18),
                                  .y = static_cast<double>(code / 18)});
            for (std::int64_t hour = 8; hour < 18; ++hour)
                tally.add(code, hour, 400 / (code % 37 + 1) + hour);
        }
        for (std::int64_t back = 6; back >= 0; --back)
            week.byDay.push_back({day.adding(-back, calendar), 10000 + 500 * back});
    }

    WidgetSnapshot snapshot(const Heatmap& heatmap) const {
        return {day, tally, 12, week, &heatmap, &board, "de", "de", calendar};
    }
    Heatmap heatmap() const { return {board, {}, tally.byKey(), {}}; }
};

const Counted counted;
const WidgetSnapshot snapshot = counted.snapshot(counted.heatmap());
const std::string data = snapshot.data();

void buildAndEncode(benchmark::State& state) {
    const Heatmap heatmap = counted.heatmap();
    for (auto _ : state) benchmark::DoNotOptimize(counted.snapshot(heatmap).data());
}
BENCHMARK(buildAndEncode)->Unit(benchmark::kMicrosecond);

void decode(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(WidgetSnapshot::decode(data));
}
BENCHMARK(decode)->Unit(benchmark::kMicrosecond);

/// The yardstick of both: the JSON library's own parser on the same text.
void parseJson(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(nlohmann::json::parse(data));
}
BENCHMARK(parseJson)->Unit(benchmark::kMicrosecond);

const Words words = Words::load(RESOURCES "/Words", "de");
const tapwidgets::Entry entry{{}, snapshot};

drawing::Picture pictureOf(const tapwidgets::Widget& widget) {
    return tapwidgets::picture(widget, entry, widget.families.back(),
                               {words, words, drawing::systemTextWidth()});
}

void view(benchmark::State& state, std::size_t widget) {
    for (auto _ : state) benchmark::DoNotOptimize(pictureOf(tapwidgets::bundle[widget]));
}
BENCHMARK_CAPTURE(view, today, 0)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(view, hours, 1)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(view, heatmap, 2)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(view, week, 3)->Unit(benchmark::kMicrosecond);

/// The yardstick of a view: copying the heat map's drawing.
void copyDrawing(benchmark::State& state) {
    const drawing::Picture picture = pictureOf(tapwidgets::bundle[2]);
    for (auto _ : state) benchmark::DoNotOptimize(drawing::Picture(picture));
}
BENCHMARK(copyDrawing)->Unit(benchmark::kMicrosecond);

/// Runs `paint(context)` on a surface for the large family at twice the scale.
template <class Paint>
void onSurface(benchmark::State& state, Paint paint) {
    const auto [width, height] = sizeOf(tapwidgets::Family::large);
    cairo_surface_t* const surface = cairo_image_surface_create(
        CAIRO_FORMAT_ARGB32, static_cast<int>(2 * width), static_cast<int>(2 * height));
    cairo_t* const context = cairo_create(surface);
    cairo_scale(context, 2, 2);
    for (auto _ : state) paint(context);
    cairo_destroy(context);
    cairo_surface_destroy(surface);
}

void paintHeatBoard(benchmark::State& state) {
    const drawing::Picture picture = pictureOf(tapwidgets::bundle[2]);
    onSurface(state, [&](cairo_t* context) { drawing::paint(context, picture, {}); });
}
BENCHMARK(paintHeatBoard)->Unit(benchmark::kMillisecond);

/// The yardstick: as many plain rectangles, and the plate under them twice.
void fillRectangles(benchmark::State& state) {
    onSurface(state, [](cairo_t* context) {
        cairo_set_source_rgba(context, 1, 1, 1, 0.5);
        cairo_paint(context);
        cairo_paint(context);
        for (int key = 0; key < keys; ++key) {
            cairo_rectangle(context, 16.3 + 18 * (key % 18), 100.7 + 18.0 * (key / 18), 16.1, 16.1);
            cairo_fill(context);
        }
    });
}
BENCHMARK(fillRectangles)->Unit(benchmark::kMillisecond);

}  // namespace
