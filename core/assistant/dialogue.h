#pragma once

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "core/assistant/assistant_budget.h"
#include "core/assistant/assistant_tools.h"
#include "core/assistant/assistant_wire.h"

namespace tapcore {

/// What a model's reply means for the question.
struct ModelReply {
    enum class Ending {
        answered,  ///< `text` is the answer
        calls,     ///< `calls` are to be run, and their results given
        paused,    ///< the provider wants the next request as it is
        cutOff,    ///< the answer reached its length limit; `text` is what there is of it
        refused,   ///< the model declined; `why` may say more
        empty,     ///< no answer came
        noTools,   ///< the model wrote a tool call as text, and never made one: it cannot use tools
    };

    Ending ending = Ending::empty;
    std::string text;
    std::vector<ToolCall> calls;
    std::string why;

    bool operator==(const ModelReply&) const = default;
};

/// What a question is put with.
struct DialogueStart {
    std::string model;
    std::string system;                       ///< the prompt
    std::vector<AssistantTools::Spec> tools;  ///< may be empty
    std::vector<ChatFile::Turn> turns;        ///< the conversation so far, and the question last
};

/// The requests and replies of one question, in one provider's form. Only ever added to, since
/// providers check that what was said before is unchanged.
class Dialogue {
  public:
    virtual ~Dialogue() = default;

    /// The next request's body.
    virtual nlohmann::json request() const = 0;

    /// Takes the reply to it, and adds its usage to the budget. Throws JsonError for a reply of unknown
    /// shape.
    virtual ModelReply take(const nlohmann::json& reply, AssistantBudget& budget) = 0;

    /// Gives the results of all calls of the last reply, in their order.
    virtual void give(const std::vector<AssistantTools::Output>& results) = 0;

    /// Makes the next request the last one: `word` is said after the results just given, when there were any,
    /// and tools, still declared, cannot be called any more.
    virtual void finish(std::string_view word) = 0;

    /// Whether the next request is worth sending once more after the provider refused the last with this
    /// body, since it has been changed to what that provider takes.
    virtual bool adapt(const nlohmann::json& refusal) = 0;

    static std::unique_ptr<Dialogue> claude(DialogueStart start);
    /// OpenAI's, and those of local servers.
    static std::unique_ptr<Dialogue> chat(DialogueStart start);
};

}  // namespace tapcore
