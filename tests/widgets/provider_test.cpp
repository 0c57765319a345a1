#include "widgets/provider.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/temporary_folder.h"
#include "tests/widgets/sample.h"

namespace tapwidgets {
namespace {

using namespace std::chrono_literals;
using tapcore::WidgetSnapshot;

TEST(Provider, GivesTodaysSnapshotAndNoOther) {
    const tapcore::TemporaryFolder folder;
    const WidgetSnapshot::SharedFolders places{{}, folder.path()};
    const Provider provider(
        Provider::groupID({{"PellotGroupID", 5}}), places, [] { return tenOClock; },
        tapcore::Calendar("UTC"));
    const std::string whole = sample().data();
    std::string yesterday = whole;
    yesterday.replace(yesterday.find("2026-09-20"), 10, "2026-09-19");
    EXPECT_EQ(provider.read(), std::nullopt);
    for (const std::string& text :
         {yesterday, whole.substr(0, 90), std::string(), std::string(17 << 20, ' ') + whole}) {
        folder.put("Tappora/widget.json", text);
        EXPECT_EQ(provider.read(), std::nullopt) << text.substr(0, 100);
    }
    folder.put("Tappora/widget.json", "{\"later\":[1]," + whole.substr(1));
    EXPECT_EQ(provider.getTimeline(), (Timeline{{{tenOClock, sample()}}, {tenOClock + 15min}}));
    EXPECT_EQ(provider.placeholder(), (Entry{tenOClock, std::nullopt}));
    std::filesystem::remove(folder / "Tappora/widget.json");
    std::filesystem::create_directory(folder / "Tappora/widget.json");
    EXPECT_EQ(provider.getSnapshot(), (Entry{tenOClock, std::nullopt}));
}

TEST(Provider, KnowsTheDayByTheZonesMidnight) {
    const tapcore::TemporaryFolder folder;
    folder.put("Tappora/widget.json", sample().data());
    const auto isShown = [&](tapcore::Instant moment) {
        const WidgetSnapshot::SharedFolders places{{}, folder.path()};
        const tapcore::Calendar berlin("Europe/Berlin");
        return Provider(
                   {}, places, [=] { return moment; }, berlin)
            .read()
            .has_value();
    };
    EXPECT_FALSE(isShown(tenOClock - 12h - 1s));
    EXPECT_TRUE(isShown(tenOClock - 12h));
    EXPECT_TRUE(isShown(tenOClock + 12h - 1s));
    EXPECT_FALSE(isShown(tenOClock + 12h));
}

TEST(Provider, TakesTheGroupFromTheInformationWhenItIsAText) {
    EXPECT_EQ(Provider::groupID({{"PellotGroupID", "ours"}}), "ours");
    EXPECT_EQ(Provider::groupID({{"PellotGroupID", true}}), std::nullopt);
    EXPECT_EQ(Provider::groupID(nlohmann::json::array()), std::nullopt);
}

}  // namespace
}  // namespace tapwidgets
