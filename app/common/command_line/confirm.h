#pragma once

#include <string_view>

namespace tappora {

/// Asks a person "QUESTION [y/N]" on the terminal; the end of input means no.
bool agrees(std::string_view question);

/// Asks on the terminal before something is destroyed: says `what` will be gone, and takes "y" or "yes" for a
/// yes. With `yes` it does not ask. Failure when the answer is another, and when there is nobody to ask.
void confirm(std::string_view what, bool yes);

}  // namespace tappora
