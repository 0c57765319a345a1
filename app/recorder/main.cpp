#include <CLI/CLI.hpp>

#include "app/common/program.h"
#include "app/recorder/record_command.h"

int main(int argc, char** argv) {
    CLI::App program(
        "Counts what is typed and clicked, hour by hour: live, until a signal ends it, or from a recording.",
        "tappora record");
    tappora::RecordOptions options;
    tappora::addRecordOptions(program, options);
    program.callback([&] { tappora::record(options, tappora::hostEnvironment()); });
    return tappora::runProgram(program, argc, argv);
}
