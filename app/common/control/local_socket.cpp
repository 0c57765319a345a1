#include "app/common/control/local_socket.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <string>
#include <system_error>

#include "app/common/control/protocol.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Descriptor;

constexpr int backlog = 16;

[[noreturn]] void fail(const fs::path& path) {
    throw fs::filesystem_error("socket", path, {errno, std::generic_category()});
}

/// An address has room for 107 bytes; by way of the opened directory every path fits.
struct Address {
    explicit Address(const fs::path& path)
        : directory(::open(path.parent_path().c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)) {
        const std::string text =
            "/proc/self/fd/" + std::to_string(directory.get()) + "/" + path.filename().string();
        isValid = directory.isOpen() && text.size() < sizeof address.sun_path;
        if (!isValid) return;
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, text.c_str(), text.size() + 1);
    }
    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&address); }

    Descriptor directory;
    sockaddr_un address{};
    bool isValid = false;
};

Descriptor newSocket(int flags) {
    return Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
}

/// Bounds each wait of a connection.
void boundWaits(const Descriptor& connection) {
    const timeval time{.tv_sec = timeToAnswer.count(), .tv_usec = 0};
    for (const int which : {SO_SNDTIMEO, SO_RCVTIMEO})
        ::setsockopt(connection.get(), SOL_SOCKET, which, &time, sizeof time);
}

}  // namespace

Descriptor listenAt(const fs::path& path) {
    const Address address(path);
    Descriptor listening = newSocket(SOCK_NONBLOCK);
    if (!address.isValid || !listening.isOpen()) fail(path);
    ::fchmod(listening.get(), S_IRUSR | S_IWUSR);  // what it has when it gets its name
    if (::bind(listening.get(), address.get(), sizeof address.address) < 0) fail(path);
    if (::listen(listening.get(), backlog) < 0) fail(path);
    return listening;
}

Descriptor connectTo(const fs::path& path) {
    const Address address(path);
    Descriptor connection = newSocket(0);
    if (!address.isValid || !connection.isOpen()) return {};
    boundWaits(connection);
    if (::connect(connection.get(), address.get(), sizeof address.address) < 0) return {};
    return connection;
}

Descriptor nextClient(const Descriptor& listening) {
    return Descriptor(::accept4(listening.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
}

unsigned userAt(const Descriptor& connection) {
    ucred peer{.pid = 0, .uid = static_cast<uid_t>(-1), .gid = 0};
    socklen_t size = sizeof peer;
    ::getsockopt(connection.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size);
    return peer.uid;
}

}  // namespace tappora
