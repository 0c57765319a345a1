#include <string>
#include <vector>

#include "app/backup/commands.h"
#include "app/common/command_line/command_line.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"

namespace tappora {
namespace {

/// The first argument is the command that `tappora` was given.
int run(std::vector<std::string> arguments) {
    const std::string name = arguments.empty() ? "" : arguments.front();
    const auto command = name == "backup" ? backupCommand : name == "restore" ? restoreCommand : nullptr;
    if (!command) {
        complain("tappora-backup: started by tappora backup and tappora restore");
        return 2;
    }
    CommandLine line("tappora " + name, {arguments.begin() + 1, arguments.end()});
    return guarded(line, [&] { command(line, hostEnvironment()); });
}

}  // namespace
}  // namespace tappora

int main(int argc, char** argv) { return tappora::run({argv + 1, argv + argc}); }
