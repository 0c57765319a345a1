#include "app/desktop/widget_choice.h"

#include <algorithm>
#include <sstream>

#include "app/common/program.h"

namespace tappora {
namespace {

using tapwidgets::bundle;
using tapwidgets::Family;
using tapwidgets::Widget;

[[noreturn]] void fail(std::string_view text, const std::string& why) {
    throw UsageError("WIDGET: " + std::string(text) + ": " + why);
}

std::string listed(const std::vector<std::string_view>& names) {
    std::string text;
    for (const std::string_view name : names) text.append(text.empty() ? "" : ", ").append(name);
    return text;
}

const Widget& widgetNamed(std::string_view name, std::string_view text) {
    std::vector<std::string_view> names;
    for (const Widget& widget : bundle) {
        if (widget.name == name) return widget;
        names.push_back(widget.name);
    }
    fail(text, "no such widget; there are " + listed(names));
}

Family familyNamed(std::string_view name, const Widget& widget, std::string_view text) {
    std::vector<std::string_view> names;
    for (const Family family : widget.families) {
        names.push_back(tapwidgets::families.of(family));
        if (names.back() == name) return family;
    }
    fail(text, "it has no such size; use " + listed(names));
}

std::vector<std::string> words(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> result;
    for (std::string word; stream >> word;) result.push_back(word);
    return result;
}

}  // namespace

std::string WidgetChoice::name() const {
    return std::string(widget->name).append(":").append(tapwidgets::families.of(family));
}

WidgetChoice parseChoice(std::string_view text) {
    const auto colon = text.find(':');
    const Widget& widget = widgetNamed(text.substr(0, colon), text);
    if (colon == text.npos) return {&widget, widget.families.front()};
    return {&widget, familyNamed(text.substr(colon + 1), widget, text)};
}

std::vector<WidgetChoice> chosenWidgets(const std::vector<std::string>& named, const Settings& settings) {
    std::vector<WidgetChoice> choices;
    const auto add = [&](const WidgetChoice& choice) {
        if (std::find(choices.begin(), choices.end(), choice) == choices.end()) choices.push_back(choice);
    };
    for (const std::string& name : named.empty() ? words(settings.text(widgetsKey).value_or("")) : named)
        add(parseChoice(name));
    if (choices.empty())
        for (const Widget& widget : bundle) add({&widget, widget.families.front()});
    return choices;
}

}  // namespace tappora
