#include "app/tappora/line_reader.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace tappora {
namespace {

bool isReadable(int descriptor) {
    pollfd waiting = {descriptor, POLLIN, 0};
    return ::poll(&waiting, 1, 0) > 0;
}

}  // namespace

std::optional<LineReader::Line> LineReader::next(bool wait) {
    while (true) {
        if (auto line = take()) return line;
        if (atEnd_ || (!wait && !isReadable(descriptor_))) return std::nullopt;
        fill();
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
    else if (got == 0 || errno != EINTR) atEnd_ = true;
}

}  // namespace tappora
