#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/common/command_line/command_line.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "app/tappora/dispatch.h"
#include "app/tappora/link.h"

namespace tappora {

void openCommand(CommandLine& line, const Environment& environment) {
    std::string link;
    bool wait = false;
    line.describe("Show what a link asks for: summary, heatmap, report or practice",
                  "tappora open \"tappora://heatmap?from=2026-09-01\"");
    line.option("LINK", link, "A link that begins with tappora://").type("").required();
    line.flag("--wait", wait, "Wait for Enter in the end, in a window that closes then");
    line.parse();

    const int status = dispatch(commandOf(link), environment);
    if (wait) {
        print("\nEnter closes this window.\n");
        std::fflush(stdout);
        while (std::getchar() != '\n' && !std::feof(stdin)) {
        }
    }
    if (status != 0) std::exit(status);  // what went wrong was said
}

}  // namespace tappora
