#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace tapcore {

/// The modifier keys held at a press: a set of bits. Bits beyond the five named ones are kept and mean
/// nothing.
struct Modifiers {
    std::uint8_t rawValue = 0;

    static const Modifiers control;
    static const Modifiers option;
    static const Modifiers shift;
    static const Modifiers command;
    static const Modifiers function;

    /// How many sets the five make: what a buffer with a place for each set needs.
    static constexpr std::size_t count = 32;

    constexpr Modifiers() = default;
    constexpr explicit Modifiers(std::uint8_t raw) : rawValue(raw) {}
    constexpr Modifiers(std::initializer_list<Modifiers> members) {
        for (const Modifiers member : members) insert(member);
    }

    /// The set named by words of ctrl, opt, shift, cmd and fn joined with "+", in any order. Nothing when a
    /// word is unknown or the text is empty.
    static std::optional<Modifiers> parse(std::string_view name);

    /// The words of the members joined with "+", in the order ctrl, opt, shift, cmd, fn; "" for the empty
    /// set.
    std::string name() const;

    /// Whether a key pressed with these is a shortcut: shift and fn alone are typing.
    constexpr bool isChord() const { return (rawValue & 11) != 0; }

    constexpr bool isEmpty() const { return rawValue == 0; }
    constexpr bool contains(Modifiers other) const { return (rawValue & other.rawValue) == other.rawValue; }
    constexpr bool isSubset(Modifiers of) const { return of.contains(*this); }
    constexpr void insert(Modifiers other) {
        rawValue = static_cast<std::uint8_t>(rawValue | other.rawValue);
    }
    constexpr void remove(Modifiers other) {
        rawValue = static_cast<std::uint8_t>(rawValue & ~other.rawValue);
    }
    constexpr Modifiers united(Modifiers other) const { return {*this, other}; }
    constexpr Modifiers intersection(Modifiers other) const {
        return Modifiers(static_cast<std::uint8_t>(rawValue & other.rawValue));
    }

    constexpr auto operator<=>(const Modifiers&) const = default;
};

inline constexpr Modifiers Modifiers::control{1};
inline constexpr Modifiers Modifiers::option{2};
inline constexpr Modifiers Modifiers::shift{4};
inline constexpr Modifiers Modifiers::command{8};
inline constexpr Modifiers Modifiers::function{16};

}  // namespace tapcore

template <>
struct std::hash<tapcore::Modifiers> {
    std::size_t operator()(tapcore::Modifiers modifiers) const noexcept { return modifiers.rawValue; }
};
