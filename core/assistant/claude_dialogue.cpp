// A question over the Messages interface.

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "core/assistant/claude_reply.h"
#include "core/assistant/dialogue.h"
#include "core/assistant/text_call.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

using nlohmann::json;
using Ending = ModelReply::Ending;

ToolCall callOf(const json& block) {
    const JsonValue value(block);
    const auto input = value.optionalMember("input");
    ToolCall call{value.member("id").string(), value.member("name").string(), {}, true};
    if (!input) return call;
    call.isReadable = input->raw().is_object();
    if (call.isReadable) call.arguments = AssistantWire::arguments(input->raw());
    return call;
}

/// What the provider says of a refusal, when it does.
std::string explanation(const json& reply) {
    const auto details = JsonValue(reply).optionalMember("stop_details");
    const auto text = details ? details->optionalMember("explanation") : std::nullopt;
    return text ? text->string() : "";
}

/// Whether a reply with this stop reason, "" for none, is whole and means what its content says.
bool isWhole(std::string_view stop) {
    constexpr std::array<std::string_view, 5> whole = {"", "end_turn", "stop_sequence", "tool_use",
                                                       "pause_turn"};
    return std::find(whole.begin(), whole.end(), stop) != whole.end();
}

/// What is to be said of a reply that ends for a reason unknown here.
std::string remark(const std::string& stop) {
    return isWhole(stop) ? "" : "the reply ended for a reason unknown here: " + stop;
}

class ClaudeDialogue : public Dialogue {
  public:
    explicit ClaudeDialogue(DialogueStart start)
        : start_(std::move(start)),
          messages_(AssistantWire::sendable(AssistantWire::history(start_.turns))) {}

    json request() const override {
        json body = AssistantWire::claudeBody(start_.model, start_.system, start_.tools, messages_,
                                              AssistantWire::takesEffort(start_.model),
                                              AssistantWire::usesFallbacks(start_.model));
        if (isLast_) body["tool_choice"] = {{"type", "none"}};
        return body;
    }

    ModelReply take(const json& document, AssistantBudget& budget) override {
        const auto reply = AssistantWire::claudeReply(document);
        if (document.contains("usage")) budget.addClaude(document["usage"]);
        ModelReply result{Ending::empty, reply.text(), {}, ""};
        const std::string stop = reply.stop.value_or("");
        calls_.clear();
        if (isWhole(stop) && !isLast_)
            for (const json& use : reply.toolUses()) calls_.push_back(callOf(use));
        const bool isCutOff = stop == "max_tokens" || stop == "model_context_window_exceeded";

        if (stop == "refusal") return {Ending::refused, "", {}, explanation(document)};
        if (calls_.empty() && holdsCall(result.text, start_.tools))
            return {hasCalled_ ? Ending::empty : Ending::noTools, "", {}, ""};
        if (isCutOff) result.ending = Ending::cutOff;
        else if (!calls_.empty()) result.ending = Ending::calls;
        else if (stop == "pause_turn" && !reply.content.empty()) result.ending = Ending::paused;
        else if (!result.text.empty()) result = {Ending::answered, result.text, {}, remark(stop)};
        if (result.ending == Ending::calls || result.ending == Ending::paused)
            messages_.push_back(AssistantWire::claudeTurn(reply));
        hasCalled_ |= !calls_.empty();
        result.calls = calls_;
        return result;
    }

    void give(const std::vector<AssistantTools::Output>& results) override {
        json content = json::array();
        for (std::size_t i = 0; i < calls_.size(); ++i)
            content.push_back({{"type", "tool_result"},
                               {"tool_use_id", calls_[i].id},
                               {"content", results.at(i).text},
                               {"is_error", results.at(i).isError}});
        messages_.push_back({{"role", "user"}, {"content", std::move(content)}});
    }

    void finish(std::string_view word) override {
        isLast_ = true;
        // After a pause the provider takes no words between.
        if (messages_.back()["role"] == "user" && messages_.back()["content"].is_array())
            messages_.back()["content"].push_back({{"type", "text"}, {"text", word}});
    }

    bool adapt(const json&) override { return false; }

  private:
    DialogueStart start_;
    json messages_;
    std::vector<ToolCall> calls_;
    bool isLast_ = false;
    bool hasCalled_ = false;
};

}  // namespace

std::unique_ptr<Dialogue> Dialogue::claude(DialogueStart start) {
    return std::make_unique<ClaudeDialogue>(std::move(start));
}

}  // namespace tapcore
