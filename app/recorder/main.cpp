#include "app/common/command_line/command_line.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/recorder/record_command.h"

int main(int argc, char** argv) {
    tappora::CommandLine line("tappora record", {argv + 1, argv + argc});
    return tappora::guarded(line, [&] {
        tappora::RecordOptions options;
        tappora::addRecordOptions(line, options);
        line.offerVersion(tappora::version());
        line.parse();
        tappora::record(options, tappora::hostEnvironment());
    });
}
