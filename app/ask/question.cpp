#include "app/ask/question.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::AssistantBudget;
using tapcore::Dialogue;
using tapcore::ModelReply;
using Ending = ModelReply::Ending;
using Output = tapcore::AssistantTools::Output;
using Send = std::function<json(const json&)>;

/// Sends the next request; once more in another form when the provider takes only that.
json exchange(Dialogue& dialogue, const Send& send) {
    try {
        return send(dialogue.request());
    } catch (const Refused& refused) {
        const auto body = tapcore::JsonValue::tryParse(refused.body);
        if (!body || !dialogue.adapt(*body)) throw;
    }
    return send(dialogue.request());
}

std::string problemOf(const ModelReply& reply) {
    switch (reply.ending) {
        case Ending::answered:
            return reply.why;
        case Ending::cutOff:
            return "the answer was cut off at its length limit";
        case Ending::refused:
            return "the model declined to answer" + (reply.why.empty() ? "" : ": " + reply.why);
        case Ending::noTools:
            return "this model writes its tool calls as text, so it cannot use the tools; choose another "
                   "with --model";
        case Ending::paused:
            return "the model paused too often to finish its answer";
        case Ending::calls:
        case Ending::empty:
            break;
    }
    return "no answer came; a narrower question may help";
}

void addOnce(std::vector<std::string>& list, const std::vector<std::string>& more) {
    list.insert(list.end(), more.begin(), more.end());
    list = tapcore::AssistantWire::unique(list);
}

}  // namespace

Answer putQuestion(Dialogue& dialogue, const tapcore::AssistantTools& tools, bool isPaid, const Send& send,
                   const CallObserver& onCall) {
    Answer answer;
    answer.budget.paid = isPaid;
    std::string said;  // since the last calls: an answer with pauses in it comes in parts
    for (int step = 1;; ++step) {
        const bool isLast = step == tapcore::AssistantWire::maxSteps || answer.budget.spent();
        if (isLast) dialogue.finish(AssistantBudget::finalWord);
        const ModelReply reply = dialogue.take(exchange(dialogue, send), answer.budget);
        said += (said.empty() || reply.text.empty() ? "" : "\n\n") + reply.text;
        if (!isLast && reply.ending == Ending::paused) continue;
        if (isLast || reply.ending != Ending::calls) {
            answer.text = std::move(said);
            answer.problem = problemOf(reply);
            return answer;
        }
        std::vector<Output> results;
        for (const tapcore::ToolCall& call : reply.calls) {
            results.push_back(tools.run(call));
            addOnce(answer.read, results.back().read);
            onCall(call, results.back());
        }
        dialogue.give(results);
        said.clear();
    }
}

}  // namespace tappora
