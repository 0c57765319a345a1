#pragma once

#include <chrono>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/ask/http_client.h"
#include "core/assistant/assistant_wire.h"
#include "core/foundation/text_error.h"
#include "core/words/words.h"

namespace tappora {

using tapcore::AssistantWire::Provider;

/// A provider refused a request. `what()` is what the user is told; never a part of a key.
class Refused : public std::runtime_error {
  public:
    Refused(std::string_view text, std::string replyBody)
        : std::runtime_error(tapcore::withVisibleNuls(text)), body(std::move(replyBody)) {}

    std::string body;  ///< of the reply, as it came
};

/// How a provider is reached.
struct ProviderAccess {
    Provider provider;
    std::string base;  ///< its interface's address; not to be printed unchanged
    std::string key;   ///< "" for a server that wants none

    /// Whether each token is charged for.
    bool isPaid() const { return provider != Provider::local; }

    /// The request that puts a question's next step.
    HttpRequest question(const std::string& model, const nlohmann::json& body) const;
    HttpRequest modelListing() const;

    /// The request as a person may read it: its address and headers with what is secret in them blanked
    /// out, and exactly its body.
    std::string shown(const HttpRequest& request) const;
};

/// Sends requests to a provider and reads its replies.
class ProviderClient {
  public:
    /// What a provider refuses is explained in these words.
    ProviderClient(ProviderAccess access, HttpLimits limits, tapcore::Words words,
                   std::function<bool()> isStopped)
        : access_(std::move(access)),
          limits_(limits),
          words_(std::move(words)),
          isStopped_(std::move(isStopped)) {}

    const ProviderAccess& access() const { return access_; }

    /// The JSON that a request is answered with. What is refused for now is sent once more, after the time
    /// that the server asks for. Throws Refused, HttpError and Stopped.
    nlohmann::json exchange(const HttpRequest& request) const;

    /// Throws Stopped once the user wants an end.
    void goOn() const;

    /// The models to choose from, the best first choice first.
    std::vector<std::string> models() const;

  private:
    HttpReply sendTwice(const HttpRequest& request) const;
    void wait(std::chrono::milliseconds delay) const;
    std::string explanation(const HttpReply& reply) const;

    ProviderAccess access_;
    HttpLimits limits_;
    tapcore::Words words_;
    std::function<bool()> isStopped_;
};

}  // namespace tappora
