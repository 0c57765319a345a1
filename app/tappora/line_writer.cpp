#include "app/tappora/line_writer.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

namespace tappora {
namespace {

void waitForRoom(int descriptor) {
    pollfd waiting = {descriptor, POLLOUT, 0};
    ::poll(&waiting, 1, -1);
}

}  // namespace

bool writeLine(int descriptor, std::string text) {
    text += '\n';
    std::string_view rest = text;
    while (!rest.empty()) {
        const ssize_t written = ::write(descriptor, rest.data(), rest.size());
        if (written >= 0) rest.remove_prefix(static_cast<std::size_t>(written));
        else if (errno == EAGAIN) waitForRoom(descriptor);
        else if (errno != EINTR) return false;
    }
    return true;
}

}  // namespace tappora
