#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace tapcore {

/// `text` with U+2400, the sign for it, in place of each NUL: a message that holds one ends there for whoever
/// asks an exception what it says.
std::string withVisibleNuls(std::string_view text);

/// An error whose message may quote any text: `what()` is the whole message.
class TextError : public std::runtime_error {
  public:
    explicit TextError(std::string_view why) : std::runtime_error(withVisibleNuls(why)) {}
};

}  // namespace tapcore
