#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tappora {

/// How a program ended that this one started.
struct ProgramEnd {
    int status = 0;      ///< its exit status; 127 when it is not found, 128 and the signal that ended it
    std::string output;  ///< what it printed, on both outputs, when that was asked for

    bool isGood() const { return status == 0; }
};

/// Runs a program, found on PATH, on this one's terminal, and waits for its end. Failure when it cannot be
/// started for another reason than that it is not found.
ProgramEnd runProgram(const std::vector<std::string>& commandLine);

/// Runs a program that has nothing to read, and gives what it prints as `output`.
ProgramEnd outputOf(const std::vector<std::string>& commandLine);

/// A text as one word for a shell.
std::string shellWord(std::string_view text);

}  // namespace tappora
