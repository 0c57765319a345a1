#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/ask/ask_options.h"
#include "app/ask/kept_conversation.h"
#include "app/ask/provider_client.h"
#include "app/ask/questioner.h"

namespace tappora {

/// By whom questions are put and where they are kept, and with what choices.
struct Asking {
    const Questioner& questioner;
    const KeptConversation& kept;
    const std::string& model;
    const AskOptions& options;
    const Environment& environment;
};

/// Says on standard error which model is asked, and where.
void announce(const ProviderAccess& access, const std::string& model);

/// A conversation with one more question at its end.
Turns withQuestion(Turns turns, const std::string& question);

/// Asks one question, the next after `turns`: prints the answer, adds it to the conversation when `isKept`,
/// says what it cost, and offers the lesson that it ends with. Throws Failure when no whole answer came.
void askQuestion(const Asking& with, Turns turns, const std::string& question, bool isKept);

/// What ends a question but not a conversation, as text; nothing when `exchange` ended well. Passes other
/// exceptions on.
std::optional<std::string> problemIn(const std::function<void()>& exchange);

}  // namespace tappora
