#include "core/counting/modifiers.h"

#include <array>
#include <utility>

#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

constexpr std::array<std::pair<Modifiers, std::string_view>, 5> words = {{
    {Modifiers::control, "ctrl"},
    {Modifiers::option, "opt"},
    {Modifiers::shift, "shift"},
    {Modifiers::command, "cmd"},
    {Modifiers::function, "fn"},
}};

Modifiers memberNamed(std::string_view word) {
    for (const auto& [member, name] : words)
        if (name == word) return member;
    return {};
}

}  // namespace

std::optional<Modifiers> Modifiers::parse(std::string_view name) {
    Modifiers found;
    while (!name.empty()) {
        const std::string_view word = takePiece(name, '+');
        if (word.empty()) continue;
        const Modifiers member = memberNamed(word);
        if (member.isEmpty()) return std::nullopt;
        found.insert(member);
    }
    if (found.isEmpty()) return std::nullopt;
    return found;
}

std::string Modifiers::name() const {
    std::string result;
    for (const auto& [member, word] : words) {
        if (!contains(member)) continue;
        if (!result.empty()) result += '+';
        result += word;
    }
    return result;
}

}  // namespace tapcore
