#include "app/practice/practice_choices.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/practice_language.h"
#include "app/common/program.h"
#include "app/common/system/file_text.h"
#include "app/common/system/resources.h"
#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"
#include "core/practice/lesson_length.h"
#include "core/practice/practice_course.h"
#include "core/practice/practice_layout.h"
#include "core/practice/practice_request.h"
#include "core/settings/setting.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::LetterModel;
using tapcore::PracticeCourse;
namespace PracticeLayout = tapcore::PracticeLayout;

constexpr const char* wordsKey = "practice.length";
constexpr const char* speedKey = "practice.targetWPM";
constexpr const char* goalKey = "practice.goalMinutes";
constexpr const char* capitalsKey = "practice.capitals";
constexpr const char* punctuationKey = "practice.punctuation";
constexpr const char* digitsKey = "practice.digits";
constexpr const char* errorsKey = "practice.letErrorsStand";
constexpr const char* mineKey = "practice.mine";

std::string layoutKey(const std::string& language) { return "practice.layout." + language; }

/// Why a model that is there could not be loaded.
[[noreturn]] void failWithReason(const std::string& language, const fs::path& path) {
    const std::string text = requiredText(path, tapcore::readFile(path));
    try {
        LetterModel::parse(language, text);
    } catch (const tapcore::JsonError& error) {
        throw Failure(path.string(), error.what());
    }
    throw Failure(path.string(), "cannot be read");
}

bool isAmong(const std::vector<std::string>& all, const std::string& one) {
    return std::find(all.begin(), all.end(), one) != all.end();
}

bool sumFits(const LetterModel::Counts& counts) {
    // The sum of any part of them is between those of all below and all above 0.
    std::int64_t below = 0, above = 0;
    return std::none_of(counts.begin(), counts.end(), [&](const auto& count) {
        std::int64_t& sum = count.second < 0 ? below : above;
        return __builtin_add_overflow(sum, count.second, &sum);
    });
}

/// A model whose counts cannot be summed up would end the program during a lesson.
void checkSums(const LetterModel& model, const fs::path& path) {
    for (const auto& [context, counts] : model.transitions)
        if (!sumFits(counts))
            throw Failure(path.string(), "transitions." + context + ": the sum does not fit into 64 bits");
}

/// Of all layouts that are known, and of the one in force, which may not be among them.
PracticeLayout::LegendsByLayout allLegends(const Keyboards& keyboards, const LegendSet& inForce) {
    std::vector<LegendSet> all = keyboards.allLayouts();
    PracticeLayout::LegendsByLayout legends;
    for (LegendSet& layout : all) legends[layout.id] = std::move(layout.legends);
    legends[inForce.id] = inForce.legends;
    return legends;
}

LegendSet chosenLayout(const PracticeOptions& options, const LetterModel& model,
                       const Environment& environment, const Settings& settings,
                       const tapcore::Store& store) {
    const Keyboards keyboards(environment, store);
    LegendSet own = keyboards.chosenLayout(options.keyboard);
    if (options.keyboard.layout) return own;
    PracticeLayout::LayoutByLanguage set;
    if (const auto layout = settings.text(layoutKey(model.language))) set[model.language] = *layout;
    if (set.empty() && PracticeLayout::types(model.order, own.legends)) return own;
    const auto legends = allLegends(keyboards, own);
    const std::string picked = PracticeLayout::pick(model.language, model.order, own.id, set, legends);
    return picked == own.id ? own : keyboards.layout(layoutKey(model.language), picked);
}

bool isOn(std::optional<bool> option, const char* key, const Settings& settings) {
    return option ? *option : settings.flag(key);
}

tapcore::LessonWish wishOf(const PracticeOptions& options, const Settings& settings, const LetterModel& model,
                           const std::string& layout) {
    const auto opened = [&](const std::string& key) { return settings.integer(key).value_or(0); };
    tapcore::LessonWish wish;
    wish.words = tapcore::LessonLength::words(options.words ? options.words : settings.integer(wordsKey));
    if (options.letters) wish.letters = parseLetters("--letters", *options.letters, model);
    wish.extras = {isOn(options.capitals, capitalsKey, settings),
                   isOn(options.punctuation, punctuationKey, settings),
                   isOn(options.digits, digitsKey, settings)};
    wish.lettersOpened = opened(lettersOpenedKey(model.language, layout));
    wish.digitsOpened = opened(PracticeCourse(PracticeCourse::digits).openedKey(layout));
    wish.marksOpened = opened(PracticeCourse(PracticeCourse::marks).openedKey(layout));
    return wish;
}

void keepLayout(const std::string& chosen, const std::string& language, Settings& settings) {
    const auto layouts =
        PracticeLayout::setting(chosen == "auto" ? std::string(PracticeLayout::own) : chosen, language, {});
    if (layouts.empty()) settings.remove(layoutKey(language));
    else settings.setText(layoutKey(language), layouts.at(language));
}

void addLanguage(CommandSyntax& command, PracticeOptions& options) {
    command.option("--language", options.language, "The language of the words, by its code, such as de")
        .type("CODE");
}

/// An option takes the same numbers as its setting.
void asSet(Option& option, const char* key) {
    const tapcore::Setting& setting = tapcore::settingOf(key);
    option.between(static_cast<double>(setting.least), static_cast<double>(setting.most));
}

void addSpeed(CommandSyntax& command, PracticeOptions& options) {
    asSet(command.option("--speed", options.speed, "The words per minute to reach").type("WPM"), speedKey);
}

void addGoal(CommandSyntax& command, PracticeOptions& options) {
    asSet(command.option("--goal", options.goal, "The minutes to practise a day").type("MINUTES"), goalKey);
}

void addSeed(CommandSyntax& command, PracticeOptions& options) {
    command.option("--seed", options.seed, "Give the same words for the same number").type("N");
}

void addJson(CommandSyntax& command, PracticeOptions& options) {
    command.flag("--json", options.json, "Print as JSON");
}

}  // namespace

void addPracticeOptions(CommandSyntax& command, PracticeOptions& options) {
    addFolderOptions(command, options.folder);
    addKeyboardOptions(command, options.keyboard);
    addLanguage(command, options);
    command.option("--letters", options.letters, "The letters to practise, such as \"e, t, n\"")
        .type("LETTERS");
    asSet(command.option("--words", options.words, "The words of a lesson").type("N"), wordsKey);
    addSpeed(command, options);
    addGoal(command, options);
    addSeed(command, options);
    command.flag("--capitals,!--no-capitals", options.capitals, "Mix in capital letters");
    command.flag("--punctuation,!--no-punctuation", options.punctuation, "Mix in punctuation marks");
    command.flag("--digits,!--no-digits", options.digits, "Mix in numbers");
    command.flag("--let-errors-stand,!--no-let-errors-stand", options.letErrorsStand,
                 "Let wrong keys pass; otherwise each must be corrected");
    command.flag("--mine,!--no-mine", options.mine,
                 "Choose letters and words by what you typed in the last 30 days");
    command.flag("--keep", options.keep, "Save these choices as settings");
    command.flag("--json", options.json, "Print the lesson that would begin, as JSON");
}

void addLessonOptions(CommandSyntax& command, PracticeOptions& options) {
    addLanguage(command, options);
    addSeed(command, options);
    addJson(command, options);
}

void addLettersOptions(CommandSyntax& command, PracticeOptions& options) {
    addFolderOptions(command, options.folder);
    addLayoutOption(command, options.keyboard);
    addLanguage(command, options);
    addSpeed(command, options);
    addJson(command, options);
}

void addPracticeRecordOptions(CommandSyntax& command, PracticeOptions& options) {
    addFolderOptions(command, options.folder);
    addGoal(command, options);
    addJson(command, options);
}

std::shared_ptr<const LetterModel> chosenModel(const PracticeOptions& options, const Environment& environment,
                                               const Settings& settings) {
    const fs::path folder = resourceFolder(environment) / "Practice";
    const std::vector<std::string> available = LetterModel::available(folder);
    const std::string language =
        options.language ? *options.language : practiceLanguage(settings, environment, available);
    const fs::path path = folder / (language + ".json");
    if (auto model = LetterModel::load(language, folder)) {
        checkSums(*model, path);
        return model;
    }
    if (isAmong(available, language)) failWithReason(language, path);
    throw UsageError("--language: " + noSuch("language", language, available));
}

PracticeChoice choosePractice(const PracticeOptions& options, const Environment& environment,
                              const Settings& settings, const tapcore::Store& store) {
    const auto model = chosenModel(options, environment, settings);
    LegendSet layout = chosenLayout(options, *model, environment, settings, store);
    const std::int64_t speed = options.speed ? *options.speed : *settings.integer(speedKey);
    const std::int64_t goal = options.goal ? *options.goal : *settings.integer(goalKey);
    TrainerSetup setup{.model = model,
                       .rules = tapcore::PracticeRules(speed),
                       .wish = wishOf(options, settings, *model, layout.id),
                       .layout = layout.id,
                       .goalSeconds = goal * 60,
                       .letErrorsStand = isOn(options.letErrorsStand, errorsKey, settings)};
    std::vector<std::string> fitting;
    if (!PracticeLayout::types(model->order, layout.legends))
        fitting = PracticeLayout::fitting(model->order, allLegends(Keyboards(environment, store), layout));
    return {std::move(setup), std::move(layout.legends), std::move(fitting)};
}

std::string weighByOwn(TrainerSetup& setup, const PracticeOptions& options, const Environment& environment,
                       const Settings& settings, const tapcore::Store& store,
                       tapcore::FileProblems& problems) {
    if (!isOn(options.mine, mineKey, settings)) return "";
    const tapcore::Calendar& calendar = environment.calendar;
    const tapcore::Day day = today(options.folder, environment, calendar);
    const auto counts = store.summary(TrainerSetup::ownDays, day, calendar, &problems).byKey;
    const Keyboards keyboards(environment, store);
    const LegendSet daily = keyboards.chosenLayout({.board = options.keyboard.board, .layout = std::nullopt});
    setup.wish.own = tapcore::ownLetters(counts, daily.legends, setup.model->order);
    if (!setup.wish.own)
        return fmt::format("too little was counted in the last {} days", TrainerSetup::ownDays);
    setup.model = std::make_shared<const LetterModel>(tapcore::weighed(*setup.model, *setup.wish.own));
    return "";
}

std::uint64_t chosenSeed(const PracticeOptions& options) {
    if (options.seed) return *options.seed;
    std::random_device chance;
    return (std::uint64_t{chance()} << 32) | chance();
}

void keepOptions(const PracticeOptions& options, const std::string& language,
                 const Environment& environment) {
    if (!options.keep) return;
    const std::pair<std::optional<bool>, const char*> flags[] = {{options.capitals, capitalsKey},
                                                                 {options.punctuation, punctuationKey},
                                                                 {options.digits, digitsKey},
                                                                 {options.letErrorsStand, errorsKey},
                                                                 {options.mine, mineKey}};
    Settings::change(environment, [&](Settings& settings) {
        if (options.language) settings.setText(practiceLanguageKey, language);
        if (options.words) settings.setInteger(wordsKey, *options.words);
        if (options.speed) settings.setInteger(speedKey, *options.speed);
        if (options.goal) settings.setInteger(goalKey, *options.goal);
        for (const auto& [flag, key] : flags)
            if (flag) settings.setFlag(key, *flag);
        if (options.keyboard.layout) keepLayout(*options.keyboard.layout, language, settings);
    });
}

std::vector<std::string> parseLetters(std::string_view option, const std::string& list,
                                      const LetterModel& model) {
    std::string line = "practise: " + list;
    std::replace(line.begin(), line.end(), '\n', ' ');
    const auto letters = tapcore::PracticeRequest::letters(line);
    if (letters.empty()) throw UsageError(fmt::format("{}: no letters: {}; write \"e, t, n\"", option, list));
    for (const std::string& letter : letters)
        if (!isAmong(model.order, letter))
            throw UsageError(fmt::format("{}: {}", option, noSuch("letter", letter, model.order)));
    return letters;
}

}  // namespace tappora
