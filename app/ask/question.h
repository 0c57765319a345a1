#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/ask/provider_client.h"
#include "core/assistant/dialogue.h"

namespace tappora {

/// What came of a question.
struct Answer {
    std::string text;               ///< "" when there is none
    std::vector<std::string> read;  ///< the data files looked at, each once
    std::string problem;            ///< why it is missing or not whole; "" when nothing is wrong
    tapcore::AssistantBudget budget;
};

/// Told of each call that was run; what it throws ends the question.
using CallObserver = std::function<void(const tapcore::ToolCall&, const tapcore::AssistantTools::Output&)>;

/// Puts a question, for Questioner (questioner.h), which knows the folder and the provider: runs the tools
/// the model asks for and gives it their results, until it answers, in at most `AssistantWire::maxSteps`
/// requests and within the budget; the last of them must be answered. `send` gives a request's reply, and
/// throws Refused, HttpError or Stopped, which end the question.
Answer putQuestion(tapcore::Dialogue& dialogue, const tapcore::AssistantTools& tools, bool isPaid,
                   const std::function<nlohmann::json(const nlohmann::json& body)>& send,
                   const CallObserver& onCall);

}  // namespace tappora
