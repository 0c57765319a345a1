#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/common/folder/settings.h"
#include "widgets/bundle.h"

namespace tappora {

/// A widget in one of its sizes, as users name it: "hours" or "week:medium".
struct WidgetChoice {
    const tapwidgets::Widget* widget = nullptr;
    tapwidgets::Family family = tapwidgets::Family::small;

    /// With the size: "hours:medium".
    std::string name() const;
    bool operator==(const WidgetChoice&) const = default;
};

/// The widget that a text names, in the smallest size where it names none. UsageError for one that does not
/// exist.
WidgetChoice parseChoice(std::string_view text);

/// The setting that says which widgets to show: choices with blanks between them.
inline constexpr std::string_view widgetsKey = "widgets.shown";

/// Those named on the command line, else in the settings, else every widget; each once.
std::vector<WidgetChoice> chosenWidgets(const std::vector<std::string>& named, const Settings& settings);

}  // namespace tappora
