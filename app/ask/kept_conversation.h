#pragma once

#include <string>

#include "app/ask/question.h"
#include "app/common/folder/data_folder.h"
#include "core/assistant/chat_file.h"

namespace tappora {

struct Environment;

/// The current conversation, which is kept in the data folder.
class KeptConversation {
  public:
    /// What is given must outlive it.
    KeptConversation(const FolderOptions& folder, const Environment& environment)
        : folder_(folder), environment_(environment) {}

    tapcore::ChatFile read() const;
    /// Adds a question and its answer.
    void add(const std::string& question, const Answer& answer) const;
    /// Archives it: the next question begins another one.
    void archive() const;

  private:
    const FolderOptions& folder_;
    const Environment& environment_;
};

}  // namespace tappora
