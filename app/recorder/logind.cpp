#include "app/recorder/logind.h"

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <system_error>
#include <utility>

#include "app/common/program.h"

namespace tappora {
namespace {

constexpr const char* service = "org.freedesktop.login1";
constexpr const char* managerPath = "/org/freedesktop/login1";
constexpr const char* managerInterface = "org.freedesktop.login1.Manager";
constexpr const char* sessionInterface = "org.freedesktop.login1.Session";
constexpr std::uint64_t mostToAnswer = 2'000'000;  // microseconds

struct Error {
    sd_bus_error error{};

    Error() = default;
    Error(const Error&) = delete;
    Error& operator=(const Error&) = delete;
    ~Error() { sd_bus_error_free(&error); }
};

struct Unref {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, Unref>;

/// What sd-bus functions return: below 0 the negative of an error.
int required(int result) {
    if (result < 0) throw Failure("system bus", std::generic_category().message(-result));
    return result;
}

int required(int result, const Error& error) {
    if (result < 0 && error.error.message) throw Failure("logind", error.error.message);
    return required(result);
}

}  // namespace

Logind::Logind() {
    sd_bus* opened = nullptr;
    required(sd_bus_open_system(&opened));
    bus_.reset(opened);
    required(sd_bus_set_method_call_timeout(opened, mostToAnswer));
    listenTo("type='signal',sender='org.freedesktop.login1',path_namespace='/org/freedesktop/login1'");
    listenTo(
        "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='org.freedesktop."
        "login1'");
}

void Logind::listenTo(const char* signals) {
    required(sd_bus_add_match(bus_.get(), nullptr, signals, note, this));
}

int Logind::note(sd_bus_message*, void* self, sd_bus_error*) {
    static_cast<Logind*>(self)->hasChanged_ = true;
    return 0;
}

int Logind::descriptor() const { return sd_bus_get_fd(bus_.get()); }

std::chrono::milliseconds Logind::timeLeft() const {
    std::uint64_t until = 0;  // on the steady clock
    required(sd_bus_get_timeout(bus_.get(), &until));
    const auto most = std::chrono::microseconds(std::chrono::hours(1));
    if (until > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        return std::chrono::duration_cast<std::chrono::milliseconds>(most);
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto left = std::chrono::microseconds(until) - now;
    return std::chrono::ceil<std::chrono::milliseconds>(
        std::clamp<std::chrono::nanoseconds>(left, std::chrono::nanoseconds(0), most));
}

bool Logind::hasChanged() {
    while (required(sd_bus_process(bus_.get(), nullptr)) > 0) {
    }
    return std::exchange(hasChanged_, false);
}

bool Logind::isLocked() {
    const std::vector<Session> all = sessions();
    const auto is = [&](auto condition) { return std::any_of(all.begin(), all.end(), condition); };
    return is([](const Session& session) { return session.isLocked; }) &&
           !is([](const Session& session) { return session.isInFront && !session.isLocked; });
}

std::vector<Logind::Session> Logind::sessions() {
    Error error;
    sd_bus_message* answer = nullptr;
    required(sd_bus_call_method(bus_.get(), service, managerPath, managerInterface, "ListSessions",
                                &error.error, &answer, ""),
             error);
    const Message list(answer);
    std::vector<Session> sessions;
    required(sd_bus_message_enter_container(answer, 'a', "(susso)"));
    const char *id = nullptr, *name = nullptr, *seat = nullptr, *path = nullptr;
    for (std::uint32_t user = 0;
         required(sd_bus_message_read(answer, "(susso)", &id, &user, &name, &seat, &path)) > 0;)
        if (*seat != '\0')
            if (const auto found = session(user, path)) sessions.push_back(*found);
    return sessions;
}

/// Nothing for one that does not matter, or has ended meanwhile. To root all matter: it reads the keys of
/// all.
std::optional<Logind::Session> Logind::session(std::uint32_t user, const char* path) {
    try {
        const bool isInFront = flag(path, "Active");
        const std::string kind = text(path, "Class");
        if (kind == "greeter" || kind == "lock-screen")
            return isInFront ? std::optional(Session{.isInFront = true, .isLocked = true}) : std::nullopt;
        if (user != ::getuid() && ::getuid() != 0) return std::nullopt;
        return Session{.isInFront = isInFront, .isLocked = flag(path, "LockedHint")};
    } catch (const Failure&) {
        if (sd_bus_is_open(bus_.get()) <= 0) throw;
        return std::nullopt;
    }
}

bool Logind::flag(const char* path, const char* property) {
    Error error;
    int value = 0;
    required(sd_bus_get_property_trivial(bus_.get(), service, path, sessionInterface, property, &error.error,
                                         'b', &value),
             error);
    return value != 0;
}

std::string Logind::text(const char* path, const char* property) {
    Error error;
    char* value = nullptr;
    required(sd_bus_get_property_string(bus_.get(), service, path, sessionInterface, property, &error.error,
                                        &value),
             error);
    const std::unique_ptr<char, decltype(&std::free)> owned(value, std::free);
    return value;
}

}  // namespace tappora
