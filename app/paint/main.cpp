#include <cstdio>

#include "app/common/command_line/command_line.h"
#include "app/common/keyboard/fingers_view.h"
#include "app/common/keyboard/heatmap_view.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/paint/fingers_picture.h"
#include "app/paint/heatmap_picture.h"
#include "app/paint/picture_file.h"
#include "app/paint/report_paper.h"
#include "app/paint/widget_pictures.h"

namespace tappora {
namespace {

drawing::Appearance appearance(bool dark) {
    return {.theme = dark ? drawing::Theme::dark : drawing::Theme::light};
}

/// What all commands that write a picture do, with their options, view and picture.
template <class Options, auto addOptions, auto viewOf, auto pictureFrom>
void paint(CommandLine& line, const Environment& environment) {
    Options options;
    addOptions(line, options);
    line.declared("--output").required();
    line.parse();
    pictureKind(*options.output);
    const auto view = viewOf(options, environment);
    writePicture(*options.output, pictureFrom(view), appearance(view.dark));
}

/// The pictures by the command that `tappora` is given.
constexpr struct {
    std::string_view name;
    std::string_view command;
    void (*paint)(CommandLine&, const Environment&);
} pictures[] = {
    {"heatmap", "tappora heatmap", paint<HeatmapOptions, addHeatmapOptions, heatmapView, heatmapPicture>},
    {"fingers", "tappora fingers", paint<FingersOptions, addFingersOptions, fingersView, fingersPicture>},
    {"widget", "tappora widget render", renderWidgets},
    {"report", "tappora report", paintReport},
};

int run(std::vector<std::string> arguments) {
    const std::string name = arguments.empty() ? "" : arguments.front();
    for (const auto& picture : pictures) {
        if (picture.name != name) continue;
        CommandLine line(std::string(picture.command), {arguments.begin() + 1, arguments.end()});
        return guarded(line, [&] { picture.paint(line, hostEnvironment()); });
    }
    complain(
        "tappora-paint: started by tappora heatmap -o FILE, tappora fingers -o FILE, tappora widget "
        "render and tappora report -o FILE.pdf");
    return 2;
}

}  // namespace
}  // namespace tappora

int main(int argc, char** argv) { return tappora::run({argv + 1, argv + argc}); }
