#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/common/folder/data_folder.h"
#include "app/common/folder/settings.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/system/environment.h"
#include "app/practice/trainer.h"
#include "core/files/store.h"
#include "core/practice/letter_model.h"

namespace tappora {

class CommandSyntax;

/// What the command line says about practising. What it leaves open, the settings say.
struct PracticeOptions {
    FolderOptions folder;
    KeyboardOptions keyboard;
    std::optional<std::string> language;
    std::optional<std::string> letters;
    std::optional<std::int64_t> words;
    std::optional<std::int64_t> speed;
    std::optional<std::int64_t> goal;  ///< minutes of a day
    std::optional<std::uint64_t> seed;
    std::optional<bool> capitals;
    std::optional<bool> punctuation;
    std::optional<bool> digits;
    std::optional<bool> letErrorsStand;
    std::optional<bool> mine;  ///< lessons are chosen by what is typed daily
    bool keep = false;         ///< what is said here is to be kept as settings
    bool json = false;
};

// Of the options, those of the trainer, and what its tasks take of them.
void addPracticeOptions(CommandSyntax& command, PracticeOptions& options);
void addLessonOptions(CommandSyntax& command, PracticeOptions& options);
void addLettersOptions(CommandSyntax& command, PracticeOptions& options);
void addPracticeRecordOptions(CommandSyntax& command, PracticeOptions& options);

/// The letter model of a language: of the one the options name, else the settings ("practice.language"), else
/// the locale's when there is a model of it, else English. Failure or UsageError when there is no model that
/// can be read.
std::shared_ptr<const tapcore::LetterModel> chosenModel(const PracticeOptions& options,
                                                        const Environment& environment,
                                                        const Settings& settings);

/// What is to be practised, and on which keyboard.
struct PracticeChoice {
    TrainerSetup setup;
    tapcore::Legends legends;          ///< of the layout
    std::vector<std::string> fitting;  ///< when it lacks letters, those that have all, by id
};

/// The layout is that of --layout, else the one set for the language ("practice.layout.LANGUAGE"), else the
/// keyboard's own when it types the language, else one that does.
PracticeChoice choosePractice(const PracticeOptions& options, const Environment& environment,
                              const Settings& settings, const tapcore::Store& store);

/// Has lessons chosen by what was typed in the last days, when the options or the settings
/// ("practice.mine") say so. Says why they are not when too little was counted; else nothing.
std::string weighByOwn(TrainerSetup& setup, const PracticeOptions& options, const Environment& environment,
                       const Settings& settings, const tapcore::Store& store,
                       tapcore::FileProblems& problems);

/// The seed given, else one by chance.
std::uint64_t chosenSeed(const PracticeOptions& options);

/// Keeps what the options say, and nothing else, as settings, when that is asked for.
void keepOptions(const PracticeOptions& options, const std::string& language, const Environment& environment);

/// The letters of a list such as "e, t, n", each once. UsageError, naming the option, when the list is empty,
/// or one that the model does not teach.
std::vector<std::string> parseLetters(std::string_view option, const std::string& list,
                                      const tapcore::LetterModel& model);

}  // namespace tappora
