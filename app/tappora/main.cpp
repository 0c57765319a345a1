#include <CLI/CLI.hpp>

#include "app/common/program.h"

int main(int argc, char** argv) {
    CLI::App program(
        "Counts keys, shortcuts and mouse buttons hour by hour: never the text, never the order.", "tappora");
    return tappora::runProgram(program, argc, argv);
}
