#include "core/reports/changes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "core/demo/made_up_typing.h"
#include "core/keyboard/catalog.h"
#include "core/reports/usual.h"

namespace tapcore {
namespace {

using Kind = Finding::Kind;

TEST(Usual, IsTheMedianAndTheMiddleHalf) {
    EXPECT_EQ(usualOf({2, 1}), std::nullopt);
    EXPECT_EQ(usualOf({9, 1, 2}), (Usual{2, 1.5, 5.5, 3}));
    EXPECT_EQ(usualOf({4, 1, 3, 2}), (Usual{2.5, 1.75, 3.25, 4}));
    // The median is 3, deviations from it 2, 1, 0, 1 and 97, of which the median is 1.
    EXPECT_DOUBLE_EQ(farness(3 + 2 * 1.4826, {1, 2, 3, 4, 100}, 0.5), 2);
    EXPECT_DOUBLE_EQ(farness(1, {3, 3, 3}, 0.5), -4) << "no spread: what chance gives";
}

const std::filesystem::path resources = RESOURCES;

/// Reports of made-up people: what is said of the week of a Monday, beside the eight before.
class MadeUpWeeks {
  public:
    using Plant = std::function<void(DayFile&)>;

    std::vector<Finding> findings(std::uint64_t person, const Plant& plant = {}) const {
        const Day monday(2026, 5, 4);
        const MadeUpTyping typing(*model_, legends_, person, monday);
        const Stretch week{monday, daysLater(monday, 6)};
        TypingDays days;
        for (Day day = daysLater(monday, -56); day <= week.last; day = daysLater(day, 1)) {
            DayFile file = typing.day(day);
            if (plant && day >= monday) plant(file);
            if (!file.tally.isEmpty()) days.emplace(day, std::move(file));
        }
        std::vector<CountedStretch> earlier;
        for (std::int64_t weeks = 1; weeks <= 8; ++weeks) {
            const Stretch stretch = week.earlier(7 * weeks);
            earlier.push_back({stretch, figuresOf(days, stretch)});
        }
        return changes({week, figuresOf(days, week)}, earlier, *catalog_.board("full-size-ansi"));
    }

  private:
    std::shared_ptr<const LetterModel> model_ = LetterModel::load("en", resources / "Practice");
    Catalog catalog_ = Catalog::bundled(resources);
    Legends legends_ = catalog_.legends("qwerty");
};

TEST(Changes, AreRarelyFoundWhereThereAreNone) {
    const MadeUpWeeks weeks;
    constexpr int people = 60;  // docs/reports.md gives the share among thousands
    int withFinding = 0;
    for (int person = 0; person < people; ++person) withFinding += weeks.findings(person).empty() ? 0 : 1;
    EXPECT_LE(withFinding, people / 20);
}

void addInEachHour(DayFile& file, const std::function<void(std::int64_t hour, std::int64_t presses)>& add) {
    const auto byHour = file.tally.byHour();
    for (std::size_t hour = 0; hour < Tally::hours; ++hour)
        add(static_cast<std::int64_t>(hour), byHour[hour]);
}

TEST(Changes, AreFoundWhereTheyWerePlanted) {
    struct Case {
        const char* what;
        Kind kind;
        MadeUpWeeks::Plant plant;
    };
    const auto later = [](DayFile& file) {
        std::rotate(file.tally.keys.begin(), file.tally.keys.end() - 4, file.tally.keys.end());
    };
    const Case cases[] = {
        {"three times as much", Kind::volume,
         [](DayFile& file) {
             const DayFile once = file;
             file.merge(once);
             file.merge(once);
         }},
        {"K as often as E", Kind::key,
         [](DayFile& file) {
             addInEachHour(file,
                           [&](auto hour, auto presses) { file.tally.add(KeyCode{40}, hour, presses / 12); });
         }},
        {"a new shortcut", Kind::shortcutAppeared,
         [](DayFile& file) {
             addInEachHour(file, [&](auto hour, auto presses) {
                 file.tally.add(Tally::Chord{Modifiers::command, 40}, hour, presses / 200);
             });
         }},
        {"twice the corrections", Kind::correction,
         [](DayFile& file) {
             addInEachHour(file,
                           [&](auto hour, auto presses) { file.tally.add(KeyCode{51}, hour, presses / 16); });
         }},
        {"a shortcut used no more", Kind::shortcutDropped,
         [](DayFile& file) {
             for (auto& chords : file.tally.chords)
                 if (!chords.empty()) chords[Tally::Chord{Modifiers::command, 8}] = 0;
         }},
        {"four times the clicks", Kind::keyboardShare,
         [](DayFile& file) {
             addInEachHour(file, [&](auto hour, auto presses) {
                 file.tally.add(Tally::MouseHour{.clicks = presses / 5}, hour);
             });
         }},
        {"four hours later", Kind::middleOfTyping, later},
    };
    const MadeUpWeeks weeks;
    for (const Case& each : cases) {
        constexpr int people = 20;
        int found = 0;
        for (int person = 0; person < people; ++person) {
            const std::vector<Finding> findings = weeks.findings(person, each.plant);
            found += std::any_of(findings.begin(), findings.end(),
                                 [&](const Finding& finding) { return finding.kind == each.kind; });
        }
        EXPECT_GE(found, people * 9 / 10) << each.what;
    }
}

}  // namespace
}  // namespace tapcore
