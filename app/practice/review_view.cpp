#include "app/practice/review_view.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <utility>
#include <variant>

#include "app/practice/figures.h"
#include "app/practice/frame_blocks.h"

namespace tappora {
namespace {

/// A star, given or not, before what it is for.
FrameLine starLine(bool isGiven, const std::string& reached, const std::string& mark, bool unicode) {
    const char* star = isGiven ? (unicode ? "★ " : "* ") : (unicode ? "☆ " : "- ");
    return {{star, isGiven ? SpanStyle::learned : SpanStyle::faint},
            {fmt::format("{:<12}", reached), SpanStyle::strong},
            {" " + mark, SpanStyle::faint}};
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

/// By what the lesson was chosen, when that is what is typed daily, and what that cannot tell.
std::vector<FrameLine> choiceLines(const Trainer& trainer) {
    const tapcore::LessonWish& wish = trainer.setup().wish;
    if (!wish.own) return {};
    const auto focus = wish.letters.empty() ? trainer.plan().focus() : std::nullopt;
    const std::string what = focus ? fmt::format("Chosen for you: {} is {:.0f} % of the letters you typed",
                                                 *focus, tapcore::shareOf(*focus, *wish.own) * 100)
                                   : "The words have your letters as often as you typed them";
    return {{{fmt::format("{} in {} days", what, TrainerSetup::ownDays)}},
            {{"Daily counts hold neither pairs of letters nor errors", SpanStyle::faint}}};
}

std::vector<FrameLine> remarkLines(const Trainer& trainer) {
    std::vector<FrameLine> lines;
    const tapcore::LessonResult& result = *trainer.result();
    if (result.news) lines.push_back({{newsText(*result.news), SpanStyle::learned}});
    if (result.streak > 1) lines.push_back({{fmt::format("{} days in a row", result.streak)}});
    const std::vector<std::string> slowest = trainer.slowest();
    if (!slowest.empty()) lines.push_back({{fmt::format("Took longest: {}", fmt::join(slowest, ", "))}});
    for (FrameLine& line : choiceLines(trainer)) lines.push_back(std::move(line));
    return lines;
}

}  // namespace

Frame reviewFrame(const Trainer& trainer, const std::string& notice, const ScreenShape& shape) {
    return stacked(
        {{4, {titleLine(trainer, shape)}},
         {1, starLines(trainer, shape.unicode)},
         {3, remarkLines(trainer)},
         {5, letterLines(trainer, shape)},
         {0, noticeLines(notice)},
         {2,
          {{{"Enter", SpanStyle::strong}, {" the next lesson   "}, {"Esc", SpanStyle::strong}, {" leave"}}}}},
        shape);
}

}  // namespace tappora
