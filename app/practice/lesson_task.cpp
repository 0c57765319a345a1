#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "app/common/command_line/records_json.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/program.h"
#include "app/practice/figures.h"
#include "app/practice/tasks.h"
#include "core/practice/lesson_plan.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::LetterModel;
using Letters = std::vector<std::string>;

Letters firstLetters(const LetterModel& model) {
    const auto count =
        std::min(model.order.size(), static_cast<std::size_t>(tapcore::PracticeRules(0).start));
    return {model.order.begin(), model.order.begin() + static_cast<std::ptrdiff_t>(count)};
}

std::optional<std::string> focusOf(const LessonOptions& options, const LetterModel& model) {
    if (!options.focus) return std::nullopt;
    const Letters letters = parseLetters("--focus", *options.focus, model);
    if (letters.size() > 1) throw UsageError("--focus: one letter, not " + *options.focus);
    return letters.front();
}

}  // namespace

void printLesson(const PracticeOptions& options, const LessonOptions& lesson,
                 const Environment& environment) {
    const auto model = chosenModel(options, environment, Settings::read(environment));
    const Letters open = lesson.open ? parseLetters("--open", *lesson.open, *model) : firstLetters(*model);
    const auto focus = focusOf(lesson, *model);
    const std::uint64_t seed = chosenSeed(options);
    tapcore::SeededRandom rng(seed);
    const Letters words = model->lesson(open, focus, lesson.count, rng);
    if (words.empty()) throw Failure("--open", fmt::format("{} make no words", fmt::join(open, ", ")));
    if (static_cast<std::int64_t>(words.size()) < lesson.count)
        complain(fmt::format("--open: {} make {} words, not {}", fmt::join(open, ", "), words.size(),
                             lesson.count));
    json result = {{"language", model->language}, {"seed", seed}, {"open", open}, {"words", words}};
    if (focus) result["focus"] = *focus;
    print(options.json ? jsonText(result) : fmt::format("{}\n", fmt::join(words, " ")));
}

void printPlan(const PracticeOptions& options, const Environment& environment) {
    const tapcore::Store store = openShown(options.folder, environment);
    const Settings settings = Settings::read(environment);
    TrainerSetup setup = choosePractice(options, environment, settings, store).setup;
    const tapcore::PracticeHistory history = readHistory(store);
    tapcore::FileProblems problems;
    const std::string remark = weighByOwn(setup, options, environment, settings, store, problems);
    complainOf(problems);
    if (!remark.empty()) complain("--mine: " + remark + "; the lesson is as usual");
    keepOptions(options, setup.model->language, environment);
    const std::uint64_t seed = chosenSeed(options);
    tapcore::SeededRandom rng(seed);
    const auto practised = history.totals(setup.layout);
    const tapcore::LessonPlan plan = planLesson(*setup.model, setup.rules, practised, setup.wish, rng);
    json result = {{"language", setup.model->language},
                   {"layout", setup.layout},
                   {"seed", seed},
                   {"targetWPM", setup.rules.targetWPM()},
                   {"goalSeconds", setup.goalSeconds},
                   {"letErrorsStand", setup.letErrorsStand},
                   {"open", plan.open},
                   {"openDigits", plan.openDigits},
                   {"openMarks", plan.openMarks},
                   {"stressed", plan.stressed},
                   {"words", plan.words}};
    if (setup.wish.own) result["own"] = {{"days", TrainerSetup::ownDays}, {"letters", *setup.wish.own}};
    print(jsonText(result));
}

}  // namespace tappora
