#include "app/ask/http_client.h"

#include <curl/curl.h>
#include <fmt/format.h>

#include <algorithm>

#include "app/common/notices.h"
#include "core/foundation/characters.h"
#include "core/foundation/owned.h"

namespace tappora {
namespace {

using EasyHandle = tapcore::Owned<CURL, curl_easy_cleanup>;
using UrlHandle = tapcore::Owned<CURLU, curl_url_cleanup>;
using HeaderList = tapcore::Owned<curl_slist, curl_slist_free_all>;
using CurlText = tapcore::Owned<char, curl_free>;

/// A part of an address; "" when it has none or is no address.
std::string partOf(const std::string& url, CURLUPart part) {
    const UrlHandle handle(curl_url());
    char* text = nullptr;
    if (curl_url_set(handle.get(), CURLUPART_URL, url.c_str(), 0) != CURLUE_OK ||
        curl_url_get(handle.get(), part, &text, 0) != CURLUE_OK)
        return "";
    return CurlText(text).get();
}

/// What a transfer fills and asks while it goes on.
struct Transfer {
    HttpReply reply;
    const HttpLimits& limits;
    const std::function<bool()>& isStopped;
    bool isTooLarge = false;

    static std::size_t body(const char* data, std::size_t, std::size_t size, void* self) {
        auto& transfer = *static_cast<Transfer*>(self);
        transfer.isTooLarge = transfer.reply.body.size() + size > transfer.limits.largestReply;
        if (transfer.isTooLarge) return 0;
        transfer.reply.body.append(data, size);
        return size;
    }

    static std::size_t header(const char* data, std::size_t, std::size_t size, void* self) {
        const std::string_view line(data, size);
        auto& headers = static_cast<Transfer*>(self)->reply.headers;
        const std::size_t colon = line.find(':');
        if (line.starts_with("HTTP/")) headers.clear();  // of an answer before, such as a proxy's
        else if (colon != std::string_view::npos)
            headers[tapcore::lowercased(line.substr(0, colon))] =
                tapcore::trimmedWhiteSpace(line.substr(colon + 1));
        return size;
    }

    static int progress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
        return static_cast<Transfer*>(self)->isStopped() ? 1 : 0;
    }
};

HeaderList headerList(const HttpRequest& request) {
    curl_slist* list = nullptr;
    for (const auto& [name, value] : request.headers)
        list = curl_slist_append(list, (name + ": " + value).c_str());
    if (request.body) list = curl_slist_append(list, "content-type: application/json");
    list = curl_slist_append(list, "expect:");  // some servers never say "100 Continue"
    return HeaderList(list);
}

void setAddress(CURL* curl, const std::string& url) {
    const bool isHere = isLoopback(url);
    if (!isHere && partOf(url, CURLUPART_SCHEME) != "https")
        throw HttpError(shownAddress(url) + ": use https for other machines");
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, isHere ? "http,https" : "https");
    if (isHere) curl_easy_setopt(curl, CURLOPT_NOPROXY, "*");
}

void setLimits(CURL* curl, const HttpLimits& limits) {
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits.connect.count()));
    curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, static_cast<long>(limits.total.count()));
}

void setCallbacks(CURL* curl, Transfer& transfer) {
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, Transfer::body);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &transfer);
    curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, Transfer::header);
    curl_easy_setopt(curl, CURLOPT_HEADERDATA, &transfer);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, Transfer::progress);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &transfer);
}

void setBody(CURL* curl, const std::string& body) {
    curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(curl, CURLOPT_POSTFIELDS, body.c_str());
}

/// Whether the certificate of the server, or those to check it with, were the reason.
bool isOfCertificates(CURLcode result) {
    return result == CURLE_PEER_FAILED_VERIFICATION || result == CURLE_SSL_CACERT_BADFILE ||
           result == CURLE_SSL_ISSUER_ERROR;
}

/// Why no reply came: which of the two limits was reached, else as the library says it.
std::string problemOf(CURLcode result, CURL* curl, const HttpLimits& limits) {
    if (isOfCertificates(result))
        return fmt::format("{}; {}: {}", curl_easy_strerror(result), certificatesNotice.what,
                           certificatesNotice.remedy);
    if (result != CURLE_OPERATION_TIMEDOUT) return curl_easy_strerror(result);
    curl_off_t handshake = 0;  // microseconds until it was over; 0 when it never was
    curl_easy_getinfo(curl, CURLINFO_PRETRANSFER_TIME_T, &handshake);
    const bool isConnected = handshake > 0;
    const std::chrono::duration<double> limit =
        isConnected ? limits.total : std::min(limits.connect, limits.total);
    return fmt::format("{} within {} seconds{}", isConnected ? "no reply" : "no connection", limit.count(),
                       isConnected ? "; --timeout gives it longer" : "");
}

}  // namespace

HttpReply send(const HttpRequest& request, const HttpLimits& limits, const std::function<bool()>& isStopped) {
    const EasyHandle curl(curl_easy_init());
    if (!curl) throw HttpError("cannot use the network library");
    Transfer transfer{{}, limits, isStopped};
    const HeaderList headers = headerList(request);
    setAddress(curl.get(), request.url);
    setLimits(curl.get(), limits);
    setCallbacks(curl.get(), transfer);
    curl_easy_setopt(curl.get(), CURLOPT_HTTPHEADER, headers.get());
    if (request.body) setBody(curl.get(), *request.body);

    const CURLcode result = curl_easy_perform(curl.get());
    if (isStopped()) throw Stopped();
    const std::string host = partOf(request.url, CURLUPART_HOST);
    if (transfer.isTooLarge) throw HttpError(host + ": the reply is too large");
    if (result != CURLE_OK) throw HttpError(host + ": " + problemOf(result, curl.get(), limits));
    long status = 0;
    curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &status);
    transfer.reply.status = static_cast<int>(status);
    return std::move(transfer.reply);
}

std::string addressUnder(const std::string& base, std::string_view path) {
    const std::size_t end = std::min(base.find_first_of("?#"), base.size());
    std::string address = base.substr(0, end);
    while (address.ends_with('/')) address.pop_back();
    return address.append(path) + base.substr(end);
}

bool isAddress(const std::string& url) { return !partOf(url, CURLUPART_HOST).empty(); }

std::string shownAddress(const std::string& url) {
    const bool hasUser = !partOf(url, CURLUPART_USER).empty() || !partOf(url, CURLUPART_PASSWORD).empty();
    const std::string port = partOf(url, CURLUPART_PORT);
    return fmt::format("{}://{}{}{}{}{}", partOf(url, CURLUPART_SCHEME), hasUser ? "…@" : "",
                       partOf(url, CURLUPART_HOST), port.empty() ? "" : ":" + port,
                       partOf(url, CURLUPART_PATH), partOf(url, CURLUPART_QUERY).empty() ? "" : "?…");
}

bool isLoopback(const std::string& url) {
    const std::string host = tapcore::lowercased(partOf(url, CURLUPART_HOST));
    const bool isIPv4 =
        host.starts_with("127.") && host.find_first_not_of("0123456789.") == std::string::npos;
    return host == "localhost" || host == "[::1]" || isIPv4;
}

std::optional<std::chrono::sys_seconds> httpDate(const std::string& text) {
    const time_t moment = curl_getdate(text.c_str(), nullptr);
    if (moment < 0) return std::nullopt;
    return std::chrono::sys_seconds(std::chrono::seconds(moment));
}

}  // namespace tappora
