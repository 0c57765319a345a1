#include <gtest/gtest.h>

#include <clocale>

#include "app/practice/lesson_view.h"
#include "app/practice/review_view.h"
#include "core/keyboard/catalog.h"
#include "tests/app/practice/drawn_frame.h"
#include "tests/app/practice/tents.h"

// Whole screens, as a typist sees them. Below each line are the styles of its columns: see styleMarks.

namespace tappora {
namespace {

using tapcore::LetterModel;
using tapcore::LetterStats;
using tapcore::PracticeDay;

const tapcore::Day today(2026, 9, 20);

/// A letter learned long ago, one that has become slow since, and one on its way.
tapcore::PracticeHistory someHistory() {
    const tapcore::Day old(2026, 8, 1), recent(2026, 9, 19);
    tapcore::PracticeHistory history;
    for (const char* letter : {"e", "n"}) {
        history.days[old].add("qwerty", letter, {70, 0, 70, 70 * 200, 1});
        history.days[recent].add("qwerty", letter, {60, 0, 60, 60 * 250, 1});
    }
    history.days[old].add("qwerty", "i", {900, 0, 900, 900 * 200, 1});
    history.days[recent].add("qwerty", "i", {60, 0, 60, 60 * 700, 1});
    history.days[recent].add("qwerty", "t", {45, 5, 30, 30 * 600, 1});
    history.days[recent].seconds = 300;
    history.days[recent].lessons = 2;
    history.days[recent].best = 30;
    history.days[recent].bests["qwerty"] = 30;
    return history;
}

struct Practised {
    LetterModel model = tents();
    tapcore::LessonWish wish = {.words = 12};
    tapcore::PracticeHistory history = someHistory();
    bool letErrorsStand = false;
    std::int64_t goalSeconds = 300;
};

class Frames : public testing::Test {
  protected:
    static void SetUpTestSuite() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    static Trainer trainerOf(Practised practised) {
        return Trainer({.model = std::make_shared<const LetterModel>(std::move(practised.model)),
                        .rules = tapcore::PracticeRules(40),
                        .wish = std::move(practised.wish),
                        .layout = "qwerty",
                        .goalSeconds = practised.goalSeconds,
                        .letErrorsStand = practised.letErrorsStand},
                       std::move(practised.history), 7, tapcore::Calendar("UTC"),
                       {.today = [] { return today; }, .save = {}, .remember = {}});
    }

    /// Types so many characters, each so many milliseconds after the one before.
    void type(Trainer& trainer, std::size_t characters, std::int64_t milliseconds) {
        for (; characters > 0 && trainer.session().expected(); --characters)
            trainer.press(std::string(*trainer.session().expected()), now_ += milliseconds);
    }
    void miss(Trainer& trainer) { trainer.press("#", now_ += 400); }

    std::string lesson(const Trainer& trainer, const ScreenShape& shape,
                       const std::string& notice = "") const {
        return drawn(lessonFrame(trainer, keyboard_, notice, shape));
    }

  private:
    const tapcore::Catalog catalog_ = tapcore::Catalog({}, RESOURCES "/Layouts");
    const KeyboardView keyboard_{tapcore::Catalog::readBoard(RESOURCES "/Boards/full-size-ansi.json"),
                                 catalog_.legends("qwerty")};
    std::int64_t now_ = 1000;
};

TEST_F(Frames, OfALessonJustBegun) {
    Trainer trainer = trainerOf({.history = {}});
    EXPECT_EQ(lesson(trainer, {24, 80}), R"(
English on qwerty, lesson 1                                   0:00 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS                                   ..................

tenet ten tent tenet tent ten ten tent ten tenet ten ten
N

- wpm   - right   0 of 12 words
SSSSSSSSSSSSSSS

e   timed 0 of 60   - of 40 wpm   - of 95 % right   day 1 of 2
S

e▁ n▁ i▁ t▁ a▁ r▁ l· s· u· o·
 ll ll ll ll ll ll............

 `   1   2   3   4   5   6   7   8   9   0   -   =
PPP PPP RRR MMM III III III III MMM RRR PPP PPP PPP
       q   w   e   r   t   y   u   i   o   p   [   ]    \
      PPP RRR MMM III NNN III III MMM RRR PPP PPP PPP  PPP
        a   s   d   f   g   h   j   k   l   ;   '
       PPP RRR MMM III III III III MMM RRR PPP PPP
          z   x   c   v   b   n   m   ,   .   /
         PPP RRR MMM III III III III MMM RRR PPP

                        TTTTTTT

next: t   left index finger
      S

Esc leaves; what you typed is kept
..................................
)");
    EXPECT_EQ(lesson(trainer, {6, 40}), R"(
tenet ten tent tenet tent ten ten tent
N
ten tenet ten ten
- wpm   - right   0 of 12 words
SSSSSSSSSSSSSSS
e 0/60 timed  -/40 wpm  -/95 % right
S
e▁ n▁ i▁ t▁ a▁ r▁ l· s· u· o·
 ll ll ll ll ll ll............
next: t   left index finger
      S
)");
}

TEST_F(Frames, OfALessonUnderWay) {
    Trainer trainer = trainerOf({});
    type(trainer, 5, 200);
    miss(trainer);
    type(trainer, 33, 250);
    miss(trainer);
    EXPECT_EQ(lesson(trainer, {24, 80}), R"(
English on qwerty, lesson 1                                   0:09 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS                                   ..................

ten tent ten tent ten ten tenet ten tent ten tenet ten
rrrrrcrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrW

49 wpm   95 % right   8 of 12 words
SSSSSSSSSSSSSSSSSSS

a   timed 0 of 60   - of 40 wpm   - of 95 % right   day 1 of 2
S

e█ n█ i~ t▄ a▁ r▁ l· s· u· o·
 LL LL ss ll ll ll............

 `   1   2   3   4   5   6   7   8   9   0   -   =
PPP PPP RRR MMM III III III III MMM RRR PPP PPP PPP
       q   w   e   r   t   y   u   i   o   p   [   ]    \
      PPP RRR MMM III III III III MMM RRR PPP PPP PPP  PPP
        a   s   d   f   g   h   j   k   l   ;   '
       PPP RRR MMM III III III III MMM RRR PPP PPP
          z   x   c   v   b   n   m   ,   .   /
         PPP RRR MMM III III NNN III MMM RRR PPP

                        TTTTTTT

next: n   right index finger
      S

Esc leaves; what you typed is kept
..................................
)");
    EXPECT_EQ(lesson(trainer, {6, 40}), R"(
ten tent ten tent ten ten tenet ten
rrrrrcrrrrrrrrrrrrrrrrrrrrrrrrrrrrrr
tent ten tenet ten
rrW
49 wpm   95 % right   8 of 12 words
SSSSSSSSSSSSSSSSSSS
a 0/60 timed  -/40 wpm  -/95 % right
S
e█ n█ i~ t▄ a▁ r▁ l· s· u· o·
 LL LL ss ll ll ll............
next: n   right index finger
      S
)");
    EXPECT_EQ(lesson(trainer, {12, 30}), R"(
English on qwerty, lesson 1
SSSSSSSSSSSSSSSSSSSSSSSSSSS

ten tent ten tent ten ten
rrrrrcrrrrrrrrrrrrrrrrrrrr
tenet ten tent ten tenet ten
rrrrrrrrrrrrW

49 wpm   95 % right   8/12
SSSSSSSSSSSSSSSSSSS

a 0/60 -/40 -
S

e█ n█ i~ t▄ a▁ r▁ l· s· u· o·
 LL LL ss ll ll ll............
next: n   right index finger
      S
Esc leaves
..........
)");
    EXPECT_EQ(lesson(trainer, {2, 12}), R"(
tent ten
rrW
49 wpm   95
SSSSSSSSSSSS
)");
}

TEST_F(Frames, OfALessonOnATerminalWithoutUnicode) {
    Trainer trainer = trainerOf({.letErrorsStand = true});
    type(trainer, 2, 200);
    miss(trainer);
    miss(trainer);
    type(trainer, 9, 300);
    EXPECT_EQ(lesson(trainer, {16, 60, false}), R"(
English on qwerty, lesson 1               0:03 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS               ..................

ten tent ten tent ten ten tenet ten tent ten tenet ten
rrwwrrrrrrrrrN

41 wpm   84 % right   3 of 12 words
SSSSSSSSSSSSSSSSSSS

a 0/60 timed  -/40 wpm  -/95 % right
S

e* n* i~ t5 a0 r0 l. s. u. o.
 LL LL ss ll ll ll............
 `   1   2   3   4   5   6   7   8   9   0   -   =
PPP PPP RRR MMM III III III III MMM RRR PPP PPP PPP
       q   w   e   r   t   y   u   i   o   p   [   ]    \
      PPP RRR MMM III NNN III III MMM RRR PPP PPP PPP  PPP
        a   s   d   f   g   h   j   k   l   ;   '
       PPP RRR MMM III III III III MMM RRR PPP PPP
          z   x   c   v   b   n   m   ,   .   /
         PPP RRR MMM III III III III MMM RRR PPP

                        TTTTTTT
next: t   left index finger
      S
Esc leaves; what you typed is kept
..................................
)");
    trainer.erase();
    EXPECT_EQ(lesson(trainer, {21, 50, false}, "Not saved yet: a disk\nis full"), R"(
English on qwerty, lesson 1     0:03 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS     ..................

ten tent ten tent ten ten tenet ten tent ten
rrwwrrrrrrrrN
tenet ten

41 wpm   84 % right   2 of 12 words
SSSSSSSSSSSSSSSSSSS

a 0/60 timed  -/40 wpm  -/95 % right
S

e* n* i~ t5 a0 r0 l. s. u. o.
 LL LL ss ll ll ll............

 `  1  2  3  4  5  6  7  8  9  0  -  =
PPPPPPRRRMMMIIIIIIIIIIIIMMMRRRPPPPPPPPP
      q  w  e  r  t  y  u  i  o  p  [  ]  \
     PPPRRRMMMIIIIIIIIIIIIMMMRRRPPPPPPPPPPPP
      a  s  d  f  g  h  j  k  l  ;  '
     PPPRRRMMMIIIIIIIIIIIIMMMRRRPPPPPP
        z  x  c  v  b  n  m  ,  .  /
       PPPRRRMMMIIIIIIIIIIIIMMMRRRPPP

                 NNNNNNN

next: space   a thumb
      SSSSS
Not saved yet: a disk
wwwwwwwwwwwwwwwwwwwww
is full
wwwwwww
Esc leaves; what you typed is kept
..................................
)");
}

TEST_F(Frames, KeepANoticeWhateverElseHasRoom) {
    const Trainer trainer = trainerOf({});
    EXPECT_EQ(lesson(trainer, {3, 40}, "first\nsecond"), R"(
ten tent ten tent ten ten tenet ten
N
first
wwwww
second
wwwwww
)");
    EXPECT_EQ(lesson(trainer, {1, 4}, "longer"), R"(
long
wwww
)");
}

TEST_F(Frames, OfAReview) {
    Trainer trainer = trainerOf({});
    type(trainer, 20, 250);
    miss(trainer);
    type(trainer, 100, 250);
    EXPECT_EQ(drawn(reviewFrame(trainer, "", {24, 80})), R"(
English on qwerty, lesson 1                                   0:13 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS                                   ..................

★ 98 % right   95 % is the mark
LLSSSSSSSSSSSS.................
★ 48 wpm       28 is your usual speed
LLSSSSSSSSSSSS.......................
☆ 0:13 today   5:00 is your goal
..SSSSSSSSSSSS..................

Took longest: e, n, t

e█ n█ i~ t▅ a▁ r▁ l· s· u· o·
 LL LL ss ll ll ll............

Enter the next lesson   Esc leave
SSSSS                   SSS
)");
    EXPECT_EQ(drawn(reviewFrame(trainer, "", {6, 40})), R"(
English on qwerty, lesson 1 0:13 of 5:00
SSSSSSSSSSSSSSSSSSSSSSSSSSS ............
★ 98 % right   95 % is the mark
LLSSSSSSSSSSSS.................
★ 48 wpm       28 is your usual speed
LLSSSSSSSSSSSS.......................
☆ 0:13 today   5:00 is your goal
..SSSSSSSSSSSS..................
Took longest: e, n, t
Enter the next lesson   Esc leave
SSSSS                   SSS
)");
    EXPECT_EQ(drawn(reviewFrame(trainer, "Not saved yet", {12, 60, false})), R"(
English on qwerty, lesson 1               0:13 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS               ..................

* 98 % right   95 % is the mark
LLSSSSSSSSSSSS.................
* 48 wpm       28 is your usual speed
LLSSSSSSSSSSSS.......................
- 0:13 today   5:00 is your goal
..SSSSSSSSSSSS..................

Took longest: e, n, t

e* n* i~ t6 a0 r0 l. s. u. o.
 LL LL ss ll ll ll............

Not saved yet
wwwwwwwwwwwww
Enter the next lesson   Esc leave
SSSSS                   SSS
)");
}

TEST_F(Frames, OfAReviewWithEachKindOfNews) {
    const auto review = [&](Practised practised, std::int64_t milliseconds) {
        Trainer trainer = trainerOf(std::move(practised));
        type(trainer, 500, milliseconds);
        return drawn(reviewFrame(trainer, "", {12, 70}));
    };
    const tapcore::Day old(2026, 8, 1), recent(2026, 9, 19);
    Practised opening{.wish = {.words = 60}};
    for (auto& [day, kept] : opening.history.days)
        for (const char* letter : {"a", "r"}) kept.add("qwerty", letter, {70, 0, 70, 70 * 150, 1});
    opening.history.days[recent].add("qwerty", "t", {90, 0, 60, 60 * 100, 1});
    EXPECT_EQ(review(opening, 200), R"(
English on qwerty, lesson 1                         0:54 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS                         ..................

★ 100 % right  95 % is the mark
LLSSSSSSSSSSSS.................
★ 60 wpm       42 is your usual speed
LLSSSSSSSSSSSS.......................
☆ 0:54 today   5:00 is your goal
..SSSSSSSSSSSS..................

A new letter is open: l
LLLLLLLLLLLLLLLLLLLLLLL
Took longest: e, n, t

e█ n█ i~ t█ a█ r█ l· s· u· o·
 LL LL ss LL LL LL............

Enter the next lesson   Esc leave
SSSSS                   SSS
)");

    Practised faster{.wish = {.words = 30}};
    EXPECT_EQ(review(faster, 300), R"(
English on qwerty, lesson 1                         0:41 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS                         ..................

★ 100 % right  95 % is the mark
LLSSSSSSSSSSSS.................
★ 40 wpm       28 is your usual speed
LLSSSSSSSSSSSS.......................
☆ 0:41 today   5:00 is your goal
..SSSSSSSSSSSS..................

Your fastest lesson on this layout, by 10 wpm
LLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLLL
Took longest: e, n, t

e█ n█ i~ t▆ a▁ r▁ l· s· u· o·
 LL LL ss ll ll ll............

Enter the next lesson   Esc leave
SSSSS                   SSS
)");

    Practised ofWeek = faster;
    ofWeek.history.days[old].bests["qwerty"] = 90;
    EXPECT_EQ(review(ofWeek, 300), R"(
English on qwerty, lesson 1                         0:41 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS                         ..................

★ 100 % right  95 % is the mark
LLSSSSSSSSSSSS.................
★ 40 wpm       28 is your usual speed
LLSSSSSSSSSSSS.......................
☆ 0:41 today   5:00 is your goal
..SSSSSSSSSSSS..................

Your fastest lesson of the week
LLLLLLLLLLLLLLLLLLLLLLLLLLLLLLL
Took longest: e, n, t

e█ n█ i~ t▆ a▁ r▁ l· s· u· o·
 LL LL ss ll ll ll............

Enter the next lesson   Esc leave
SSSSS                   SSS
)");

    Practised focus = ofWeek;
    focus.model.order = {"e", "n", "i", "t"};
    EXPECT_EQ(review(focus, 300), R"(
English on qwerty, lesson 1                         0:40 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS                         ..................

★ 100 % right  95 % is the mark
LLSSSSSSSSSSSS.................
★ 40 wpm       28 is your usual speed
LLSSSSSSSSSSSS.......................
☆ 0:40 today   5:00 is your goal
..SSSSSSSSSSSS..................

t at 40 wpm, faster than before
LLLLLLLLLLLLLLLLLLLLLLLLLLLLLLL
Took longest: e, n, t

e█ n█ i~ t▆
 LL LL ss ll

Enter the next lesson   Esc leave
SSSSS                   SSS
)");
}

TEST_F(Frames, OfAReviewOfWhatCannotBeCompared) {
    Trainer slow = trainerOf({.wish = {.words = 3}, .history = {}});
    type(slow, 100, 4000);
    EXPECT_EQ(drawn(reviewFrame(slow, "", {24, 60})), R"(
English on qwerty, lesson 1               0:00 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS               ..................

★ 100 % right  95 % is the mark
LLSSSSSSSSSSSS.................
☆ no speed     no press could be timed
..SSSSSSSSSSSS........................
☆ 0:00 today   5:00 is your goal
..SSSSSSSSSSSS..................

e▁ n▁ i▁ t▁ a▁ r▁ l· s· u· o·
 ll ll ll ll ll ll............

Enter the next lesson   Esc leave
SSSSS                   SSS
)");

    Trainer first = trainerOf({.wish = {.words = 3}, .history = {}, .goalSeconds = 3});
    type(first, 100, 300);
    EXPECT_EQ(drawn(reviewFrame(first, "", {24, 60})), R"(
English on qwerty, lesson 1               0:03 of 0:03 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS               ..................

★ 100 % right  95 % is the mark
LLSSSSSSSSSSSS.................
★ 40 wpm       your first speed
LLSSSSSSSSSSSS.................
★ 0:03 today   0:03 is your goal
LLSSSSSSSSSSSS..................

Took longest: e, n, t

e▅ n▄ i▁ t▅ a▁ r▁ l· s· u· o·
 ll ll ll ll ll ll............

Enter the next lesson   Esc leave
SSSSS                   SSS
)");
}

TEST_F(Frames, OfAReviewOfALessonChosenByDailyCounts) {
    const tapcore::OwnLetters own = {{"t", 300}, {"e", 700}};
    Trainer trainer = trainerOf({.wish = {.words = 3, .own = own}});
    type(trainer, 100, 300);
    EXPECT_EQ(drawn(reviewFrame(trainer, "", {24, 70})), R"(
English on qwerty, lesson 1                         0:03 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS                         ..................

★ 100 % right  95 % is the mark
LLSSSSSSSSSSSS.................
★ 40 wpm       28 is your usual speed
LLSSSSSSSSSSSS.......................
☆ 0:03 today   5:00 is your goal
..SSSSSSSSSSSS..................

t at 40 wpm, faster than before
LLLLLLLLLLLLLLLLLLLLLLLLLLLLLLL
Took longest: e, n, t
Chosen for you: t is 30 % of the letters you typed in 30 days
Daily counts hold neither pairs of letters nor errors
.....................................................

e█ n█ i~ t▄ a▁ r▁ l· s· u· o·
 LL LL ss ll ll ll............

Enter the next lesson   Esc leave
SSSSS                   SSS
)");
    Trainer forLetters = trainerOf({.wish = {.words = 3, .letters = {"n"}, .own = own}});
    type(forLetters, 100, 300);
    EXPECT_EQ(drawn(reviewFrame(forLetters, "", {24, 70})), R"(
English on qwerty, lesson 1                         0:03 of 5:00 today
SSSSSSSSSSSSSSSSSSSSSSSSSSS                         ..................

★ 100 % right  95 % is the mark
LLSSSSSSSSSSSS.................
★ 40 wpm       28 is your usual speed
LLSSSSSSSSSSSS.......................
☆ 0:03 today   5:00 is your goal
..SSSSSSSSSSSS..................

Took longest: e, n, t
The words have your letters as often as you typed them in 30 days
Daily counts hold neither pairs of letters nor errors
.....................................................

e█ n█ i~ t▄ a▁ r▁ l· s· u· o·
 LL LL ss ll ll ll............

Enter the next lesson   Esc leave
SSSSS                   SSS
)");
}

}  // namespace
}  // namespace tappora
