#include "app/common/terminal/long_work.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <utility>

#include "app/common/program.h"

namespace tappora {

LongWork::LongWork(std::string what) : what_(std::move(what)), onTerminal_(::isatty(STDERR_FILENO) == 1) {}

LongWork::~LongWork() { takeLineAway(); }

tapcore::Progress LongWork::progress() {
    return [this](std::size_t done, std::size_t total) {
        if (onTerminal_) show(done, total);
        return !Interruption::isRequested();
    };
}

void LongWork::requireDone(bool done, const std::string& stopped) {
    takeLineAway();
    if (!done) throw Failure(what_, stopped);
}

void LongWork::takeLineAway() {
    if (std::exchange(shown_, 0) > 0) std::fputs("\r\033[K", stderr);
}

void LongWork::show(std::size_t done, std::size_t total) {
    const std::size_t percent = 1 + done * 100 / total;
    if (percent == shown_) return;
    shown_ = percent;
    fmt::print(stderr, "\r{} {} of {}\033[K", what_, done, total);
    std::fflush(stderr);
}

}  // namespace tappora
