#include "app/ask/lesson_offer.h"

#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <vector>

#include "app/common/command_line/companion.h"
#include "app/common/command_line/confirm.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/practice/practice_request.h"

namespace tappora {
namespace {

/// "e, t, n", or "" when the answer ends with no lesson.
std::string lettersOf(const std::string& answer) {
    std::string letters;
    for (const std::string& letter : tapcore::PracticeRequest::letters(answer))
        letters += (letters.empty() ? "" : ", ") + letter;
    return letters;
}

[[noreturn]] void becomeTrainer(const std::string& letters, const FolderOptions& folder) {
    std::vector<std::string> arguments = {"--letters", letters};
    if (folder.folder) arguments.insert(arguments.end(), {"--folder", *folder.folder});
    if (folder.today) arguments.insert(arguments.end(), {"--today", *folder.today});
    try {
        becomeCompanion("practice", "tappora-practice", arguments);
    } catch (const Failure& failure) {
        complain(failure.what());
    }
    ::_exit(1);
}

/// Runs the trainer and comes back at its end.
void practise(const std::string& letters, const FolderOptions& folder) {
    const pid_t child = ::fork();
    if (child < 0) throw Failure("practice", std::generic_category().message(errno));
    if (child == 0) becomeTrainer(letters, folder);
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;  // Ctrl-C is the trainer's
}

}  // namespace

void offerLesson(const std::string& answer, const FolderOptions& folder, const Environment& environment) {
    const std::string letters = lettersOf(answer);
    if (letters.empty()) return;
    if (!environment.onTerminal || ::isatty(STDIN_FILENO) != 1)
        fmt::print(stderr, "To practise: tappora practice --letters \"{}\"\n", letters);
    else if (agrees(fmt::format("Practise {} now?", letters))) practise(letters, folder);
}

}  // namespace tappora
