#include "drawing/accessibility.h"

#include <iterator>

namespace drawing {
namespace {

using Grouping = Accessibility::Grouping;

std::vector<Element> elementsOfChildren(const Group& group) {
    std::vector<Element> elements;
    for (const Node& child : group.children) {
        std::vector<Element> own = elementsOf(child);
        std::move(own.begin(), own.end(), std::back_inserter(elements));
    }
    return elements;
}

void join(std::string& text, const std::string& more) {
    if (!text.empty() && !more.empty()) text += ", ";
    text += more;
}

/// Labels and values of all elements, those within others too, as one.
void joinAll(Element& whole, const std::vector<Element>& parts) {
    for (const Element& part : parts) {
        join(whole.label, part.label);
        join(whole.value, part.value);
        joinAll(whole, part.children);
    }
}

Element combinedElement(const Accessibility& own, const Group& group) {
    Element joined;
    joinAll(joined, elementsOfChildren(group));
    return {own.label.empty() ? joined.label : own.label, own.value.empty() ? joined.value : own.value, {}};
}

std::vector<Element> elementsOfGroup(const Accessibility& own, const Group& group) {
    if (own.grouping == Grouping::single) return {{own.label, own.value, {}}};
    if (own.grouping == Grouping::combined) return {combinedElement(own, group)};
    std::vector<Element> parts = elementsOfChildren(group);
    if (own.label.empty()) return parts;
    return {{own.label, own.value, std::move(parts)}};
}

}  // namespace

std::vector<Element> elementsOf(const Node& node) {
    const Accessibility& own = node.accessibility;
    if (own.grouping == Grouping::hidden) return {};
    if (const auto* group = std::get_if<Group>(&node.content)) return elementsOfGroup(own, *group);
    const auto* text = std::get_if<Text>(&node.content);
    const std::string& label = own.label.empty() && text ? text->text : own.label;
    if (label.empty()) return {};
    return {{label, own.value, {}}};
}

}  // namespace drawing
