#pragma once

#include <string>
#include <vector>

namespace tappora {

struct Environment;

/// Runs what `tappora ARGUMENTS` asks for, and returns its exit status. Only the chosen command's options are
/// built.
int dispatch(std::vector<std::string> arguments, const Environment& environment);

}  // namespace tappora
