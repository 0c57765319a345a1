#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tappora {

/// A program of this installation: where this program is, or in ../libexec/tappora from there. Nothing when
/// it is in neither.
std::optional<std::filesystem::path> companionFile(std::string_view program);

/// Becomes the program that runs a command, with these arguments. It is looked for where this program is,
/// and in ../libexec/tappora from there. Throws Failure naming the command when it is not there or cannot be
/// started.
[[noreturn]] void becomeCompanion(std::string_view command, std::string_view program,
                                  const std::vector<std::string>& arguments);

/// Becomes tappora-paint for a command that writes a picture.
[[noreturn]] void becomePainter(const std::string& command, std::vector<std::string> arguments);

}  // namespace tappora
