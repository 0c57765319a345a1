#pragma once

#include <string_view>
#include <vector>

#include "core/assistant/assistant_tools.h"
#include "core/assistant/text_call.h"

namespace tapcore {

/// A tool call that a small model wrote as a program would: list_files(folder='days').
struct CodeCall {
    enum class Kind {
        none,
        broken,  ///< a line begins with a tool's name and "(", and what follows cannot be read
        whole,
    };

    Kind kind = Kind::none;
    TextCall call;  ///< of a whole one
};

/// The first whole call of one of the tools in a text, else whether one is broken. Values are quoted texts,
/// with a name and "=" or in the order of the tool's parameters; others, such as None, are left out. A call
/// with values counts anywhere, one without only on a line of its own: an answer may speak of "summary()".
CodeCall codeCall(std::string_view text, const std::vector<AssistantTools::Spec>& tools);

}  // namespace tapcore
