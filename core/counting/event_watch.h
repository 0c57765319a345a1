#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "core/foundation/raw_values.h"

namespace tapcore {

/// Where an event came from.
namespace EventOrigin {

/// True when a process posted it: its id is known, and keyboards have none.
constexpr bool isInjected(std::int64_t sourcePID) { return sourcePID != 0; }

}  // namespace EventOrigin

/// The words of the event watch, which shows line by line what was counted and why something was not.
namespace EventWatch {

enum class Kind { key, modifier, click, rightClick, otherClick };

inline constexpr RawValues<Kind, 5> kinds{{"key", "modifier", "click", "right click", "middle click"}};

struct Counted {};
struct Repeated {};
struct SecureInput {};
struct MouseOff {};
struct PostedBy {
    std::string name;
};
using Verdict = std::variant<PostedBy, Counted, Repeated, SecureInput, MouseOff>;

/// One line, without a line end: "key — counted".
std::string line(Kind kind, const Verdict& verdict);

/// True for a text that starts with a kind's word and " — ".
bool isWatchLine(std::string_view text);

}  // namespace EventWatch

}  // namespace tapcore
