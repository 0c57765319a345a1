#include "app/common/terminal/line_output.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace tappora {
namespace {

bool isOfType(int file, mode_t type) {
    struct stat status {};
    return ::fstat(file, &status) == 0 && (status.st_mode & S_IFMT) == type;
}

/// Whether a file takes anything now. A terminal may take less than is written and wait with the rest; this
/// is for those that cannot be opened once more.
bool takesSome(int file) {
    pollfd waiting{.fd = file, .events = POLLOUT, .revents = 0};
    return ::poll(&waiting, 1, 0) == 1;
}

/// Opens a pipe or terminal once more, since "do not wait" is a property of the opening, which other programs
/// share. What else there is does not wait, or cannot be opened.
tapcore::Descriptor openedAgain(int file) {
    if (!isOfType(file, S_IFIFO) && !isOfType(file, S_IFCHR)) return {};
    const std::string path = "/proc/self/fd/" + std::to_string(file);
    return tapcore::Descriptor(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

ssize_t writeNow(int file, const tapcore::Descriptor& own, std::string_view text) {
    if (own.isOpen()) return ::write(own.get(), text.data(), text.size());
    if (isOfType(file, S_IFSOCK)) return ::send(file, text.data(), text.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (takesSome(file)) return ::write(file, text.data(), text.size());
    errno = EAGAIN;
    return -1;
}

}  // namespace

LineOutput::LineOutput(int file) : file_(file), own_(openedAgain(file)) {}

void LineOutput::write(std::string_view line) {
    goOn();
    std::string text = std::string(line) + '\n';
    const std::size_t size = text.size();
    if (rest_.empty()) send(text);
    wasRefused_ = text.size() == size;
    if (wasRefused_) ++dropped_;
    else if (rest_.empty()) rest_ = std::move(text);
}

void LineOutput::end() {
    goOn();
    if (!rest_.empty()) ++dropped_;
    rest_.clear();
}

void LineOutput::send(std::string& text) {
    while (!text.empty()) {
        const ssize_t taken = writeNow(file_, own_, text);
        if (taken < 0 && errno == EINTR) continue;
        failure_ = taken < 0 && errno != EAGAIN ? std::error_code(errno, std::generic_category())
                                                : std::error_code();
        if (taken <= 0) return;
        text.erase(0, static_cast<std::size_t>(taken));
    }
}

std::int64_t LineOutput::takeDropped() { return std::exchange(dropped_, 0); }

}  // namespace tappora
