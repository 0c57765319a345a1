#include "app/common/control/recorder_client.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "app/common/control/control_places.h"
#include "app/common/control/local_socket.h"
#include "app/common/system/directories.h"
#include "core/foundation/folder_listing.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Outcome = RecorderReply::Outcome;

constexpr const char* noAnswer = "the recorder does not answer; it may be waiting for its disk";

RecorderReply notAsked(Outcome outcome, const fs::path& socket, std::string why) {
    return {.outcome = outcome, .socket = socket, .why = std::move(why)};
}

bool isReadableBefore(const tapcore::Descriptor& connection, Clock::time_point deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    pollfd waiting{.fd = connection.get(), .events = POLLIN, .revents = 0};
    return ::poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0))) == 1;
}

/// The line that answers, or nothing.
std::optional<std::string> exchange(const tapcore::Descriptor& connection, const std::string& question,
                                    Clock::time_point deadline) {
    const std::string line = question + '\n';
    if (::send(connection.get(), line.data(), line.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(line.size()))
        return std::nullopt;
    std::string answer;
    while (answer.size() <= longestAnswer && isReadableBefore(connection, deadline)) {
        std::array<char, 4096> bytes;
        const ssize_t got = ::recv(connection.get(), bytes.data(), bytes.size(), 0);
        if (got <= 0) break;
        answer.append(bytes.data(), static_cast<std::size_t>(got));
        if (const std::size_t end = answer.find('\n'); end != std::string::npos) return answer.substr(0, end);
    }
    return std::nullopt;
}

RecorderReply readReply(const fs::path& socket, const std::optional<std::string>& line) {
    if (!line) return notAsked(Outcome::silent, socket, noAnswer);
    try {
        ControlAnswer answer = readAnswer(*line);
        if (!answer.status) return notAsked(Outcome::refused, socket, answer.refusal);
        return {.socket = socket, .status = std::move(*answer.status)};
    } catch (const tapcore::JsonError& error) {
        return notAsked(Outcome::silent, socket, fmt::format("its answer cannot be read: {}", error.what()));
    }
}

/// Nothing where nobody listens: a recorder that was killed left the socket behind.
std::optional<RecorderReply> ask(const std::string& question, const ControlPlace& place,
                                 const fs::path& socket, std::chrono::milliseconds patience) {
    const Clock::time_point deadline = Clock::now() + patience;
    const tapcore::Descriptor connection = connectTo(socket);
    if (!connection.isOpen()) {
        if (errno == ECONNREFUSED || errno == ENOENT) return std::nullopt;
        if (errno == EAGAIN) return notAsked(Outcome::silent, socket, noAnswer);
        return notAsked(Outcome::foreign, socket, std::generic_category().message(errno));
    }
    if (userAt(connection) != place.user)
        return notAsked(Outcome::foreign, socket, "another user listens at it; it was not asked");
    return readReply(socket, exchange(connection, question, deadline));
}

/// The sockets in a directory.
std::vector<fs::path> socketsIn(const ControlPlace& place) {
    std::vector<fs::path> sockets;
    for (const std::string& name : tapcore::listFolder(place.directory).names)
        if (isSocketName(name)) sockets.push_back(place.directory / name);
    return sockets;
}

bool isOf(const fs::path& socket, const Asking& asking) {
    return !asking.folder || socket.filename() == socketName(*asking.folder);
}

}  // namespace

std::vector<RecorderReply> askRecorders(const ControlQuestion& question, const Asking& asking,
                                        const Environment& environment) {
    std::vector<RecorderReply> replies;
    for (const ControlPlace& place : controlPlaces(environment)) {
        if (!fs::exists(fs::symlink_status(place.directory))) continue;
        if (!isDirectoryOf(place.directory, place.user)) {
            replies.push_back(notAsked(Outcome::foreign, place.directory,
                                       "not a directory of its user; no recorder was looked for in it"));
            continue;
        }
        for (const fs::path& socket : socketsIn(place))
            if (isOf(socket, asking))
                if (auto reply = ask(lineOf(question), place, socket, asking.patience))
                    replies.push_back(std::move(*reply));
    }
    return replies;
}

std::vector<RecorderReply> askStatus(const Asking& asking, const Environment& environment) {
    return askRecorders({}, asking, environment);
}

std::vector<RecorderReply> pauseRecorders(std::optional<tapcore::Instant> until, const Asking& asking,
                                          const Environment& environment) {
    return askRecorders({.kind = ControlQuestion::Kind::pause, .until = until}, asking, environment);
}

std::vector<RecorderReply> resumeRecorders(const Asking& asking, const Environment& environment) {
    return askRecorders({.kind = ControlQuestion::Kind::resume}, asking, environment);
}

}  // namespace tappora
