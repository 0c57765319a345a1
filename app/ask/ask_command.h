#pragma once

namespace tappora {

class CommandLine;
struct Environment;

/// `tappora ask`: one question, or a conversation.
void askCommand(CommandLine& line, const Environment& environment);

}  // namespace tappora
