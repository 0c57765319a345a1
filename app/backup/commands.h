#pragma once

namespace tappora {

class CommandLine;
struct Environment;

void backupCommand(CommandLine& line, const Environment& environment);
void restoreCommand(CommandLine& line, const Environment& environment);

}  // namespace tappora
