#include "app/recorder/live_output.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <utility>

#include "app/common/program.h"
#include "core/foundation/integers.h"

namespace tappora {

LiveOutput::~LiveOutput() {
    watched_.end();
    tellDropped();
    told_.end();
}

void LiveOutput::tell(std::string_view text) { told_.write(complaint(text)); }

bool LiveOutput::watch(const Lines& lines) {
    for (const std::string& line : lines.kept) watched_.write(line);
    watched_.drop(lines.dropped);
    const bool wasStalled = std::exchange(isStalled_, watched_.isStalled());
    if (isStalled_ && !wasStalled && !watched_.isGone()) tell(whyDropped());
    if (!isStalled_) tellDropped();
    return !watched_.isGone();
}

std::string LiveOutput::whyDropped() const {
    if (!watched_.failure()) return "nobody reads the lines of --watch: they are dropped";
    return "standard output: " + watched_.failure().message() + "; the lines of --watch are dropped";
}

void LiveOutput::tellDropped() {
    const std::int64_t dropped = watched_.takeDropped();
    if (dropped == 0 || watched_.isGone()) return;
    tell(fmt::format("{} of --watch dropped",
                     tapcore::counted(static_cast<std::size_t>(dropped), "line", "lines")));
}

}  // namespace tappora
