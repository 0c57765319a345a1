#include "core/practice/practice_course.h"

#include <array>
#include <cstddef>

namespace tapcore {
namespace {

/// What each course teaches, in order.
constexpr std::array<std::string_view, 2> orders = {"1234567890", ",.'-?!;:\"()"};

std::string_view orderOf(PracticeCourse course) { return orders[static_cast<std::size_t>(course.value)]; }

}  // namespace

std::optional<PracticeCourse> PracticeCourse::of(std::string_view character) {
    for (const PracticeCourse course : {digits, marks})
        if (character.size() == 1 && orderOf(course).find(character) != std::string_view::npos) return course;
    return std::nullopt;
}

std::vector<std::string> PracticeCourse::order() const {
    std::vector<std::string> characters;
    for (const char c : orderOf(*this)) characters.emplace_back(1, c);
    return characters;
}

std::string PracticeCourse::openedKey() const { return std::string("practice.opened.").append(rawValue()); }

std::string PracticeCourse::openedKey(const std::optional<std::string>& layout) const {
    return layout ? openedKey() + "." + *layout : openedKey();
}

}  // namespace tapcore
