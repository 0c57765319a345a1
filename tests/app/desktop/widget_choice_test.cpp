#include "app/desktop/widget_choice.h"

#include <gtest/gtest.h>

#include "app/common/folder/settings.h"
#include "tests/support/environment.h"

namespace tappora {
namespace {

std::string namesOf(const std::vector<std::string>& named, const std::string& remembered) {
    Settings settings = Settings::read(environmentWith({{"XDG_CONFIG_HOME", "/nowhere"}}));
    if (!remembered.empty()) settings.setText(widgetsKey, remembered);
    std::string names;
    for (const WidgetChoice& choice : chosenWidgets(named, settings)) names += choice.name() + " ";
    return names;
}

TEST(WidgetChoice, IsNamedElseRememberedElseAll) {
    EXPECT_EQ(namesOf({"week:medium", "hours", "hours:medium"}, "today"), "week:medium hours:medium ");
    EXPECT_EQ(namesOf({}, " heatmap:large  today "), "heatmap:large today:small ");
    EXPECT_EQ(namesOf({}, ""), "today:small hours:medium heatmap:medium week:small ");
}

}  // namespace
}  // namespace tappora
