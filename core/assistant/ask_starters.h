#pragma once

#include <array>
#include <string_view>

namespace tapcore {

/// The questions that are offered to begin with.
namespace AskStarters {

struct Featured {
    std::string_view id;
    std::string_view symbol;  ///< the system's name of the button's picture
    std::string_view label;   ///< the button's title, a key of the text tables
    std::string_view prompt;  ///< the question sent

    bool operator==(const Featured&) const = default;
};

inline constexpr std::array<Featured, 3> featured = {{
    {"today", "sun.max", "ai.featured.today",
     R"(How is my typing today? Read today's day file and my usual day from the last two weeks. In a few short lines: how much I have typed so far and in which hours, how that compares with my usual, and one thing worth noticing.)"},
    {"hands", "hand.raised", "ai.featured.hands",
     R"(Help me type easier on my hands. From the last 30 days, look at which keys and fingers carry the most, where they sit on my board, my longest unbroken hours and my shortcuts. Suggest up to three concrete changes — a remap, a shortcut, a rhythm of breaks — and say which numbers each one comes from. No medical claims.)"},
    {"practice", "graduationcap", "ai.featured.practice",
     R"(Plan my practice for this week: five minutes a day. From my practice files and my typing, pick the letters or keys that are slowest or most missed and give each day a focus. End with one line that starts "Practise:" and lists the letters.)"},
}};

/// Questions that are their own title: keys of the text tables.
inline constexpr std::array<std::string_view, 4> plain = {"ai.start.week", "ai.start.improve",
                                                          "ai.start.fingers", "ai.start.hours"};

}  // namespace AskStarters

}  // namespace tapcore
