#include "app/tappora/page_opening.h"

#include <fmt/format.h>

#include "app/common/program.h"
#include "app/common/system/child_program.h"
#include "app/common/system/directories.h"

namespace tappora {

namespace fs = std::filesystem;

void requireDesktop(const Environment& environment) {
    for (const char* display : {"WAYLAND_DISPLAY", "DISPLAY"})
        if (const auto value = environment.variable(display); value && !value->empty()) return;
    throw Failure("--open",
                  "there is no desktop here: neither WAYLAND_DISPLAY nor DISPLAY is set; write the page with "
                  "-o FILE.html, and open that");
}

fs::path placeForPage(const std::string& name, const Environment& environment) {
    return madeRuntimeDirectory(environment) / ("report-" + name + ".html");
}

void openOnDesktop(const fs::path& file) {
    constexpr int notFound = 127;
    const ProgramEnd end = runProgram({"xdg-open", fs::absolute(file).string()});
    if (end.isGood()) return;
    const std::string why = end.status == notFound
                                ? "xdg-open is not installed (it is in the package xdg-utils)"
                                : fmt::format("xdg-open ended with {}", end.status);
    throw Failure(file.string(), "written, but not opened: " + why);
}

}  // namespace tappora
