#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/common/system/environment.h"
#include "app/practice/practice_choices.h"

namespace tappora {

/// A lesson of `tappora practice lesson`: apart from --language and --seed, what it is made of.
struct LessonOptions {
    std::optional<std::string> open;  ///< the first letters taught when not given
    std::optional<std::string> focus;
    std::int64_t count = 30;
};

/// Prints the words that a seed gives.
void printLesson(const PracticeOptions& options, const LessonOptions& lesson, const Environment& environment);
/// Prints the table of the language's letters: how far each is.
void printLetters(const PracticeOptions& options, const Environment& environment);
/// Prints the practice of today, of the last 7 days and at its best.
void printRecord(const PracticeOptions& options, const Environment& environment);
/// Prints, as JSON, the first lesson that the trainer would give.
void printPlan(const PracticeOptions& options, const Environment& environment);

/// The trainer, on the whole terminal.
void runTrainer(const PracticeOptions& options, const Environment& environment);

}  // namespace tappora
