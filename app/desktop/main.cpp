#include <gtkmm/main.h>

#include <csignal>
#include <string>
#include <vector>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/settings.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/signals.h"
#include "app/desktop/widget_choice.h"
#include "app/desktop/widget_host.h"

namespace tappora {
namespace {

/// GTK reads the locale; it gets no arguments.
void startGtk() {
    int count = 0;
    char** none = nullptr;
    if (gtk_init_check(&count, &none) == FALSE)
        throw Failure("display", "cannot be opened; widgets need a desktop, by WAYLAND_DISPLAY or DISPLAY");
    Gtk::Main::init_gtkmm_internals();
}

void widgets(CommandLine& line, const Environment& environment) {
    std::vector<std::string> named;
    bool remember = false;
    line.describe(
        "Show the widgets on the desktop, below other windows, until Ctrl+C\n"
        "The widgets are today, hours, heatmap and week; add a size like this: week:medium",
        "tappora widgets today hours heatmap:large");
    line.option("WIDGET", named, "The widgets to show; without any, those remembered, or all");
    line.flag("--remember", remember, "Show these from now on when none is named");
    line.parse();
    const Settings settings = Settings::read(environment);
    const std::vector<WidgetChoice> choices = chosenWidgets(named, settings);
    if (remember) {
        std::string names;
        for (const WidgetChoice& choice : choices) names += (names.empty() ? "" : " ") + choice.name();
        Settings::change(environment, [&](Settings& kept) { kept.setText(widgetsKey, names); });
    }
    // Before GTK: threads that it starts hold back the same signals.
    const SignalQueue signals{SIGINT, SIGTERM, SIGHUP};
    startGtk();
    WidgetHost(choices, environment).run(signals);
}

}  // namespace
}  // namespace tappora

int main(int argc, char** argv) {
    tappora::CommandLine line("tappora widgets", {argv + 1, argv + argc});
    return tappora::guarded(line, [&] { tappora::widgets(line, tappora::hostEnvironment()); });
}
