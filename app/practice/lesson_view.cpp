#include "app/practice/lesson_view.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <set>
#include <sstream>

#include "app/practice/practice_text.h"
#include "core/foundation/characters.h"
#include "core/foundation/language_rules.h"
#include "core/practice/practice_rows.h"

namespace tappora {
namespace {

using tapcore::LessonSession;
using tapcore::LetterState;
using tapcore::LetterStats;
namespace PracticeReview = tapcore::PracticeReview;
namespace PracticeRows = tapcore::PracticeRows;
using tapcore::PracticeRules;

/// Lines that belong together. Of several, those of the smallest rank are shown first when there is room for
/// few.
struct Block {
    int rank = 0;
    std::vector<FrameLine> lines;
};

// The text.

constexpr std::size_t fewRows = 3;      // so many show the row before, too
constexpr std::size_t widestText = 80;  // columns; the eye loses its way back in longer rows

std::size_t rowsOfText(std::size_t linesOfScreen) {
    if (linesOfScreen < 6) return 1;
    return linesOfScreen < 22 ? fewRows : 5;
}

Style styleAt(const LessonSession& session, std::size_t at) {
    const LessonSession::Mark mark = session.marks()[at];
    if (at == session.position()) return mark == LessonSession::Mark::wrong ? Style::nextWrong : Style::next;
    if (at > session.position()) return Style::plain;
    switch (mark) {
        case LessonSession::Mark::wrong:
            return Style::wrong;
        case LessonSession::Mark::mended:
            return Style::mended;
        default:
            return Style::right;
    }
}

FrameLine textLine(const LessonSession& session, const PracticeRows::Row& row) {
    FrameLine line;
    for (std::size_t at = row.start; at < row.end; ++at) {
        const Style style = styleAt(session, at);
        if (line.empty() || line.back().style != style) line.push_back({"", style});
        line.back().text += session.characters()[at];
    }
    return line;
}

/// The rows around the place in the text: it, as soon as there is one, the row before it, and what comes.
std::vector<FrameLine> textLines(const LessonSession& session, std::size_t lines, std::size_t columns) {
    std::size_t widest = 1;
    for (const std::string& character : session.characters()) widest = std::max(widest, columnsOf(character));
    const auto rows = PracticeRows::rows(session.text(), static_cast<std::int64_t>(columns / widest));
    const std::size_t current = PracticeRows::row(session.position(), rows).value_or(rows.size() - 1);
    const std::size_t before = current > 0 && lines >= fewRows ? 1 : 0;
    const std::size_t first = std::min(current - before, rows.size() - std::min(lines, rows.size()));
    std::vector<FrameLine> shown;
    for (std::size_t row = first; row < std::min(first + lines, rows.size()); ++row)
        shown.push_back(textLine(session, rows[row]));
    return shown;
}

// Figures.

FrameLine titleLine(const Trainer& trainer, const ScreenShape& shape) {
    const TrainerSetup& setup = trainer.setup();
    const FrameLine title = {{fmt::format("{} on {}, lesson {}", tapcore::englishName(setup.model->language),
                                          setup.layout, trainer.lessonNumber()),
                              Style::strong}};
    const std::string today = minutes(trainer.todaySeconds());
    const std::string goal = minutes(setup.goalSeconds);
    const std::size_t room = shape.columns - std::min(columnsOf(title) + 1, shape.columns);
    return spread(
        title,
        fitting({{{today + " of " + goal + " today", Style::faint}}, {{today + " of " + goal, Style::faint}}},
                room),
        shape.columns);
}

std::size_t wordsDone(const LessonSession& session) {
    const auto end = session.characters().begin() + static_cast<std::ptrdiff_t>(session.position());
    return static_cast<std::size_t>(std::count(session.characters().begin(), end, " "));
}

/// The speed and accuracy of some presses; "-" for what nothing was measured of.
std::string speedText(const LetterStats& stats) {
    return stats.timed > 0 ? std::to_string(PracticeRules::wpm(stats)) : "-";
}
std::string accuracyText(const LetterStats& stats) {
    return stats.presses + stats.misses > 0 ? percent(stats.accuracy()) : "-";
}

FrameLine statusLine(const Trainer& trainer, std::size_t columns) {
    const LetterStats all = tapcore::sumOf(trainer.session().counts());
    const std::string figures = fmt::format("{} wpm   {} right", speedText(all), accuracyText(all));
    const std::size_t done = wordsDone(trainer.session());
    const std::size_t words = trainer.plan().words.size();
    return fitting({{{figures, Style::strong}, {fmt::format("   {} of {} words", done, words)}},
                    {{figures, Style::strong}, {fmt::format("   {}/{}", done, words)}},
                    {{figures, Style::strong}}},
                   columns);
}

/// The letter whose figures are shown: the next one when it is among those stressed.
std::string focusOf(const Trainer& trainer) {
    const auto& stressed = trainer.plan().stressed;
    const std::string* next = trainer.session().expected();
    const bool isStressed = next && std::find(stressed.begin(), stressed.end(), *next) != stressed.end();
    return isStressed ? *next : trainer.plan().focus().value_or("");
}

/// A letter's three figures that decide, beside what they must reach, and its days while those are too few.
FrameLine focusLine(const Trainer& trainer, std::size_t columns) {
    const std::string letter = focusOf(trainer);
    const LetterStats stats = trainer.total(letter);
    const PracticeRules& rules = trainer.setup().rules;
    const std::string speed = speedText(stats);
    const std::string accuracy = accuracyText(stats);
    const std::string wanted = percent(rules.targetAccuracy);
    const std::string days =
        stats.days < rules.minDays
            ? fmt::format("   day {} of {}", std::max<std::int64_t>(stats.days, 1), rules.minDays)
            : "";
    const std::string amount = accuracy.substr(0, accuracy.find(' '));
    const Span name{letter, Style::strong};
    return fitting(
        {{name,
          {fmt::format("   timed {} of {}   {} of {} wpm   {} of {} right{}", stats.timed, rules.samples,
                       speed, rules.targetWPM(), accuracy, wanted, days)}},
         {name,
          {fmt::format(" {}/{} timed  {}/{} wpm  {}/{} right", stats.timed, rules.samples, speed,
                       rules.targetWPM(), amount, wanted)}},
         {name,
          {fmt::format(" {}/{} {}/{} {}", stats.timed, rules.samples, speed, rules.targetWPM(), accuracy)}}},
        columns);
}

// The letters.

/// How far a letter is, in one column: eighths of a block, or tenths where only ASCII can be shown.
std::string progressMark(double progress, bool unicode) {
    constexpr std::array<const char*, 8> eighths = {"▁", "▁", "▂", "▃", "▄", "▅", "▆", "▇"};
    if (unicode) return eighths[std::min<std::size_t>(static_cast<std::size_t>(progress * 8), 7)];
    return std::to_string(std::min<int>(static_cast<int>(progress * 10), 9));
}

Span letterMark(const Trainer& trainer, const std::string& letter, bool unicode) {
    switch (trainer.state(letter)) {
        case LetterState::notStarted:
            return {unicode ? "·" : ".", Style::faint};
        case LetterState::learned:
            return {unicode ? "█" : "*", Style::learned};
        case LetterState::slipping:
            return {"~", Style::slipping};
        default:
            return {progressMark(trainer.setup().rules.progress(trainer.total(letter)), unicode),
                    Style::learning};
    }
}

std::vector<FrameLine> letterLines(const Trainer& trainer, const ScreenShape& shape) {
    constexpr std::size_t columnsOfLetter = 3;
    std::vector<FrameLine> lines;
    for (const std::string& letter : trainer.setup().model->order) {
        if (lines.empty() || columnsOf(lines.back()) + columnsOfLetter - 1 > shape.columns)
            lines.emplace_back();
        Span mark = letterMark(trainer, letter, shape.unicode);
        lines.back().push_back({letter, trainer.isOpen(letter) ? Style::plain : Style::faint});
        mark.text += ' ';
        lines.back().push_back(std::move(mark));
    }
    return lines;
}

FrameLine nextKeyLine(const Trainer& trainer, const KeyboardView& keyboard, std::size_t columns) {
    const std::string* next = trainer.session().expected();
    if (next == nullptr) return {};
    const Span key{*next == " " ? "space" : *next, Style::strong};
    const std::string finger = keyboard.finger(*next).value_or("no key has it");
    return fitting({{{"next: "}, key, {"   " + finger}}, {key, {"   " + finger}}, {key, {" " + finger}}},
                   columns);
}

// Putting them together.

/// The blocks that there is room for, in their order: whole ones by rank, and then blank lines between them.
Frame stacked(const std::vector<Block>& blocks, const ScreenShape& shape) {
    std::vector<const Block*> byRank;
    for (const Block& block : blocks) byRank.push_back(&block);
    std::stable_sort(byRank.begin(), byRank.end(), [](auto* a, auto* b) { return a->rank < b->rank; });
    std::size_t room = shape.lines;
    std::set<const Block*> fitting;
    for (const Block* block : byRank) {
        if (block->lines.empty() || block->lines.size() > room) continue;
        room -= block->lines.size();
        fitting.insert(block);
    }
    Frame frame;
    for (const Block& block : blocks) {
        if (!fitting.contains(&block)) continue;
        if (!frame.lines.empty() && room > 0) {
            frame.lines.emplace_back();
            --room;
        }
        for (const FrameLine& line : block.lines) frame.lines.push_back(clipped(line, shape.columns));
    }
    return frame;
}

std::vector<FrameLine> noticeLines(const std::string& notice) {
    std::vector<FrameLine> lines;
    std::istringstream text(notice);
    for (std::string line; std::getline(text, line);) lines.push_back({{line, Style::wrong}});
    return lines;
}

// The review.

/// A star, given or not, before what it is for.
FrameLine starLine(bool isGiven, const std::string& reached, const std::string& mark, bool unicode) {
    const char* star = isGiven ? (unicode ? "★ " : "* ") : (unicode ? "☆ " : "- ");
    return {{star, isGiven ? Style::learned : Style::faint},
            {fmt::format("{:<12}", reached), Style::strong},
            {" " + mark, Style::faint}};
}

FrameLine speedLine(const Trainer& trainer, bool unicode) {
    const tapcore::LessonResult& result = *trainer.result();
    if (result.wpm == 0) return starLine(false, "no speed", "no press could be timed", unicode);
    const auto usual = trainer.usual();
    return starLine(result.stars[1], fmt::format("{} wpm", result.wpm),
                    usual ? fmt::format("{} is your usual speed", *usual) : "your first speed", unicode);
}

std::vector<FrameLine> starLines(const Trainer& trainer, bool unicode) {
    const tapcore::LessonResult& result = *trainer.result();
    return {starLine(result.stars[0], percent(result.accuracy) + " right",
                     fmt::format("{} is the mark", percent(trainer.setup().rules.targetAccuracy)), unicode),
            speedLine(trainer, unicode),
            starLine(result.stars[2], minutes(result.todaySeconds) + " today",
                     fmt::format("{} is your goal", minutes(result.goalSeconds)), unicode)};
}

std::string newsText(const tapcore::LessonResult::News& news) {
    using Result = tapcore::LessonResult;
    if (const auto* letter = std::get_if<Result::NewLetter>(&news))
        return "A new letter is open: " + letter->letter;
    if (const auto* best = std::get_if<Result::PersonalBest>(&news))
        return fmt::format("Your fastest lesson on this layout, by {} wpm", best->gain);
    if (const auto* focus = std::get_if<Result::Focus>(&news))
        return fmt::format("{} at {} wpm, faster than before", focus->letter, focus->wpm);
    return "Your fastest lesson of the week";
}

std::vector<FrameLine> remarkLines(const Trainer& trainer) {
    std::vector<FrameLine> lines;
    const tapcore::LessonResult& result = *trainer.result();
    if (result.news) lines.push_back({{newsText(*result.news), Style::learned}});
    if (result.streak > 1) lines.push_back({{fmt::format("{} days in a row", result.streak)}});
    const std::vector<std::string> slowest = trainer.slowest();
    if (!slowest.empty()) lines.push_back({{fmt::format("Took longest: {}", fmt::join(slowest, ", "))}});
    return lines;
}

}  // namespace

Frame lessonFrame(const Trainer& trainer, const KeyboardView& keyboard, const std::string& notice,
                  const ScreenShape& shape) {
    const std::string* next = trainer.session().expected();
    return stacked(
        {{7, {titleLine(trainer, shape)}},
         {1, textLines(trainer.session(), rowsOfText(shape.lines), std::min(shape.columns, widestText))},
         {2, {statusLine(trainer, shape.columns)}},
         {4, {focusLine(trainer, shape.columns)}},
         {5, letterLines(trainer, shape)},
         {6, keyboard.lines(next ? *next : "", shape)},
         {3, {nextKeyLine(trainer, keyboard, shape.columns)}},
         {0, noticeLines(notice)},
         {8,
          {fitting({{{"Esc leaves; what you typed is kept", Style::faint}}, {{"Esc leaves", Style::faint}}},
                   shape.columns)}}},
        shape);
}

Frame reviewFrame(const Trainer& trainer, const std::string& notice, const ScreenShape& shape) {
    return stacked(
        {{4, {titleLine(trainer, shape)}},
         {1, starLines(trainer, shape.unicode)},
         {3, remarkLines(trainer)},
         {5, letterLines(trainer, shape)},
         {0, noticeLines(notice)},
         {2, {{{"Enter", Style::strong}, {" the next lesson   "}, {"Esc", Style::strong}, {" leave"}}}}},
        shape);
}

}  // namespace tappora
