#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <thread>

#include "app/common/folder/practice_lock.h"
#include "app/common/system/environment.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"
#include "core/practice/lesson_plan.h"
#include "core/practice/practice_day.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::LetterCounts;
using tapcore::PracticeDay;

/// What typing comes to, counted apart from the program: each character typed right, some after misses. The
/// first press of a lesson has no time, nor has one after a miss.
struct Expected {
    LetterCounts counts;

    void startLesson() { isTimed_ = false; }
    void press(const std::string& character, std::int64_t misses) {
        const std::int64_t timed = isTimed_ && misses == 0 ? 1 : 0;
        counts[character].addSameDay({1, misses, timed, 0, 1});
        isTimed_ = true;
    }

  private:
    bool isTimed_ = false;
};

/// The trainer itself on a terminal of its own, from the keys that are struck to the file that they leave.
class TrainerOnATerminal : public testing::Test {
  protected:
    /// `starter` is a command that starts the one that follows it.
    void start(std::vector<std::string> starter = {}) {
        const std::string trainer[] = {PROGRAMS "/tappora-practice",
                                       "--folder",
                                       data.path().string(),
                                       "--today",
                                       "2026-09-20",
                                       "--language",
                                       "en",
                                       "--layout",
                                       "qwerty",
                                       "--words",
                                       "5",
                                       "--seed",
                                       std::to_string(seed)};
        starter.insert(starter.end(), std::begin(trainer), std::end(trainer));
        terminal.emplace(std::move(starter),
                         PseudoTerminal::Variables{{"HOME", home.path().string()},
                                                   {"XDG_CONFIG_HOME", (home / "config").string()},
                                                   {"XDG_RUNTIME_DIR", home.path().string()},
                                                   {"TAPPORA_RESOURCES", RESOURCES},
                                                   {"TERM", "xterm-256color"},
                                                   {"LC_ALL", "C.UTF-8"},
                                                   {"TZ", "UTC"}},
                         24, 80);
        ASSERT_TRUE(terminal->shows("Esc leaves")) << terminal->seen();
    }

    /// The text of the next lesson after some practice, made from the seed as the trainer makes it.
    std::string nextText(const LetterCounts& practised) {
        return textOf(*tapcore::LetterModel::load("en", RESOURCES "/Practice"), practised, {.words = 5});
    }
    std::string textOf(const tapcore::LetterModel& model, const LetterCounts& practised,
                       const tapcore::LessonWish& wish) {
        const auto plan = planLesson(model, tapcore::PracticeRules(40), practised, wish, rng);
        std::string text;
        for (const std::string& word : plan.words) text += text.empty() ? word : " " + word;
        return text;
    }

    /// Strikes keys for a text of the current lesson, as a person does, after one another: every fifth
    /// character only after two wrong ones.
    void typeWithErrors(std::string_view text) {
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (at > 0) awaitKeys();
            const std::string character(1, text[at]);
            const bool isMissed = at % 5 == 3;
            terminal->type((isMissed ? "#É" : "") + character);
            expected.press(character, isMissed ? 2 : 0);
        }
    }

    /// Waits until the trainer has taken the keys struck so far: it tells recorders when the window behind
    /// them loses the keyboard, and when it has it again. What comes faster than from a hand is not timed.
    void awaitKeys() {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        terminal->type("\033[O");
        ASSERT_TRUE(saysPractice(false)) << terminal->seen();
        terminal->type("\033[I");
        ASSERT_TRUE(saysPractice(true)) << terminal->seen();
    }

    /// The day in the file, as soon as it is as wished.
    PracticeDay savedDay(const std::function<bool(const PracticeDay&)>& isWished = [](const PracticeDay&) {
        return true;
    }) const {
        PracticeDay day;
        for (int i = 0; i < 6000; ++i) {
            day = PracticeDay(tapcore::readFile(data / "practice/2026-09-20.org").text);
            if (isWished(day)) return day;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        ADD_FAILURE() << "not saved in a minute: " << terminal->seen();
        return day;
    }

    /// Compares a day with what was typed, to the press. Times are the machine's, which may also hand over
    /// keys together: only their bounds hold.
    void expectRight(const PracticeDay& day) const {
        EXPECT_EQ(day.letters.size(), expected.counts.size());
        EXPECT_GT(sumOf(day.letters).timed, 0);
        for (auto [letter, wanted] : expected.counts) {
            tapcore::LetterStats kept = statsOf(letter, day.lettersOn("qwerty"));
            EXPECT_LE(kept.timed, wanted.timed) << letter;
            wanted.timed = kept.timed;
            EXPECT_LE(std::exchange(kept.milliseconds, 0), 3000 * kept.timed) << letter;
            EXPECT_EQ(kept, wanted) << letter;
        }
        EXPECT_EQ(day.layout, "qwerty");
    }

    /// Whether recorders are told, within a minute, that keys are practice, or that they are not.
    bool saysPractice(bool wanted) {
        const Environment environment{.variable = [&](const std::string&) { return home.path().string(); },
                                      .now = {},
                                      .calendar = tapcore::Calendar("UTC")};
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        const auto places = practiceFolders(environment, data.path());
        while (isPractising(places) != wanted && std::chrono::steady_clock::now() < deadline)
            terminal->readSome(10);
        return isPractising(places) == wanted;
    }

    const tapcore::TemporaryFolder data, home;
    std::optional<PseudoTerminal> terminal;
    Expected expected;

    static constexpr std::uint64_t seed = 7;
    tapcore::SeededRandom rng{seed};
};

TEST_F(TrainerOnATerminal, KeepsEachPressOfLessonsWithErrorsAResizeAndAnInterruption) {
    start();
    EXPECT_FALSE(terminal->isOrdinary());
    const std::string first = nextText({});
    typeWithErrors(first.substr(0, 8));
    terminal->resize(12, 40);
    ASSERT_TRUE(terminal->shows("\033[2J")) << "drawn again";
    typeWithErrors(first.substr(8));
    ASSERT_TRUE(terminal->shows("the next lesson")) << terminal->seen();
    const PracticeDay afterFirst = savedDay([](const PracticeDay& day) { return day.lessons == 1; });
    expectRight(afterFirst);

    const std::string second = nextText(afterFirst.letters);
    expected.startLesson();
    terminal->type("\r");
    typeWithErrors(second.substr(0, 9));
    terminal->type("\x03");
    EXPECT_EQ(terminal->wait(), 0);
    EXPECT_TRUE(terminal->isOrdinary());
    const PracticeDay atTheEnd = savedDay();
    expectRight(atTheEnd);
    EXPECT_EQ(atTheEnd.lessons, 1);
    EXPECT_EQ(tapcore::namesIn(data / "practice"), std::vector<std::string>{"2026-09-20.org"});
    EXPECT_EQ(tapcore::namesIn(data.path()), std::vector<std::string>{"practice"}) << "nothing in a day file";
}

TEST_F(TrainerOnATerminal, KeepsWhatWasTypedHoweverItIsEnded) {
    const std::pair<const char*, std::function<void()>> endings[] = {
        {"Escape", [&] { terminal->type("\033"); }},
        {"SIGTERM", [&] { terminal->signal(SIGTERM); }},
        {"SIGHUP", [&] { terminal->signal(SIGHUP); }},
        {"no terminal any more", [&] { terminal->hangUp(); }},
    };
    for (const auto& [what, end] : endings) {
        SCOPED_TRACE(what);
        fs::remove_all(data / "practice");
        rng = tapcore::SeededRandom(seed);
        expected = {};
        start();
        typeWithErrors(nextText({}).substr(0, 6));
        terminal->type("\x7F");
        awaitKeys();  // signals overtake keys that were not delivered yet
        end();
        EXPECT_EQ(terminal->wait(), 0);
        expectRight(savedDay());
    }
}

TEST_F(TrainerOnATerminal, SaysThatKeysArePracticeWhileTheyGoIntoALesson) {
    start();
    EXPECT_TRUE(saysPractice(true));
    terminal->signal(SIGKILL);
    EXPECT_TRUE(saysPractice(false)) << "killed";

    // Below a shell that stops and goes on with it, as what started it does that waits for its end.
    start({"/bin/sh", "-mc", "/bin/sh -c '\"$@\"; exit $?' sh \"$@\"; read -r line && fg", "sh"});
    EXPECT_NE(terminal->seen().find("\033[?1004h"), std::string::npos) << "asks for reports of focus";
    EXPECT_TRUE(saysPractice(true)) << "in a lesson";
    const std::string text = nextText({});
    typeWithErrors(text.substr(0, 4));
    terminal->type("\033[O");
    EXPECT_TRUE(saysPractice(false)) << "another window has the keyboard";
    terminal->type("\033[I");
    EXPECT_TRUE(saysPractice(true)) << "it is back";
    terminal->type("\x1A");
    EXPECT_TRUE(saysPractice(false)) << "stopped";
    ASSERT_TRUE(terminal->shows("\033[?1004l"));
    for (int i = 0; i < 6000 && !terminal->isOrdinary(); ++i) terminal->readSome(10);
    terminal->type("\r");
    EXPECT_TRUE(saysPractice(true)) << "continued";
    typeWithErrors(text.substr(4));
    ASSERT_TRUE(terminal->shows("the next lesson")) << terminal->seen();
    EXPECT_TRUE(saysPractice(false)) << "at the review";
    terminal->type("\r");
    EXPECT_TRUE(saysPractice(true)) << "in the next lesson";
    terminal->type("\033");
    EXPECT_EQ(terminal->wait(), 0);
    EXPECT_TRUE(saysPractice(false)) << "left";
    expectRight(savedDay());
}

TEST_F(TrainerOnATerminal, SaysInTheReviewThatALessonWasChosenByDailyCounts) {
    data.put("days/2026-09-19.org", "* Keys\n| 9 | 0 | 750 |\n| 9 | 14 | 250 |\n");
    const tapcore::OwnLetters own = {{"a", 750}, {"e", 250}};
    const auto model = tapcore::LetterModel::load("en", RESOURCES "/Practice");
    start({"/bin/sh", "-c", "exec \"$@\" --mine", "sh"});
    typeWithErrors(textOf(weighed(*model, own), {}, {.words = 5, .own = own}));
    EXPECT_TRUE(terminal->shows("Chosen for you: a is 75 % of the letters you typed in 30 days"));
    EXPECT_TRUE(terminal->shows("neither pairs of letters nor errors")) << terminal->seen();
    terminal->type("\033");
    EXPECT_EQ(terminal->wait(), 0);
    expectRight(savedDay());
}

TEST_F(TrainerOnATerminal, HoldsOnToWhatCannotBeSavedUntilItsTypistLeavesAllTheSame) {
    for (const bool isRepaired : {false, true}) {
        rng = tapcore::SeededRandom(seed);
        expected = {};
        data.put("practice", "in the way");
        start();
        typeWithErrors(nextText({}).substr(0, 6));
        terminal->type("\033");
        ASSERT_TRUE(terminal->shows("Not saved yet")) << terminal->seen();
        if (isRepaired) fs::remove(data / "practice");
        terminal->type("\033");
        EXPECT_EQ(isRepaired, !terminal->shows(": the last practice is not saved")) << terminal->seen();
        EXPECT_EQ(terminal->wait(), isRepaired ? 0 : 1);
    }
    expectRight(savedDay());
}

}  // namespace
}  // namespace tappora
