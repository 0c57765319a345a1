#include "app/ask/ask_command.h"
#include "app/common/command_line/command_line.h"
#include "app/common/system/environment.h"

int main(int argc, char** argv) {
    tappora::CommandLine line("tappora ask", {argv + 1, argv + argc});
    return tappora::guarded(line, [&] { tappora::askCommand(line, tappora::hostEnvironment()); });
}
