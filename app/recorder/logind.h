#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tappora {

/// systemd-logind, which knows the sessions of a machine, on the system bus. For one thread. Failure, from
/// every function, when there is no bus, no logind on it, or either has gone.
class Logind {
  public:
    Logind();

    int descriptor() const;
    /// How long to wait at most for the descriptor to be readable.
    std::chrono::milliseconds timeLeft() const;
    /// Takes what came; whether anything about sessions may have changed, as at first.
    bool hasChanged();

    /// Whether one of this user's sessions at a seat is locked, and none of them that is in front is
    /// unlocked; or a login screen is in front.
    bool isLocked();

  private:
    struct Close {
        void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
    };
    struct Session {
        bool isInFront = false;
        bool isLocked = false;
    };

    static int note(sd_bus_message* message, void* self, sd_bus_error* error);
    void listenTo(const char* signals);
    std::vector<Session> sessions();
    std::optional<Session> session(std::uint32_t user, const char* path);
    bool flag(const char* path, const char* property);
    std::string text(const char* path, const char* property);

    std::unique_ptr<sd_bus, Close> bus_;
    bool hasChanged_ = true;
};

}  // namespace tappora
