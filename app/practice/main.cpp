#include "app/common/command_line.h"
#include "app/practice/commands.h"

namespace tappora {
namespace {

void declareLesson(CommandLine& line, PracticeOptions& options, LessonOptions& lesson) {
    CommandSyntax command =
        line.task("lesson", "Print the words that a seed gives, whatever was practised",
                  "tappora practice lesson --seed 7 --open \"e, a, t, s\" --focus s --count 12");
    addLessonOptions(command, options);
    command.option("--open", lesson.open, "The letters to use, the first six taught when not given")
        .type("LETTERS");
    command.option("--focus", lesson.focus, "The letter that two of three words hold").type("LETTER");
    command.option("--count", lesson.count, "How many words (1 to 10000)")
        .type("N")
        .between(1, 10000);
}

void practise(CommandLine& line, const Environment& environment) {
    PracticeOptions options;
    LessonOptions lesson;
    line.describe("The trainer: words of the letters you know and the one you are learning.",
                  "tappora practice --language de --words 15");
    addPracticeOptions(line, options);
    declareLesson(line, options, lesson);
    CommandSyntax letters =
        line.task("letters", "Print how far each letter is", "tappora practice letters --json");
    addLettersOptions(letters, options);
    CommandSyntax record = line.task("record", "Print what practising came to, of late and at its best",
                                     "tappora practice record");
    addRecordOptions(record, options);
    line.parse();
    const std::string name = line.chosenTask();
    if (name == "lesson") printLesson(options, lesson, environment);
    else if (name == "letters") printLetters(options, environment);
    else if (name == "record") printRecord(options, environment);
    else if (options.json) printPlan(options, environment);
    else runTrainer(options, environment);
}

}  // namespace
}  // namespace tappora

int main(int argc, char** argv) {
    tappora::CommandLine line("tappora practice", {argv + 1, argv + argc});
    return tappora::guarded(line, [&] { tappora::practise(line, tappora::hostEnvironment()); });
}
