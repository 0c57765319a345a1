#include "app/ask/words.h"

#include <utility>

namespace tappora {
namespace {

constexpr std::pair<std::string_view, std::string_view> texts[] = {
    {"ai.error.key", "The provider did not accept the key. Check it, or whether it may use this model."},
    {"ai.error.rate", "Too many requests for now, or the account's limit is reached. Try again later."},
    {"ai.error.busy", "The provider is busy or has a fault. Try again later."},
    {"ai.featured.today", "How is today?"},
    {"ai.featured.hands", "Easier on my hands"},
    {"ai.featured.practice", "Plan my practice"},
    {"ai.start.week", "How was my week?"},
    {"ai.start.improve", "What could I improve?"},
    {"ai.start.fingers", "Which fingers work hardest?"},
    {"ai.start.hours", "What are my busiest hours?"},
};

}  // namespace

std::string_view words(std::string_view key) {
    for (const auto& [name, text] : texts)
        if (name == key) return text;
    return key;
}

}  // namespace tappora
