#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/ask/provider_access.h"
#include "app/ask/question.h"
#include "app/common/assistant/assistant.h"
#include "core/assistant/chat_file.h"

namespace tappora {

/// The choices of `tappora ask`.
struct AskOptions {
    std::optional<std::string> question;
    std::optional<std::string> provider;
    std::optional<std::string> model;
    std::optional<std::string> url;
    std::optional<std::string> language;
    std::optional<double> timeout;  ///< seconds
    bool shows = false;
    bool showsTools = false;
    bool listsModels = false;
    bool goesOn = false;
    bool startsAnew = false;
    FolderOptions folder;
};

/// The providers that the options may mean, the one to ask first: the one named, else the first that a key is
/// there for, else the servers on this machine, of which there may be several. Without `looksAround` no
/// server is looked for. UsageError and Failure say what is missing.
std::vector<ProviderAccess> chooseProviders(const AskOptions& options, const Environment& environment,
                                            bool looksAround, const std::function<bool()>& isStopped);

/// Questions about one data folder to one model.
class AssistantSession {
  public:
    AssistantSession(const AskOptions& options, const Environment& environment);

    /// Prints what would be sent for a question after these turns, and sends nothing.
    void show(const ProviderAccess& access, const std::string& model,
              const std::vector<tapcore::ChatFile::Turn>& turns) const;

    /// Puts the question that is the last of these turns. Throws Refused, HttpError, Stopped and JsonError.
    Answer ask(const ProviderLine& line, const std::string& model,
               const std::vector<tapcore::ChatFile::Turn>& turns) const;

    /// Adds a question and its answer to the conversation under way in the data folder.
    void keep(const std::string& question, const Answer& answer) const;

    /// The conversation under way; and putting it among the earlier ones.
    tapcore::ChatFile conversation() const;
    void shelve() const;

  private:
    std::unique_ptr<tapcore::Dialogue> dialogue(Provider provider, const std::string& model,
                                                const std::vector<tapcore::ChatFile::Turn>& turns) const;

    tapcore::Day currentDay() const;

    const AskOptions& options_;
    const Environment& environment_;
    tapcore::Store store_;
    AssistantKeyboard keyboard_;
};

}  // namespace tappora
