#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/text_error.h"

namespace tappora {

/// The version of all programs, as --version prints it.
std::string version();

/// What went wrong, as the user is told: "WHAT: WHY". It ends the program with status 1.
class Failure : public std::runtime_error {
  public:
    Failure(std::string_view what, std::string_view why)
        : std::runtime_error(tapcore::withVisibleNuls(std::string(what).append(": ").append(why))) {}
    /// "PATH: WHY".
    explicit Failure(const std::filesystem::filesystem_error& error)
        : Failure(error.path1().string(), error.code().message()) {}
};

/// A command line that makes no sense, as the user is told. It ends the program with status 2.
class UsageError : public std::runtime_error {
  public:
    explicit UsageError(std::string_view why) : std::runtime_error(tapcore::withVisibleNuls(why)) {}
};

/// Nothing is being counted, which was said. Ends the program with status 3.
struct NotCounting {};

/// "A, B or C"; there must be one.
std::string alternatives(const std::vector<std::string>& names);

/// A text for either of them: "no such KIND: VALUE; use A, B or C".
std::string noSuch(std::string_view kind, std::string_view value, const std::vector<std::string>& known);

/// Prints a text, unchanged, on standard output.
void print(std::string_view text);

/// "tappora: TEXT", without what would steer the terminal.
std::string complaint(std::string_view text);

/// Prints that line on standard error.
void complain(std::string_view text);

}  // namespace tappora
