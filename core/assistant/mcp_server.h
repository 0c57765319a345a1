#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/assistant/mcp_methods.h"

namespace tapcore::mcp {

/// A server of the Model Context Protocol, without its streams: lines come in, lines go out. It serves the
/// assistant's tools, its prompts, and the data files as resources, and only reads. docs/mcp.md says which
/// revisions and methods.
///
/// Lines are taken in by `receive` and answered one after another by `answerNext`, so that a request which is
/// cancelled while it waits is never begun.
class Server {
  public:
    /// Longer lines are refused.
    static constexpr std::size_t longestLine = std::size_t{4} << 20;

    explicit Server(Offer offer);
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server();

    /// Takes in one line, its line end left out.
    void receive(std::string_view line);
    /// Takes notice of a line that was too long to be read.
    void receiveTooLong();

    bool isIdle() const;
    /// Answers what has waited longest: no line or several, without their line ends.
    std::vector<std::string> answerNext();

    /// What is still to be said when no more lines will come and all are answered.
    std::vector<std::string> end();

  private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace tapcore::mcp
