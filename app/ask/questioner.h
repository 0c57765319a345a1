#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/ask/ask_options.h"
#include "app/ask/provider_client.h"
#include "app/ask/question.h"
#include "app/common/assistant/assistant.h"
#include "core/assistant/chat_file.h"

namespace tappora {

struct Environment;
using Turns = std::vector<tapcore::ChatFile::Turn>;

/// Asks one model questions about one data folder. This is the upper of two parts: the command and the
/// conversation call a Questioner, which builds the prompt and the tools, and hands each question to
/// `putQuestion` (question.h). That exchanges requests and replies until there is an answer, through the
/// Questioner's provider client.
class Questioner {
  public:
    /// What is given must outlive it.
    Questioner(const AskOptions& options, const Environment& environment, const ProviderClient& provider);

    const ProviderClient& provider() const { return provider_; }

    /// Prints what would be sent for the question that is the last of these turns, and sends nothing.
    void show(const std::string& model, const Turns& turns) const;

    /// Puts the question that is the last of these turns. Throws Refused, HttpError, Stopped and JsonError.
    Answer ask(const std::string& model, const Turns& turns) const;

  private:
    std::unique_ptr<tapcore::Dialogue> dialogue(const std::string& model, const Turns& turns) const;
    tapcore::Day currentDay() const;

    const AskOptions& options_;
    const Environment& environment_;
    const ProviderClient& provider_;
    tapcore::Store store_;
    AssistantKeyboard keyboard_;
};

}  // namespace tappora
