#include "core/practice/practice_course.h"

#include <array>
#include <cstddef>

namespace tapcore {
namespace {

struct Traits {
    std::string_view rawValue, order;
};

constexpr std::array<Traits, 2> traits = {{{"digits", "1234567890"}, {"marks", ",.'-?!;:\"()"}}};

const Traits& traitsOf(PracticeCourse course) { return traits[static_cast<std::size_t>(course.value)]; }

}  // namespace

std::optional<PracticeCourse> PracticeCourse::parse(std::string_view raw) {
    for (const PracticeCourse course : {digits, marks})
        if (course.rawValue() == raw) return course;
    return std::nullopt;
}

std::optional<PracticeCourse> PracticeCourse::of(std::string_view character) {
    for (const PracticeCourse course : {digits, marks})
        if (character.size() == 1 && traitsOf(course).order.find(character) != std::string_view::npos)
            return course;
    return std::nullopt;
}

std::string_view PracticeCourse::rawValue() const { return traitsOf(*this).rawValue; }

std::vector<std::string> PracticeCourse::order() const {
    std::vector<std::string> characters;
    for (const char c : traitsOf(*this).order) characters.emplace_back(1, c);
    return characters;
}

std::string PracticeCourse::openedKey() const { return std::string("practice.opened.").append(rawValue()); }

std::string PracticeCourse::openedKey(const std::optional<std::string>& layout) const {
    return layout ? openedKey() + "." + *layout : openedKey();
}

}  // namespace tapcore
