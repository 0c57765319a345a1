#include "app/desktop/widget_choice.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>

#include "app/common/program.h"

namespace tappora {
namespace {

using tapwidgets::bundle;
using tapwidgets::Family;
using tapwidgets::Widget;

const Widget& widgetNamed(std::string_view name) {
    std::vector<std::string> names;
    for (const Widget& widget : bundle) {
        if (widget.name == name) return widget;
        names.emplace_back(widget.name);
    }
    throw UsageError("WIDGET: " + noSuch("widget", name, names));
}

Family familyNamed(std::string_view name, const Widget& widget) {
    std::vector<std::string> names;
    for (const Family family : widget.families) {
        names.emplace_back(tapwidgets::families.of(family));
        if (names.back() == name) return family;
    }
    throw UsageError(fmt::format("WIDGET: {}: {}", widget.name, noSuch("size", name, names)));
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
    const Widget& widget = widgetNamed(text.substr(0, colon));
    if (colon == text.npos) return {&widget, widget.families.front()};
    return {&widget, familyNamed(text.substr(colon + 1), widget)};
}

namespace {

/// Those of the settings; none when one of them does not exist.
std::vector<WidgetChoice> choicesSet(const Settings& settings) try {
    std::vector<WidgetChoice> choices;
    for (const std::string& name : words(settings.text(widgetsKey).value_or("")))
        choices.push_back(parseChoice(name));
    return choices;
} catch (const UsageError& error) {
    settings.warnOf(widgetsKey, error.what());
    return {};
}

}  // namespace

std::vector<WidgetChoice> chosenWidgets(const std::vector<std::string>& named, const Settings& settings) {
    std::vector<WidgetChoice> choices;
    const auto add = [&](const WidgetChoice& choice) {
        if (std::find(choices.begin(), choices.end(), choice) == choices.end()) choices.push_back(choice);
    };
    for (const std::string& name : named) add(parseChoice(name));
    if (named.empty())
        for (const WidgetChoice& choice : choicesSet(settings)) add(choice);
    if (choices.empty())
        for (const Widget& widget : bundle) add({&widget, widget.families.front()});
    return choices;
}

}  // namespace tappora
