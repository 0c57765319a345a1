#include "app/practice/lesson_view.h"

#include <fmt/format.h>

#include <algorithm>

#include "app/practice/figures.h"
#include "app/practice/frame_blocks.h"
#include "core/foundation/characters.h"
#include "core/practice/practice_rows.h"

namespace tappora {
namespace {

using tapcore::LessonSession;
using tapcore::LetterStats;
namespace PracticeRows = tapcore::PracticeRows;
using tapcore::PracticeRules;

// The text.

constexpr std::size_t fewRows = 3;      // so many show the row before, too
constexpr std::size_t widestText = 80;  // columns; the eye loses its way back in longer rows

std::size_t rowsOfText(std::size_t linesOfScreen) {
    if (linesOfScreen < 6) return 1;
    return linesOfScreen < 22 ? fewRows : 5;
}

SpanStyle styleAt(const LessonSession& session, std::size_t at) {
    const LessonSession::Outcome outcome = session.outcomes()[at];
    if (at == session.position())
        return outcome == LessonSession::Outcome::wrong ? SpanStyle::nextWrong : SpanStyle::next;
    if (at > session.position()) return SpanStyle::plain;
    switch (outcome) {
        case LessonSession::Outcome::wrong:
            return SpanStyle::wrong;
        case LessonSession::Outcome::corrected:
            return SpanStyle::corrected;
        default:
            return SpanStyle::right;
    }
}

FrameLine textLine(const LessonSession& session, const PracticeRows::Row& row) {
    FrameLine line;
    for (std::size_t at = row.start; at < row.end; ++at) {
        const SpanStyle style = styleAt(session, at);
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

std::size_t wordsDone(const LessonSession& session) {
    const auto end = session.characters().begin() + static_cast<std::ptrdiff_t>(session.position());
    return static_cast<std::size_t>(std::count(session.characters().begin(), end, " "));
}

FrameLine statusLine(const Trainer& trainer, std::size_t columns) {
    const LetterStats all = tapcore::sumOf(trainer.session().counts());
    const std::string figures = fmt::format("{} wpm   {} right", speedText(all), accuracyText(all));
    const std::size_t done = wordsDone(trainer.session());
    const std::size_t words = trainer.plan().words.size();
    return fitting({{{figures, SpanStyle::strong}, {fmt::format("   {} of {} words", done, words)}},
                    {{figures, SpanStyle::strong}, {fmt::format("   {}/{}", done, words)}},
                    {{figures, SpanStyle::strong}}},
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
    const Span name{letter, SpanStyle::strong};
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

FrameLine nextKeyLine(const Trainer& trainer, const KeyboardView& keyboard, std::size_t columns) {
    const std::string* next = trainer.session().expected();
    if (next == nullptr) return {};
    const Span key{*next == " " ? "space" : *next, SpanStyle::strong};
    const std::string finger = keyboard.finger(*next).value_or("no key has it");
    return fitting({{{"next: "}, key, {"   " + finger}}, {key, {"   " + finger}}, {key, {" " + finger}}},
                   columns);
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
          {fitting({{{"Esc leaves; what you typed is kept", SpanStyle::faint}},
                    {{"Esc leaves", SpanStyle::faint}}},
                   shape.columns)}}},
        shape);
}

}  // namespace tappora
