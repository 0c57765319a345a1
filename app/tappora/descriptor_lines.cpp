#include "app/tappora/descriptor_lines.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

namespace tappora {
namespace {

/// Whether something is there to be read, at once or after a wait without end.
bool isReadable(int descriptor, bool wait) {
    pollfd waiting = {descriptor, POLLIN, 0};
    return ::poll(&waiting, 1, wait ? -1 : 0) > 0;
}

void waitForRoom(int descriptor) {
    pollfd waiting = {descriptor, POLLOUT, 0};
    ::poll(&waiting, 1, -1);
}

}  // namespace

std::optional<LineReader::Line> LineReader::next(bool wait) {
    while (true) {
        if (auto line = take()) return line;
        if (atEnd_) return std::nullopt;
        if (isReadable(descriptor_, wait)) fill();
        else if (!wait) return std::nullopt;
    }
}

std::optional<LineReader::Line> LineReader::take() {
    const std::size_t end = buffer_.find('\n');
    const bool isWhole = end != std::string::npos || (atEnd_ && !buffer_.empty());
    if (!isWhole && buffer_.size() > longest_) {
        buffer_.clear();
        skipping_ = true;
    }
    if (!isWhole) return std::nullopt;
    Line line{buffer_.substr(0, end), skipping_ || std::min(end, buffer_.size()) > longest_};
    buffer_.erase(0, end == std::string::npos ? end : end + 1);
    skipping_ = false;
    if (line.isTooLong) line.text.clear();
    if (line.text.ends_with('\r')) line.text.pop_back();
    return line;
}

void LineReader::fill() {
    std::array<char, 65536> bytes;
    const ssize_t got = ::read(descriptor_, bytes.data(), bytes.size());
    if (got > 0) buffer_.append(bytes.data(), static_cast<std::size_t>(got));
    else if (got == 0 || (errno != EINTR && errno != EAGAIN)) atEnd_ = true;
}

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
