#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>

#include "app/common/command_line/command_line.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "app/tappora/dispatch.h"
#include "app/tappora/link.h"

namespace tappora {

namespace {

int show(const std::string& link, const Environment& environment) {
    try {
        return dispatch(commandOf(link), environment);
    } catch (const UsageError& error) {
        complain(error.what());
        return 2;
    }
}

/// Shows it in a process of its own, which may become another program, and waits for its end.
int showApart(const std::string& link, const Environment& environment) {
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (child == 0) std::exit(show(link, environment));
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

void waitForEnter() {
    print("\nEnter closes this window.\n");
    std::fflush(stdout);
    while (std::getchar() != '\n' && !std::feof(stdin)) {
    }
}

}  // namespace

void openCommand(CommandLine& line, const Environment& environment) {
    std::string link;
    bool wait = false;
    line.describe("Show what a link asks for: summary, heatmap, report or practice",
                  "tappora open \"tappora://heatmap?from=2026-09-01\"");
    line.option("LINK", link, "A link that begins with tappora://").type("").required();
    line.flag("--wait", wait, "Wait for Enter in the end, in a window that closes then");
    line.parse();

    const int status = wait ? showApart(link, environment) : show(link, environment);
    if (wait) waitForEnter();
    if (status != 0) std::exit(status);  // what went wrong was said
}

}  // namespace tappora
