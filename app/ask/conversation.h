#pragma once

#include "app/ask/asking.h"
#include "core/words/words.h"

namespace tappora {

/// Reads questions from standard input, one a line, and asks them, until its end or "/quit". A failed
/// question does not end it; Ctrl-C ends a question that is being answered, and otherwise the program.
void converse(const Asking& with, const tapcore::Words& words);

}  // namespace tappora
