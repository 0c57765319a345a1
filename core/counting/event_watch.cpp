#include "core/counting/event_watch.h"

#include <algorithm>

namespace tapcore::EventWatch {
namespace {

constexpr std::string_view dash = " — ";

struct VerdictText {
    std::string operator()(const PostedBy& by) const { return "posted by " + by.name + " — not counted"; }
    std::string operator()(Counted) const { return "counted"; }
    std::string operator()(Repeated) const { return "held, a repeat — not counted"; }
    std::string operator()(SecureInput) const { return "password field — not counted"; }
    std::string operator()(MouseOff) const { return "mouse counting is off — not counted"; }
};

}  // namespace

std::string line(Kind kind, const Verdict& verdict) {
    std::string text(kinds.of(kind));
    return text.append(dash).append(std::visit(VerdictText{}, verdict));
}

bool isWatchLine(std::string_view text) {
    return std::any_of(kinds.words.begin(), kinds.words.end(), [&](std::string_view word) {
        return text.starts_with(word) && text.substr(word.size()).starts_with(dash);
    });
}

}  // namespace tapcore::EventWatch
