#include "app/common/control/control_server.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "app/common/control/local_socket.h"
#include "app/common/control/protocol.h"
#include "app/common/program.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostClients = 8;

std::optional<struct stat> fileAt(const fs::path& path) {
    struct stat file {};
    return ::lstat(path.c_str(), &file) == 0 ? std::optional(file) : std::nullopt;
}

/// Makes room for a socket: one that a recorder left behind is removed.
void removeStale(const fs::path& path) {
    const auto file = fileAt(path);
    if (!file) return;
    if (!S_ISSOCK(file->st_mode) || file->st_uid != ::getuid())
        throw Failure(path.string(), "something else has the name of the recorder's socket");
    if (connectTo(path).isOpen()) throw Failure(path.string(), "another recorder answers at it");
    fs::remove(path);
}

bool mayAsk(const tapcore::Descriptor& client) {
    const unsigned user = userAt(client);
    return user == ::getuid() || user == 0;
}

bool isToWait() { return errno == EAGAIN || errno == EINTR || errno == ECONNABORTED; }

}  // namespace

ControlServer::ControlServer(std::string name, Answer answer)
    : name_(std::move(name)), answer_(std::move(answer)) {}

ControlServer::~ControlServer() { forget(); }

void ControlServer::forget() {
    if (isListening()) ::unlink(path_.c_str());
    socket_ = {};
}

void ControlServer::listenIn(const fs::path& directory) {
    forget();
    path_ = directory / name_;
    removeStale(path_);
    socket_ = listenAt(path_);
    if (const auto file = fileAt(path_)) identity_ = {file->st_dev, file->st_ino};
}

bool ControlServer::isListening() const {
    const auto file = socket_.isOpen() ? fileAt(path_) : std::nullopt;
    return file && identity_ == std::pair<std::uint64_t, std::uint64_t>(file->st_dev, file->st_ino);
}

void ControlServer::serveUntil(std::initializer_list<int> files) {
    while (!wait(files)) {
        std::erase_if(clients_, [this](Client& client) { return serve(client) == Next::done; });
        takeClients();
    }
}

/// Waits until there is something to do; whether one of the files is readable.
bool ControlServer::wait(std::initializer_list<int> files) {
    std::vector<pollfd> waiting;
    for (const int file : files) waiting.push_back({file, POLLIN, 0});
    waiting.push_back({socket_.get(), POLLIN, 0});
    for (const Client& client : clients_)
        waiting.push_back(
            {client.connection.get(), static_cast<short>(client.answer.empty() ? POLLIN : POLLOUT), 0});
    if (::poll(waiting.data(), waiting.size(), timeLeft()) < 0 && errno != EINTR)
        throw std::system_error(errno, std::generic_category(), "control");
    const auto end = waiting.begin() + static_cast<std::ptrdiff_t>(files.size());
    return std::any_of(waiting.begin(), end, [](const pollfd& file) { return file.revents != 0; });
}

/// In milliseconds, until the first client has had its time; -1 without clients.
int ControlServer::timeLeft() const {
    if (clients_.empty()) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(clients_.front().deadline - Clock::now());
    return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

/// A client too many takes the place of the one that has had the most time.
void ControlServer::takeClients() {
    for (std::size_t taken = 0; socket_.isOpen() && taken < mostClients; ++taken) {
        tapcore::Descriptor client = nextClient(socket_);
        if (!client.isOpen() && !isToWait()) socket_ = {};  // or it would be asked again and again
        if (!client.isOpen()) return;
        if (!mayAsk(client)) continue;
        if (clients_.size() == mostClients) clients_.pop_front();
        clients_.push_back({std::move(client), Clock::now() + timeOfClient});
    }
}

ControlServer::Next ControlServer::serve(Client& client) const {
    if (Clock::now() >= client.deadline) return Next::done;
    if (client.answer.empty() && hear(client) == Next::done) return Next::done;
    if (client.answer.empty()) return Next::goOn;
    const ssize_t sent =
        ::send(client.connection.get(), client.answer.data(), client.answer.size(), MSG_NOSIGNAL);
    if (sent < 0) return isToWait() ? Next::goOn : Next::done;
    client.answer.erase(0, static_cast<std::size_t>(sent));
    return client.answer.empty() ? Next::done : Next::goOn;
}

/// Takes what there is of the question, and has its answer once it is whole.
ControlServer::Next ControlServer::hear(Client& client) const {
    std::array<char, 1024> bytes;
    const ssize_t got = ::recv(client.connection.get(), bytes.data(), bytes.size(), 0);
    if (got < 0) return isToWait() ? Next::goOn : Next::done;
    client.asked.append(bytes.data(), static_cast<std::size_t>(got));
    const std::size_t end = client.asked.find('\n');
    if (end > longestQuestion && client.asked.size() > longestQuestion) return Next::done;
    if (end == std::string::npos) return got == 0 ? Next::done : Next::goOn;
    client.answer = answer_(std::string_view(client.asked).substr(0, end)) + '\n';
    return Next::goOn;
}

}  // namespace tappora
