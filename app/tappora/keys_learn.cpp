// Learning what keys type, on the terminal.

#include <fmt/format.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <clocale>
#include <cstdio>

#include "app/common/folder/folder_settings.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/signals.h"
#include "app/common/terminal/key_decoder.h"
#include "app/tappora/key_learning.h"
#include "app/tappora/keys_tasks.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

/// A terminal that hands over each key at once and shows nothing of it, put back in the end.
class SilentTerminal {
  public:
    SilentTerminal() {
        if (isatty(STDOUT_FILENO) != 1 || tcgetattr(STDIN_FILENO, &before_) != 0)
            throw Failure("keys learn", "not a terminal: keys can be pressed only on one");
        termios silent = before_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | IEXTEN);  // Ctrl-C stays a signal
        silent.c_cc[VQUIT] = silent.c_cc[VSUSP] = _POSIX_VDISABLE;
        silent.c_iflag &= ~static_cast<tcflag_t>(IXON);
        tcsetattr(STDIN_FILENO, TCSANOW, &silent);
    }
    SilentTerminal(const SilentTerminal&) = delete;
    SilentTerminal& operator=(const SilentTerminal&) = delete;
    ~SilentTerminal() { tcsetattr(STDIN_FILENO, TCSANOW, &before_); }

  private:
    termios before_{};
};

std::int64_t milliseconds() {
    using namespace std::chrono;
    return duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// What comes next: keys, or the end when the terminal is gone or the program is to end.
std::vector<ScreenEvent> nextEvents(KeyDecoder& decoder, const SignalQueue& signals) {
    std::array<pollfd, 2> sources = {{{STDIN_FILENO, POLLIN, 0}, {signals.descriptor(), POLLIN, 0}}};
    const int wait = decoder.isWaiting() ? static_cast<int>(KeyDecoder::escapeDelay) : -1;
    ::poll(sources.data(), sources.size(), wait);
    if (signals.next()) return {{ScreenEvent::Kind::end, {}}};
    if (sources[0].revents == 0) return decoder.settle(milliseconds());
    std::array<char, 256> bytes;
    const ssize_t got = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (got <= 0) return {{ScreenEvent::Kind::gone, {}}};
    return decoder.decode({bytes.data(), static_cast<std::size_t>(got)}, milliseconds());
}

void ask(KeyLearning& learning, const std::string& introduction) {
    const SilentTerminal terminal;
    print(introduction);
    const SignalQueue signals{SIGINT, SIGTERM, SIGHUP};
    KeyDecoder decoder;
    while (!learning.isOver()) {
        print("\r\033[K" + learning.prompt());
        std::fflush(stdout);
        for (const ScreenEvent& event : nextEvents(decoder, signals)) learning.take(event);
    }
    print("\n");
}

std::string legend(const tapcore::Legends& legends, tapcore::KeyCode code, std::size_t level) {
    const auto found = legends.find(code);
    return found == legends.end() || found->second.size() <= level ? "" : found->second[level];
}

}  // namespace

void learnKeys(const KeysOptions& options, const Environment& environment) {
    if (std::setlocale(LC_CTYPE, "") == nullptr) std::setlocale(LC_CTYPE, "C.UTF-8");
    const tapcore::Store store = openStore(options.folder, environment);
    const Keyboards keyboards(environment, store);
    const tapcore::Board board = keyboards.chosenBoard(options.keyboard);
    const LegendSet layout = keyboards.chosenLayout(options.keyboard);
    KeyLearning learning(board, layout.legends);
    ask(learning,
        fmt::format("{}, {}: press each key that is asked for, alone and then with shift. Enter goes "
                    "on without it, Backspace goes back, Esc ends and keeps what was pressed, Ctrl-C "
                    "keeps nothing.\n",
                    board.id, layout.name));
    if (learning.isStopped()) throw Failure("keys learn", "stopped; nothing was changed");
    std::size_t count = 0;
    changeFolderSettings(options.folder, environment, [&](tapcore::FolderConfig& config) {
        for (const auto& [code, key] : learning.learned())
            for (const bool shift : {false, true}) {
                const std::string& text = shift ? key.shifted : key.plain;
                if (text.empty() || text == legend(layout.legends, code, shift ? 1 : 0)) continue;
                config.setLearned(code, shift, text, board.id, layout.id);
                ++count;
            }
    });
    print(fmt::format("{} kept that {} shows otherwise\n", tapcore::counted(count, "text", "texts"),
                      layout.name));
}

}  // namespace tappora
