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

/// Weeks of made-up people: what is said of the week of a Monday, beside the eight before.
class MadeUpWeeks {
  public:
    using Plant = std::function<void(DayFile&)>;

    explicit MadeUpWeeks(std::uint64_t people) {
        for (std::uint64_t person = 0; person < people; ++person) add(person);
    }

    /// What is said of each one's week, once something was done to its days.
    std::vector<std::vector<Finding>> findings(std::size_t people, const Plant& plant = {}) const {
        std::vector<std::vector<Finding>> all;
        for (std::size_t i = 0; i < people; ++i) {
            TypingDays days = people_[i].week;
            for (auto& [day, file] : days)
                if (plant) plant(file);
            all.push_back(changes({week, figuresOf(days, week)}, people_[i].earlier,
                                  *catalog_.board("full-size-ansi")));
        }
        return all;
    }

  private:
    struct Person {
        TypingDays week;
        std::vector<CountedStretch> earlier;
    };

    inline static const Day monday{2026, 5, 4};
    inline static const Stretch week{monday, daysLater(monday, 6)};

    void add(std::uint64_t person) {
        const MadeUpTyping typing(*model_, legends_, person, monday);
        const auto typed = [&](const Stretch& stretch) {
            TypingDays days;
            for (Day day = stretch.first; day <= stretch.last; day = daysLater(day, 1))
                if (DayFile file = typing.day(day); !file.tally.isEmpty()) days.emplace(day, std::move(file));
            return days;
        };
        Person made{typed(week), {}};
        for (std::int64_t weeks = 1; weeks <= 8; ++weeks) {
            const Stretch stretch = week.earlier(7 * weeks);
            made.earlier.push_back({stretch, figuresOf(typed(stretch), stretch)});
        }
        people_.push_back(std::move(made));
    }

    std::shared_ptr<const LetterModel> model_ = LetterModel::load("en", resources / "Practice");
    Catalog catalog_ = Catalog::bundled(resources);
    Legends legends_ = catalog_.legends("qwerty");
    std::vector<Person> people_;
};

void addInEachHour(DayFile& file, const std::function<void(std::int64_t hour, std::int64_t presses)>& add) {
    const auto byHour = file.tally.byHour();
    for (std::size_t hour = 0; hour < Tally::hours; ++hour)
        add(static_cast<std::int64_t>(hour), byHour[hour]);
}

// docs/reports.md gives the shares among thousands.
TEST(Changes, AreFoundWhereTheyWerePlantedAndRarelyElsewhere) {
    const MadeUpWeeks weeks(60);
    std::size_t wrong = 0;
    for (const std::vector<Finding>& found : weeks.findings(60)) wrong += found.empty() ? 0 : 1;
    EXPECT_LE(wrong, 60 / 20);

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
    constexpr std::size_t people = 20;
    for (const Case& each : cases) {
        std::size_t found = 0;
        for (const std::vector<Finding>& findings : weeks.findings(people, each.plant))
            found += std::any_of(findings.begin(), findings.end(),
                                 [&](const Finding& finding) { return finding.kind == each.kind; });
        EXPECT_GE(found, people * 9 / 10) << each.what;
    }
}

/// Eight weeks and a ninth of the same typing; something is done to the days of the eight.
std::vector<Finding> findingsOfSameTyping(const std::function<void(DayFile&)>& before) {
    DayFile day;
    for (KeyCode key = 0; key < 30; ++key) day.tally.add(key, 10, 100);
    day.tally.add(Tally::Chord{Modifiers::command, 8}, 10, 90);
    day.tally.add(Tally::MouseHour{.clicks = 900}, 10);
    DayFile earlierDay = day;
    before(earlierDay);
    TypingDays days;
    const Stretch week{{2026, 9, 7}, {2026, 9, 13}};
    for (std::int64_t back = 0; back < 63; ++back)
        days.emplace(daysLater(week.last, -back), back < 7 ? day : earlierDay);
    std::vector<CountedStretch> earlier;
    for (std::int64_t weeks = 1; weeks <= 8; ++weeks)
        earlier.push_back({week.earlier(7 * weeks), figuresOf(days, week.earlier(7 * weeks))});
    return changes({week, figuresOf(days, week)}, earlier,
                   *Catalog::bundled(resources).board("full-size-ansi"));
}

// What was not counted, or was forgotten, is no data, and no change.
TEST(Changes, AreNotFoundWhereCountsAreMissing) {
    struct Case {
        const char* what;
        std::function<void(DayFile&)> before;
    };
    const Case cases[] = {
        {"nothing is missing", [](DayFile&) {}},
        {"keys were forgotten", [](DayFile& file) { file.tally.forgetKeys(); }},
        {"shortcuts were forgotten", [](DayFile& file) { file.tally.forgetChords(); }},
        {"the mouse was not counted", [](DayFile& file) { file.tally.mouse = {}; }},
    };
    for (const auto& [what, before] : cases) EXPECT_EQ(findingsOfSameTyping(before).size(), 0) << what;

    const auto fewerClicks = findingsOfSameTyping([](DayFile& file) { file.tally.mouse[10].clicks = 90; });
    ASSERT_EQ(fewerClicks.size(), 1) << "mouse counts that are there are compared";
    EXPECT_EQ(fewerClicks.front().kind, Kind::keyboardShare);
}

}  // namespace
}  // namespace tapcore
