#include "core/practice/lesson_session.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

using Outcome = LessonSession::Outcome;

/// A lesson, typed key by key: each with the milliseconds since the one before.
class Typing {
  public:
    explicit Typing(const std::vector<std::string>& words, bool letErrorsStand = false)
        : session(words, letErrorsStand) {}

    Typing& key(std::string_view character, std::int64_t after) {
        now += after;
        session.press(character, now);
        return *this;
    }
    Typing& back() {
        session.erase();
        return *this;
    }

    LetterStats of(const std::string& letter) const { return statsOf(letter, session.counts()); }

    LessonSession session;
    std::int64_t now = 1'000'000;
};

TEST(LessonSession, TimesAPressFromTheOneBefore) {
    Typing typing({"ate", "teas", "a"});
    typing.key("a", 0).key("t", 200).key("e", 3000).key(" ", 3001).key("t", 150).key("e", 90).key("a", 60);
    typing.key("s", 5).key(" ", 4).key("a", 0);
    EXPECT_TRUE(typing.session.isFinished());
    EXPECT_EQ(typing.of("a"), (LetterStats{3, 0, 1, 60, 1})) << "no time: the first press, one in a burst";
    EXPECT_EQ(typing.of("t"), (LetterStats{2, 0, 2, 350, 1}));
    EXPECT_EQ(typing.of("e"), (LetterStats{2, 0, 2, 3090, 1})) << "three seconds are no pause yet";
    EXPECT_EQ(typing.of("s"), (LetterStats{1, 0, 1, 5, 1}));
    EXPECT_EQ(typing.of(" "), (LetterStats{2, 0, 0, 0, 1})) << "neither a pause nor a burst is timed";
    EXPECT_EQ(typing.session.milliseconds(), 200 + 3000 + 150 + 90 + 60 + 5 + 4);
}

TEST(LessonSession, PassesAWrongKeyOnlyWhenPutRight) {
    Typing typing({"ate"});
    typing.key("a", 0).key("x", 100).key("e", 100);
    EXPECT_EQ(*typing.session.expected(), "t");
    EXPECT_EQ(typing.session.outcomes()[1], Outcome::wrong);
    typing.back().key("t", 100).key("e", 100);
    EXPECT_TRUE(typing.session.isFinished());
    EXPECT_EQ(typing.session.outcomes(),
              (std::vector<Outcome>{Outcome::right, Outcome::corrected, Outcome::right}));
    EXPECT_EQ(typing.of("t"), (LetterStats{1, 2, 0, 0, 1})) << "a press after an error has no time";
    EXPECT_EQ(typing.of("e"), (LetterStats{1, 0, 1, 100, 1}));
    EXPECT_EQ(typing.session.counts().size(), 3U) << "only what was expected is counted";
}

TEST(LessonSession, LetsErrorsStandWhenAsked) {
    Typing typing({"ate"}, true);
    typing.key("a", 0).key("x", 100).key("e", 100);
    EXPECT_TRUE(typing.session.isFinished());
    EXPECT_EQ(typing.session.outcomes(),
              (std::vector<Outcome>{Outcome::right, Outcome::wrong, Outcome::right}));
    EXPECT_EQ(typing.of("t"), (LetterStats{0, 1, 0, 0, 1}));
    EXPECT_EQ(typing.of("e"), (LetterStats{1, 0, 0, 0, 1}));
}

TEST(LessonSession, GoesBackWhereErrorsAreLetStand) {
    Typing typing({"ate"}, true);
    typing.back().key("a", 0).key("x", 100).back().key("t", 100).key("e", 100);
    EXPECT_EQ(typing.session.outcomes(),
              (std::vector<Outcome>{Outcome::right, Outcome::corrected, Outcome::right}));
    EXPECT_EQ(typing.of("t"), (LetterStats{1, 1, 0, 0, 1}));
    EXPECT_EQ(typing.of("e"), (LetterStats{1, 0, 1, 100, 1}));
}

TEST(LessonSession, TakesACharacterInPieces) {
    Typing typing({"été", "йог"});
    typing.key("e", 0).key("\u0301", 5);
    EXPECT_EQ(typing.session.position(), 1U);
    typing.key("t", 100).key("e\u0301", 100).key(" ", 100).key("й", 100);
    EXPECT_EQ(typing.session.position(), 5U);
    EXPECT_EQ(typing.of("é"), (LetterStats{2, 0, 1, 100, 1}));
}

TEST(LessonSession, JudgesABeginningThatNothingFollows) {
    Typing typing({"été"});
    typing.key("e", 0);
    EXPECT_TRUE(typing.session.settle(typing.now + 29));
    EXPECT_EQ(typing.of("é").misses, 0);
    EXPECT_FALSE(typing.session.settle(typing.now + 30));
    EXPECT_EQ(typing.of("é").misses, 1);

    typing.key("e", 100).key("é", 10);
    EXPECT_EQ(typing.of("é"), (LetterStats{1, 2, 0, 0, 1})) << "another key judges it at once";
    EXPECT_EQ(*typing.session.expected(), "t");
}

TEST(LessonSession, HandsOutItsSharesOnce) {
    Typing typing({"ate"});
    typing.key("a", 0).key("t", 200);
    const LessonSession::Share first = typing.session.takeShare();
    EXPECT_EQ(first.counts.at("t"), (LetterStats{1, 0, 1, 200, 1}));
    EXPECT_EQ(first.milliseconds, 200);
    EXPECT_TRUE(typing.session.takeShare().isEmpty());
    typing.key("e", 300);
    EXPECT_EQ(typing.session.takeShare().counts.size(), 1U);
    EXPECT_EQ(typing.session.counts().size(), 3U);
    typing.key("e", 300);
    EXPECT_FALSE(typing.session.hasShare()) << "what is typed after the end counts no more";
}

}  // namespace
}  // namespace tapcore
