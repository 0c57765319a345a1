#include <glib-unix.h>
#include <gtk/gtk.h>

#include <csignal>

#include "app/common/command_line/command_line.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tray/tray_item.h"

namespace tappora {
namespace {

gboolean quit(gpointer) {
    gtk_main_quit();
    return G_SOURCE_REMOVE;
}

void tray(CommandLine& line, const Environment& environment) {
    line.describe("Show today's count in the tray, and whether it counts; pause there, until Ctrl+C",
                  "tappora tray");
    line.parse();
    if (gtk_init_check(nullptr, nullptr) == FALSE)
        throw Failure("display", "cannot be opened; the tray needs a desktop, by WAYLAND_DISPLAY or DISPLAY");
    const TrayItem item(environment);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) g_unix_signal_add(signal, quit, nullptr);
    gtk_main();
}

}  // namespace
}  // namespace tappora

int main(int argc, char** argv) {
    tappora::CommandLine line("tappora tray", {argv + 1, argv + argc});
    return tappora::guarded(line, [&] { tappora::tray(line, tappora::hostEnvironment()); });
}
