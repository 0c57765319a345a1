#include "app/paint/widget_pictures.h"

#include <fmt/format.h>

#include <filesystem>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/language.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/file_text.h"
#include "app/common/widget/widget_file.h"
#include "app/paint/picture_file.h"
#include "core/foundation/file_io.h"
#include "drawing/painter.h"
#include "widgets/bundle.h"
#include "widgets/provider.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using drawing::Appearance;
using drawing::RenderingMode;
using drawing::Theme;
using tapcore::Words;
using tapwidgets::Entry;
using tapwidgets::Family;
using tapwidgets::Widget;

struct Options {
    fs::path folder;
    std::optional<std::string> snapshot;
    double scale = 2;
    bool svg = false;
};

constexpr struct {
    Appearance appearance;
    std::string_view name;
} appearances[] = {
    {{Theme::light, RenderingMode::fullColour}, "light"},
    {{Theme::dark, RenderingMode::fullColour}, "dark"},
    {{Theme::light, RenderingMode::accented}, "light-accented"},
    {{Theme::dark, RenderingMode::accented}, "dark-accented"},
    {{Theme::light, RenderingMode::vibrant}, "light-vibrant"},
    {{Theme::dark, RenderingMode::vibrant}, "dark-vibrant"},
};

void declare(CommandLine& line, Options& options) {
    line.describe(
        "Draw every widget as a picture: in all its sizes, light and dark, full colour, accented and vibrant",
        "tappora widget render -o pictures --scale 3");
    line.option("-o,--output", options.folder, "The folder for the pictures").required().type("DIR");
    line.option("--scale", options.scale, "Pixels per point in a PNG")
        .between(0.25, 16.0)
        .showsDefault()
        .type("N");
    line.flag("--svg", options.svg, "Write SVG instead of PNG");
    line.option("--snapshot", options.snapshot,
                "Draw this file, whatever its day, instead of what the widgets show now")
        .type("FILE");
}

/// The snapshot of a file that the user named.
tapcore::WidgetSnapshot snapshotOf(const fs::path& path) {
    auto snapshot = tapcore::WidgetSnapshot::decode(requiredText(path, tapcore::readFile(path)));
    if (!snapshot) throw Failure(path.string(), "not a snapshot of widgets");
    return *std::move(snapshot);
}

Entry entryOf(const Options& options, const Environment& environment) {
    if (options.snapshot) return {environment.now, snapshotOf(*options.snapshot)};
    const auto clock = [&] { return environment.now; };
    return tapwidgets::Provider({}, sharedFolders(environment), clock, environment.calendar).getSnapshot();
}

}  // namespace

void renderWidgets(CommandLine& line, const Environment& environment) {
    Options options;
    declare(line, options);
    line.parse();
    const Entry entry = entryOf(options, environment);
    const Words system = systemWords(environment);
    const Words words = wordsIn(entry.snapshot ? entry.snapshot->language : Words::source, environment);
    const tapwidgets::Texts texts{words, system, drawing::systemTextWidth()};
    for (const Widget& widget : tapwidgets::bundle) {
        for (const Family family : widget.families) {
            const drawing::Picture picture = tapwidgets::picture(widget, entry, family, texts);
            for (const auto& [appearance, name] : appearances) {
                const fs::path file =
                    options.folder / fmt::format("{}-{}-{}.{}", widget.name, tapwidgets::families.of(family),
                                                 name, options.svg ? "svg" : "png");
                writePicture(file, picture, appearance, options.scale);
                print(file.string() + "\n");
            }
        }
    }
}

}  // namespace tappora
