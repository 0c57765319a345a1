#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tappora {

struct HttpRequest {
    std::string url;
    std::map<std::string, std::string> headers = {};
    std::optional<std::string> body = {};  ///< JSON, sent with POST; without it the request is a GET
};

struct HttpReply {
    int status = 0;
    std::map<std::string, std::string> headers = {};  ///< names in lower case
    std::string body = {};
};

struct HttpLimits {
    std::chrono::milliseconds connect = std::chrono::seconds(10);
    std::chrono::milliseconds total = std::chrono::minutes(10);
    std::size_t largestReply = std::size_t{16} << 20;
};

/// No reply came. `what()` is for the user, and names the host at most.
class HttpError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The user stopped it.
class Stopped : public std::runtime_error {
  public:
    Stopped() : std::runtime_error("stopped") {}
};

/// Sends a request and waits for the whole reply, whatever its status. Certificates are checked against the
/// system's store and proxies taken from the environment, as curl does; redirections are not followed. Only
/// https is spoken, except to this machine itself, which is never reached through a proxy. Throws HttpError;
/// Stopped soon after `isStopped` says so.
HttpReply send(const HttpRequest& request, const HttpLimits& limits, const std::function<bool()>& isStopped);

/// The address of `path`, which begins with a "/", below that of an interface; a query stays at its end.
std::string addressUnder(const std::string& base, std::string_view path);

/// Whether a text is an address with a scheme and a host.
bool isAddress(const std::string& url);

/// An address as it may be printed: "…" replaces what may be secret in it, which is the user's name and
/// password and the query.
std::string shownAddress(const std::string& url);

/// Whether an address names this machine itself: localhost, 127.x.x.x or [::1].
bool isLoopback(const std::string& url);

/// The moment of an HTTP date; nothing for other text.
std::optional<std::chrono::sys_seconds> httpDate(const std::string& text);

}  // namespace tappora
