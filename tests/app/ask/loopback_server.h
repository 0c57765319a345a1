#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tappora {

/// A real HTTP server on the loopback address that says what a test has written down for it, reply by reply,
/// and remembers what it was asked.
class LoopbackServer {
  public:
    struct Reply {
        std::string body = {};
        int status = 200;
        std::string headers = {};  ///< each line ended by "\r\n"
        std::chrono::milliseconds delay{0};
        bool hangsUp = false;  ///< closes the connection without a word
    };
    struct Request {
        std::string head;  ///< request line and headers
        std::string body;
    };

    /// Port 0 stands for any that is free.
    explicit LoopbackServer(std::vector<Reply> replies, std::uint16_t port = 0)
        : replies_(std::move(replies)) {
        listening_ = ::socket(AF_INET, SOCK_STREAM, 0);
        const int yes = 1;
        ::setsockopt(listening_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        hasPort_ = ::bind(listening_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                   ::listen(listening_, 8) == 0;
        socklen_t size = sizeof address;
        ::getsockname(listening_, reinterpret_cast<sockaddr*>(&address), &size);
        url_ = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/v1";
        thread_ = std::thread([this] { serve(); });
    }
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;
    ~LoopbackServer() {
        ends_ = true;
        thread_.join();
        ::close(listening_);
    }

    const std::string& url() const { return url_; }
    /// False when another program has the port that was asked for.
    bool hasPort() const { return hasPort_; }

    std::vector<Request> requests() {
        const std::lock_guard lock(mutex_);
        return requests_;
    }

  private:
    void serve() {
        for (std::size_t next = 0; !ends_;) {
            pollfd waiting = {listening_, POLLIN, 0};
            if (::poll(&waiting, 1, 20) <= 0) continue;
            const int connection = ::accept(listening_, nullptr, nullptr);
            take(connection);
            answer(connection, next < replies_.size() ? replies_[next] : Reply{"{}", 404});
            ++next;
            ::close(connection);
        }
    }

    void take(int connection) {
        std::string text;
        std::size_t end = 0;
        std::size_t length = 0;
        char bytes[4096];
        while ((end = text.find("\r\n\r\n")) == std::string::npos || text.size() < end + 4 + length) {
            const ssize_t got = ::read(connection, bytes, sizeof bytes);
            if (got <= 0) return;
            text.append(bytes, static_cast<std::size_t>(got));
            const std::size_t at = text.find("Content-Length: ");
            if (at != std::string::npos) length = std::stoul(text.substr(at + 16));
        }
        const std::lock_guard lock(mutex_);
        requests_.push_back({text.substr(0, end + 2), text.substr(end + 4)});
    }

    void answer(int connection, const Reply& reply) {
        for (auto waited = reply.delay; waited.count() > 0 && !ends_; waited -= std::chrono::milliseconds(10))
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        if (reply.hangsUp) return;
        const std::string text = "HTTP/1.1 " + std::to_string(reply.status) +
                                 " Said\r\nContent-Length: " + std::to_string(reply.body.size()) +
                                 "\r\nConnection: close\r\n" + reply.headers + "\r\n" + reply.body;
        ::send(connection, text.data(), text.size(), MSG_NOSIGNAL);
    }

    std::vector<Reply> replies_;
    int listening_ = -1;
    bool hasPort_ = false;
    std::string url_;
    std::mutex mutex_;
    std::vector<Request> requests_;
    std::atomic<bool> ends_ = false;
    std::thread thread_;
};

}  // namespace tappora
