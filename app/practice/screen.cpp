#include "app/practice/screen.h"

#include <curses.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <term.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <iterator>
#include <optional>
#include <utility>

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/signals.h"
#include "app/practice/screen_locale.h"
#include "app/practice/span_look.h"

// Macros of terminal capabilities that clash with our own names.
#undef columns
#undef lines

namespace tappora {
namespace {

bool wantsColours(const Environment& environment) {
    const auto refusal = environment.variable("NO_COLOR");
    return !(refusal && !refusal->empty());
}

ScreenEvent::Kind kindOf(int signal) {
    switch (signal) {
        case SIGWINCH:
            return ScreenEvent::Kind::resize;
        case SIGTSTP:
            return ScreenEvent::Kind::suspend;
        case SIGINT:
            return ScreenEvent::Kind::leave;
        default:
            return ScreenEvent::Kind::end;
    }
}

/// Asks the terminal to tell when its window loses the keyboard and when it has it again. Only those that
/// know control sequences are asked; they pass over a mode that they have not. Nothing is amiss when one that
/// is gone is asked.
void reportFocus(bool isWanted) {
    const std::string_view mode = isWanted ? "\033[?1004h" : "\033[?1004l";
    if (!std::string_view(cursor_address).starts_with("\033[")) return;
    [[maybe_unused]] const ssize_t written = write(STDOUT_FILENO, mode.data(), mode.size());
}

/// Takes over a size that the terminal has got.
void fitToTerminal() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row > 0 && size.ws_col > 0)
        resizeterm(size.ws_row, size.ws_col);
}

}  // namespace

std::int64_t steadyMilliseconds() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

class Screen::Implementation {
  public:
    explicit Implementation(const Environment& environment);
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;
    ~Implementation() {
        reportFocus(false);
        endwin();
        delscreen(terminal_);
    }

    /// Paints a line; the cursor's place, when the character to be typed next is in it.
    std::optional<int> paint(const FrameLine& line, int at) const;
    std::vector<ScreenEvent> events(std::int64_t milliseconds);
    static void suspend();

  private:
    static void takeControlKeys();
    void startColours(const Environment& environment);
    void appendSignals(std::vector<ScreenEvent>& events) const;
    std::vector<ScreenEvent> readKeys();

    SignalQueue signals_{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGWINCH};  // taken as events
    SCREEN* terminal_ = nullptr;
    bool hasColours_ = false;
    KeyDecoder decoder_;
};

Screen::Implementation::Implementation(const Environment& environment) {
    if (isatty(STDIN_FILENO) == 0 || isatty(STDOUT_FILENO) == 0)
        throw Failure("the full screen",
                      "needs a terminal for input and output; without one, see lesson, letters and "
                      "record in --help");
    const std::string name = environment.variable("TERM").value_or("");
    terminal_ = newterm(nullptr, stdout, stdin);
    if (terminal_ == nullptr) throw Failure("TERM", fmt::format("\"{}\": not a terminal known here", name));
    if (cursor_address == nullptr) {
        endwin();
        delscreen(terminal_);
        throw Failure("TERM", fmt::format("\"{}\": this terminal cannot show a full screen", name));
    }
    cbreak();
    noecho();
    nonl();
    takeControlKeys();
    startColours(environment);
    reportFocus(true);
}

/// As signals, Ctrl-C and Ctrl-Z would overtake the keys typed before them, and have the terminal throw those
/// away.
void Screen::Implementation::takeControlKeys() {
    termios settings{};
    if (tcgetattr(STDIN_FILENO, &settings) != 0) return;
    settings.c_cc[VINTR] = _POSIX_VDISABLE;
    settings.c_cc[VSUSP] = _POSIX_VDISABLE;
    tcsetattr(STDIN_FILENO, TCSANOW, &settings);
    def_prog_mode();
}

void Screen::Implementation::startColours(const Environment& environment) {
    if (!has_colors() || !wantsColours(environment)) return;
    start_color();
    const short background = use_default_colors() == OK ? -1 : COLOR_BLACK;
    defineColours(background);
    hasColours_ = true;
}

std::optional<int> Screen::Implementation::paint(const FrameLine& line, int at) const {
    std::optional<int> cursor;
    move(at, 0);
    for (const Span& span : line) {
        const bool isNext = span.style == SpanStyle::next || span.style == SpanStyle::nextWrong;
        if (isNext && !cursor) cursor = getcurx(stdscr);
        const SpanLook look = lookOf(span.style);
        attr_set(hasColours_ ? look.coloured : look.plain, hasColours_ ? look.pair : 0, nullptr);
        const std::wstring wide = wideText(span.text);
        addnwstr(wide.c_str(), static_cast<int>(wide.size()));
    }
    attr_set(A_NORMAL, 0, nullptr);
    return cursor;
}

std::vector<ScreenEvent> Screen::Implementation::events(std::int64_t milliseconds) {
    const std::int64_t wait =
        decoder_.isWaiting() ? std::min(milliseconds, KeyDecoder::escapeDelay) : milliseconds;
    pollfd sources[] = {{STDIN_FILENO, POLLIN, 0}, {signals_.descriptor(), POLLIN, 0}};
    const int ready = poll(sources, std::size(sources), static_cast<int>(wait));
    std::vector<ScreenEvent> events;
    if (ready > 0 && (sources[0].revents & POLLIN) != 0) events = readKeys();
    else if (ready > 0 && sources[0].revents != 0) events.push_back({ScreenEvent::Kind::gone});
    else events = decoder_.settle(steadyMilliseconds());
    appendSignals(events);
    return events;
}

std::vector<ScreenEvent> Screen::Implementation::readKeys() {
    std::array<char, 4096> bytes{};
    const ssize_t size = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (size < 0 && errno == EINTR) return {};
    if (size <= 0) return {{ScreenEvent::Kind::gone}};
    return decoder_.decode({bytes.data(), static_cast<std::size_t>(size)}, steadyMilliseconds());
}

void Screen::Implementation::appendSignals(std::vector<ScreenEvent>& events) const {
    while (const auto signal = signals_.next()) {
        if (*signal == SIGWINCH) fitToTerminal();
        events.push_back({kindOf(*signal)});
    }
}

/// Hands the terminal over, stops, and takes it again. Curses' own handler of the signal would stop this
/// program once more after those that wait for it, and miss that they go on.
void Screen::Implementation::suspend() {
    reportFocus(false);
    endwin();
    struct sigaction usual {};
    struct sigaction ofCurses {};
    usual.sa_handler = SIG_DFL;
    sigaction(SIGTSTP, &usual, &ofCurses);
    sigset_t stop;
    sigemptyset(&stop);
    sigaddset(&stop, SIGTSTP);
    kill(0, SIGTSTP);  // who waits for this program stops as well, and they go on together
    sigprocmask(SIG_UNBLOCK, &stop, nullptr);
    sigprocmask(SIG_BLOCK, &stop, nullptr);
    sigaction(SIGTSTP, &ofCurses, nullptr);
    refresh();  // takes the terminal again, in its modes, and paints all of it
    fitToTerminal();
    reportFocus(true);
}

Screen::Screen(const Environment& environment)
    : implementation_(std::make_unique<Implementation>(environment)) {}

Screen::~Screen() = default;

ScreenShape Screen::shape() const {
    return {.lines = static_cast<std::size_t>(std::max(LINES, 1)),
            .columns = static_cast<std::size_t>(std::max(COLS, 1)),
            .unicode = takesUnicode()};
}

void Screen::show(const Frame& frame) {
    erase();
    std::optional<std::pair<int, int>> cursor;
    const int count = std::min(static_cast<int>(frame.lines.size()), LINES);
    for (int at = 0; at < count; ++at) {
        const auto column = implementation_->paint(frame.lines[static_cast<std::size_t>(at)], at);
        if (column && !cursor) cursor = {at, *column};
    }
    // Magnifiers and readers of the screen go where the cursor is.
    if (cursor) move(cursor->first, cursor->second);
    refresh();
}

void Screen::suspend() { Implementation::suspend(); }

std::vector<ScreenEvent> Screen::events(std::int64_t milliseconds) {
    return implementation_->events(milliseconds);
}

}  // namespace tappora
