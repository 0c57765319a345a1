#pragma once

#include "core/practice/letter_model.h"

namespace tappora {

/// A language of three words, "ten", "tent" and "tenet", in which ten letters are taught.
inline tapcore::LetterModel tents() {
    return {.language = "en",
            .order = {"e", "n", "i", "t", "a", "r", "l", "s", "u", "o"},
            .transitions = {{"^^", {{"t", 1}}},
                            {"^t", {{"e", 1}}},
                            {"te", {{"n", 1}}},
                            {"en", {{"$", 2}, {"t", 1}, {"e", 1}}},
                            {"nt", {{"$", 1}}},
                            {"ne", {{"t", 1}}},
                            {"et", {{"$", 1}}}}};
}

}  // namespace tappora
