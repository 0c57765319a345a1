#include <gtest/gtest.h>

#include <chrono>
#include <optional>

#include "tests/support/pseudo_terminal.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/terminal_screen.h"

// What a terminal shows when the trainer itself runs on it. Below each line is how its columns look: see
// TerminalScreen.

namespace tappora {
namespace {

class TrainersScreen : public testing::Test {
  protected:
    void start(unsigned short lines, unsigned short columns, PseudoTerminal::Variables more = {},
               std::vector<std::string> options = {}) {
        std::vector<std::string> command = {PROGRAMS "/tappora-practice",
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
                                            "7"};
        command.insert(command.end(), options.begin(), options.end());
        more.insert({{"HOME", home.path().string()},
                     {"XDG_CONFIG_HOME", (home / "config").string()},
                     {"XDG_RUNTIME_DIR", home.path().string()},
                     {"TAPPORA_RESOURCES", RESOURCES},
                     {"TERM", "xterm-256color"},
                     {"NO_COLOR", ""},
                     {"LC_ALL", "C.UTF-8"},
                     {"TZ", "UTC"}});
        terminal.emplace(std::move(command), more, lines, columns);
        screen.emplace(lines, columns);
        taken = 0;
    }
    void resize(unsigned short lines, unsigned short columns) {
        terminal->resize(lines, columns);
        screen->resize(lines, columns);
    }

    using Place = std::pair<std::size_t, std::size_t>;

    /// Waits until the screen is as wished, and its cursor at that line and column; at most a minute.
    void expectShown(const Place& cursor, const std::string& wished) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        const auto isAsWished = [&] { return screen->drawn() == wished && screen->cursor() == cursor; };
        while (!isAsWished() && std::chrono::steady_clock::now() < deadline) {
            terminal->readSome(100);
            screen->take(std::string_view(terminal->seen()).substr(taken));
            taken = terminal->seen().size();
        }
        EXPECT_EQ(screen->drawn(), wished);
        EXPECT_EQ(screen->cursor(), cursor);
        EXPECT_EQ(screen->unknown(), "");
    }

    const tapcore::TemporaryFolder data, home;
    std::optional<PseudoTerminal> terminal;
    std::optional<TerminalScreen> screen;
    std::size_t taken = 0;
};

TEST_F(TrainersScreen, ShowsTheLessonInColoursAndFollowsTheKeysAndTheSize) {
    start(24, 80);
    expectShown({2, 0}, R"(
English on qwerty, lesson 1                                   0:00 of 5:00 today
bbbbbbbbbbbbbbbbbbbbbbbbbbb                                   ..................

latelase rattleat ste els rell
N

- wpm   - right   0 of 5 words
bbbbbbbbbbbbbbb

e   timed 0 of 60   - of 40 wpm   - of 95 % right   day 1 of 2
b

e▁ a▁ t▁ s▁ r▁ l▁ n· i· o· d· h· c· g· u· m· p· y· w· b· f· k· v· j· x· z· q·
 33 33 33 33 33 33............................................................

 `   1   2   3   4   5   6   7   8   9   0   -   =
555 555 444 222 666 666 666 666 222 444 555 555 555
       q   w   e   r   t   y   u   i   o   p   [   ]    \
      555 444 222 666 666 666 666 222 444 555 555 555  555
        a   s   d   f   g   h   j   k   l   ;   '
       555 444 222 666 666 666 666 222 NNN 555 555
          z   x   c   v   b   n   m   ,   .   /
         555 444 222 666 666 666 666 222 444 555

                        uuuuuuu

next: l   right ring finger
      b

Esc leaves; what you typed is kept
..................................
)");
    terminal->type("#");
    expectShown({2, 0}, R"(
English on qwerty, lesson 1                                   0:00 of 5:00 today
bbbbbbbbbbbbbbbbbbbbbbbbbbb                                   ..................

latelase rattleat ste els rell
W

- wpm   0 % right   0 of 5 words
bbbbbbbbbbbbbbbbb

e   timed 0 of 60   - of 40 wpm   - of 95 % right   day 1 of 2
b

e▁ a▁ t▁ s▁ r▁ l▁ n· i· o· d· h· c· g· u· m· p· y· w· b· f· k· v· j· x· z· q·
 33 33 33 33 33 33............................................................

 `   1   2   3   4   5   6   7   8   9   0   -   =
555 555 444 222 666 666 666 666 222 444 555 555 555
       q   w   e   r   t   y   u   i   o   p   [   ]    \
      555 444 222 666 666 666 666 222 444 555 555 555  555
        a   s   d   f   g   h   j   k   l   ;   '
       555 444 222 666 666 666 666 222 NNN 555 555
          z   x   c   v   b   n   m   ,   .   /
         555 444 222 666 666 666 666 222 444 555

                        uuuuuuu

next: l   right ring finger
      b

Esc leaves; what you typed is kept
..................................
)");
    resize(6, 40);
    expectShown({0, 0}, R"(
latelase rattleat ste els rell
W
- wpm   0 % right   0 of 5 words
bbbbbbbbbbbbbbbbb
e 0/60 timed  -/40 wpm  -/95 % right
b
e▁ a▁ t▁ s▁ r▁ l▁ n· i· o· d· h· c· g·
 33 33 33 33 33 33.....................
u· m· p· y· w· b· f· k· v· j· x· z· q·
.......................................
next: l   right ring finger
      b
)");
}

TEST_F(TrainersScreen, TellsWithoutColoursWhatIsRightAndWrong) {
    start(12, 60, {{"NO_COLOR", "1"}}, {"--let-errors-stand"});
    expectShown({1, 0}, R"(
English on qwerty, lesson 1               0:00 of 5:00 today
bbbbbbbbbbbbbbbbbbbbbbbbbbb               ..................
latelase rattleat ste els rell
N
- wpm   - right   0 of 5 words
bbbbbbbbbbbbbbb
e 0/60 timed  -/40 wpm  -/95 % right
b
e▁ a▁ t▁ s▁ r▁ l▁ n· i· o· d· h· c· g· u· m· p· y· w· b· f·
                  .........................................
k· v· j· x· z· q·
..................
 `   1   2   3   4   5   6   7   8   9   0   -   =
       q   w   e   r   t   y   u   i   o   p   [   ]    \
        a   s   d   f   g   h   j   k   l   ;   '
                                       NNN
          z   x   c   v   b   n   m   ,   .   /

                        uuuuuuu
next: l   right ring finger
      b
)");
    terminal->type("#");
    expectShown({1, 1}, R"(
English on qwerty, lesson 1               0:00 of 5:00 today
bbbbbbbbbbbbbbbbbbbbbbbbbbb               ..................
latelase rattleat ste els rell
bN
- wpm   0 % right   0 of 5 words
bbbbbbbbbbbbbbbbb
e 0/60 timed  -/40 wpm  -/95 % right
b
e▁ a▁ t▁ s▁ r▁ l▁ n· i· o· d· h· c· g· u· m· p· y· w· b· f·
                  .........................................
k· v· j· x· z· q·
..................
 `   1   2   3   4   5   6   7   8   9   0   -   =
       q   w   e   r   t   y   u   i   o   p   [   ]    \
        a   s   d   f   g   h   j   k   l   ;   '
       NNN
          z   x   c   v   b   n   m   ,   .   /

                        uuuuuuu
next: a   left little finger
      b
)");
}

TEST_F(TrainersScreen, IsNotTakenWhereTheLocaleLacksLetters) {
    terminal.emplace(std::vector<std::string>{PROGRAMS "/tappora-practice", "--folder", data.path().string(),
                                              "--language", "ru"},
                     PseudoTerminal::Variables{{"HOME", home.path().string()},
                                               {"XDG_CONFIG_HOME", (home / "config").string()},
                                               {"XDG_RUNTIME_DIR", home.path().string()},
                                               {"TAPPORA_RESOURCES", RESOURCES},
                                               {"TERM", "xterm-256color"},
                                               {"LC_ALL", "C"}},
                     24, 80);
    EXPECT_EQ(terminal->wait(), 1);
    EXPECT_EQ(terminal->seen(),
              "tappora: LANG: the character set of this locale, ANSI_X3.4-1968, has no \"о\"; try "
              "LANG=C.UTF-8\r\n");
}

TEST_F(TrainersScreen, KeepsToAsciiWhereTheLocaleDoes) {
    start(8, 60, {{"LC_ALL", "C"}});
    expectShown({1, 0}, R"(
English on qwerty, lesson 1               0:00 of 5:00 today
bbbbbbbbbbbbbbbbbbbbbbbbbbb               ..................
latelase rattleat ste els rell
N
- wpm   - right   0 of 5 words
bbbbbbbbbbbbbbb
e 0/60 timed  -/40 wpm  -/95 % right
b
e0 a0 t0 s0 r0 l0 n. i. o. d. h. c. g. u. m. p. y. w. b. f.
 33 33 33 33 33 33.........................................
k. v. j. x. z. q.
..................
next: l   right ring finger
      b
Esc leaves; what you typed is kept
..................................
)");
}

}  // namespace
}  // namespace tappora
