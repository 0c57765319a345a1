#include "app/common/command_line/command_line.h"
#include "app/common/system/environment.h"
#include "app/practice/tasks.h"

namespace tappora {
namespace {

void declareLesson(CommandSyntax& task, PracticeOptions& options, LessonOptions& lesson) {
    addLessonOptions(task, options);
    task.option("--open", lesson.open, "The letters to use; the first six taught when not given")
        .type("LETTERS");
    task.option("--focus", lesson.focus, "The letter that two of three words contain").type("LETTER");
    task.option("--count", lesson.count, "The number of words").type("N").between(1, 10000);
}

void practise(CommandLine& line, const Environment& environment) {
    PracticeOptions options;
    LessonOptions lesson;
    line.describe("Practise typing, with words made of the letters you know and the one you are learning",
                  "tappora practice --language de --words 15");
    addPracticeOptions(line, options);
    line.task(
        "lesson", "Print the words that a seed gives, whatever you have practised",
        "tappora practice lesson --seed 7 --open \"e, a, t, s\" --focus s --count 12",
        [&](auto& task) { declareLesson(task, options, lesson); },
        [&] { printLesson(options, lesson, environment); });
    line.task(
        "letters", "Print how far each letter is", "tappora practice letters --json",
        [&](auto& task) { addLettersOptions(task, options); }, [&] { printLetters(options, environment); });
    line.task(
        "record", "Print your practice of today, of the last 7 days and at its best",
        "tappora practice record", [&](auto& task) { addPracticeRecordOptions(task, options); },
        [&] { printRecord(options, environment); });
    line.perform([&] {
        if (options.json) printPlan(options, environment);
        else runTrainer(options, environment);
    });
}

}  // namespace
}  // namespace tappora

int main(int argc, char** argv) {
    tappora::CommandLine line("tappora practice", {argv + 1, argv + argc});
    return tappora::guarded(line, [&] { tappora::practise(line, tappora::hostEnvironment()); });
}
