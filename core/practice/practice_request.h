#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tapcore {

/// A wish for a lesson, as an assistant writes it on a line of its own: "Practise: e, t, n".
namespace PracticeRequest {

/// The letters that the last such line of a text asks for, each once, in its order. Empty without such a
/// line, or when it names no letter: no earlier line is tried.
std::vector<std::string> letters(std::string_view in);

}  // namespace PracticeRequest

}  // namespace tapcore
