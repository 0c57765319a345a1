#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <list>
#include <string>
#include <string_view>
#include <utility>

#include "core/foundation/descriptor.h"

namespace tappora {

/// The recorder's end of its socket. It serves several clients at once, drops those that are not this user's
/// or root's, that ask too much or take too long, and is never held up by one.
class ControlServer {
  public:
    /// Gives the line that answers a line, both without their end.
    using Answer = std::function<std::string(std::string_view question)>;

    ControlServer(std::string name, Answer answer);
    /// Removes the socket's name.
    ~ControlServer();
    ControlServer(const ControlServer&) = delete;
    ControlServer& operator=(const ControlServer&) = delete;

    /// Listens in a directory that is there, instead of where it did. The socket of a recorder that was
    /// killed is replaced. Throws filesystem_error or Failure when something else has the name; it listens
    /// nowhere then.
    void listenIn(const std::filesystem::path& directory);
    /// Whether clients still find it: the directory may be gone, or the name in it.
    bool isListening() const;

    /// Serves clients until one of these files is readable.
    void serveUntil(std::initializer_list<int> files);

  private:
    using Clock = std::chrono::steady_clock;

    struct Client {
        tapcore::Descriptor connection;
        Clock::time_point deadline;
        std::string asked{};
        std::string answer{};  ///< what is left of it
    };
    /// Whether a client has more to ask or take.
    enum class Next { goOn, done };

    bool wait(std::initializer_list<int> files);
    int timeLeft() const;
    void takeClients();
    Next serve(Client& client) const;
    Next hear(Client& client) const;
    void forget();

    std::string name_;
    Answer answer_;
    std::filesystem::path path_;
    tapcore::Descriptor socket_;
    std::pair<std::uint64_t, std::uint64_t> identity_;  ///< of the socket's file
    std::list<Client> clients_;
};

}  // namespace tappora
