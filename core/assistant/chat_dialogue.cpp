// A question over a Chat Completions interface: OpenAI's, or that of a local server.

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "core/assistant/dialogue.h"
#include "core/assistant/text_call.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

using nlohmann::json;
using Ending = ModelReply::Ending;

/// The message of the first choice. Throws JsonError for anything else.
JsonValue messageOf(const JsonValue& reply) {
    const JsonValue message = reply.member("choices").element(0).member("message");
    if (message.optionalMember("function_call")) message.fail("a call in a form that is no longer used");
    return message;
}

/// The text of a message: a string, or parts of which some are text.
std::string textOf(const JsonValue& message) {
    const auto content = message.optionalMember("content");
    if (!content) return "";
    if (content->raw().is_string()) return withoutThoughts(content->string());
    std::string text;
    for (std::size_t i = 0; i < content->size(); ++i)
        if (const auto part = content->element(i).optionalMember("text")) text += part->string();
    return withoutThoughts(text);
}

std::string optionalString(const JsonValue& object, std::string_view name) {
    const auto value = object.optionalMember(name);
    return value ? value->string() : "";
}

/// A call, and its arguments as servers take them back: text that holds an object.
struct SentCall {
    ToolCall call;
    std::string arguments;
};

SentCall callOf(const std::string& id, const std::string& name, const json& arguments) {
    const auto object = AssistantWire::argumentsObject(arguments);
    return {{id, name, AssistantWire::arguments(arguments), object.has_value()},
            jsonLine(object.value_or(json::object()))};
}

SentCall callOf(const JsonValue& value) {
    const JsonValue function = value.member("function");
    const auto arguments = function.optionalMember("arguments");
    return callOf(optionalString(value, "id"), function.member("name").string(),
                  arguments ? arguments->raw() : json());
}

class ChatDialogue : public Dialogue {
  public:
    explicit ChatDialogue(DialogueStart start)
        : start_(std::move(start)),
          messages_(AssistantWire::sendable(AssistantWire::history(start_.turns))) {}

    json request() const override {
        json body = AssistantWire::chatBody(start_.model, start_.system, start_.tools, messages_);
        if (isLast_ && body.contains("tools")) body["tool_choice"] = "none";
        if (withoutEffort_) body["reasoning_effort"] = "none";
        return body;
    }

    ModelReply take(const json& document, AssistantBudget& budget) override {
        const JsonValue reply(document);
        const JsonValue message = messageOf(reply);
        if (document.contains("usage")) budget.addChat(document["usage"]);
        const std::string finish = optionalString(reply.member("choices").element(0), "finish_reason");
        ModelReply result{Ending::empty, textOf(message), {}, ""};
        readCalls(message, result.text);

        if (finish == "content_filter") return {Ending::refused, "", {}, "the provider blocked the answer"};
        if (std::string refusal = optionalString(message, "refusal"); !refusal.empty())
            return {Ending::answered, std::move(refusal), {}, ""};
        const bool isCutOff = finish == "length";
        if (!calls_.empty() && !isLast_ && (!isCutOff || canRunAll())) return called(std::move(result));
        if (holdsCall(result.text, start_.tools))
            return {hasCalled_ ? Ending::empty : Ending::noTools, "", {}, ""};
        if (isCutOff) result.ending = Ending::cutOff;
        else if (!result.text.empty()) result.ending = Ending::answered;
        return result;
    }

    void give(const std::vector<AssistantTools::Output>& results) override {
        for (std::size_t i = 0; i < calls_.size(); ++i)
            messages_.push_back(
                {{"role", "tool"}, {"tool_call_id", calls_[i].call.id}, {"content", results.at(i).text}});
    }

    void finish(std::string_view word) override {
        isLast_ = true;
        if (messages_.back()["role"] == "tool") messages_.push_back({{"role", "user"}, {"content", word}});
    }

    /// Some models take tools only when told not to reason.
    bool adapt(const json& refusal) override {
        const bool isEffort = refusal.is_object() && refusal.contains("error") &&
                              refusal["error"].is_object() &&
                              refusal["error"].value("param", json()) == "reasoning_effort";
        return isEffort && !std::exchange(withoutEffort_, true);
    }

  private:
    /// A reply that comes to its calls.
    ModelReply called(ModelReply reply) {
        hasCalled_ = true;
        reply.ending = Ending::calls;
        appendCalls(reply.text);
        for (const SentCall& sent : calls_) reply.calls.push_back(sent.call);
        return reply;
    }

    /// The calls of a message, or the first that its text holds, which is then no text.
    void readCalls(const JsonValue& message, std::string& text) {
        calls_.clear();
        if (const auto given = message.optionalMember("tool_calls"))
            for (std::size_t i = 0; i < given->size(); ++i) calls_.push_back(callOf(given->element(i)));
        const auto written = calls_.empty() && !isLast_ ? textCall(text, start_.tools) : std::nullopt;
        if (written && isDeclared(written->name)) {
            calls_.push_back(callOf("", written->name, written->arguments));
            text.clear();
        }
        for (SentCall& sent : calls_) sent.call.id = uniqueID(sent.call.id);
    }

    bool isDeclared(std::string_view name) const {
        return std::any_of(start_.tools.begin(), start_.tools.end(),
                           [&](const auto& tool) { return tool.name == name; });
    }

    /// Some servers give calls no ids, or the same ones again, and then refuse the answers to them.
    std::string uniqueID(std::string id) {
        for (std::size_t i = ids_.size(); id.empty() || !ids_.insert(id).second; ++i)
            id = "call_" + std::to_string(i);
        return id;
    }

    bool canRunAll() const {
        return !calls_.empty() && std::all_of(calls_.begin(), calls_.end(),
                                              [](const SentCall& sent) { return sent.call.isReadable; });
    }

    void appendCalls(const std::string& text) {
        json calls = json::array();
        for (const auto& [call, arguments] : calls_)
            calls.push_back({{"id", call.id},
                             {"type", "function"},
                             {"function", {{"name", call.name}, {"arguments", arguments}}}});
        messages_.push_back({{"role", "assistant"},
                             {"content", text.empty() ? json() : json(text)},
                             {"tool_calls", std::move(calls)}});
    }

    DialogueStart start_;
    json messages_;
    std::vector<SentCall> calls_;
    std::set<std::string> ids_;
    bool isLast_ = false;
    bool hasCalled_ = false;
    bool withoutEffort_ = false;
};

}  // namespace

std::unique_ptr<Dialogue> Dialogue::chat(DialogueStart start) {
    return std::make_unique<ChatDialogue>(std::move(start));
}

}  // namespace tapcore
