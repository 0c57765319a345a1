#include "app/practice/screen.h"

#include <curses.h>
#include <fmt/format.h>
#include <langinfo.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <term.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cwchar>
#include <iterator>
#include <optional>
#include <utility>

#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/signals.h"
#include "app/common/terminal/terminal.h"
#include "core/foundation/characters.h"

// Macros of terminal capabilities that clash with our own names.
#undef columns
#undef lines

namespace tappora {
namespace {

// Colour pairs, beyond 0, which is the terminal's own.
enum Pair : short { own, green, yellow, red, magenta, cyan, blue };

constexpr std::pair<Pair, short> pairs[] = {{green, COLOR_GREEN}, {yellow, COLOR_YELLOW},
                                            {red, COLOR_RED},     {magenta, COLOR_MAGENTA},
                                            {cyan, COLOR_CYAN},   {blue, COLOR_BLUE}};

/// How a style looks without colours, and with them.
struct Look {
    attr_t plain = A_NORMAL;
    attr_t coloured = A_NORMAL;
    Pair pair = own;
};

Look lookOf(Style style) {
    switch (style) {
        case Style::plain:
            return {};
        case Style::faint:
            return {A_DIM, A_DIM, own};
        case Style::strong:
            return {A_BOLD, A_BOLD, own};
        case Style::right:
            return {A_DIM, A_NORMAL, green};
        case Style::mended:
            return {A_UNDERLINE, A_UNDERLINE, yellow};
        case Style::wrong:
            return {A_BOLD | A_UNDERLINE, A_BOLD | A_UNDERLINE, red};
        case Style::next:
            return {A_REVERSE, A_REVERSE, own};
        case Style::nextWrong:
            return {A_REVERSE | A_BOLD | A_UNDERLINE, A_REVERSE | A_BOLD, red};
        case Style::learning:
            return {A_NORMAL, A_NORMAL, yellow};
        case Style::learned:
            return {A_BOLD, A_NORMAL, green};
        case Style::slipping:
            return {A_UNDERLINE, A_NORMAL, magenta};
        case Style::pinky:
            return {A_NORMAL, A_NORMAL, magenta};
        case Style::ring:
            return {A_NORMAL, A_NORMAL, blue};
        case Style::middle:
            return {A_NORMAL, A_NORMAL, green};
        case Style::index:
            return {A_NORMAL, A_NORMAL, cyan};
        case Style::thumb:
            return {A_UNDERLINE, A_UNDERLINE, own};
    }
    return {};
}

bool wantsColours(const Environment& environment) {
    const auto refusal = environment.variable("NO_COLOR");
    return !(refusal && !refusal->empty());
}

bool isUtf8() { return std::string_view(nl_langinfo(CODESET)) == "UTF-8"; }

std::u32string scalarsOf(std::string_view text) {
    std::u32string scalars;
    while (!text.empty()) {
        scalars += tapcore::firstScalar(text);
        text.remove_prefix(std::min(tapcore::utf8(scalars.back()).size(), text.size()));
    }
    return scalars;
}

/// Whether the locale's character set has all of a text.
bool hasAll(const std::string& text) {
    std::array<char, 64> bytes{};
    const std::u32string scalars = scalarsOf(text);
    return std::all_of(scalars.begin(), scalars.end(), [&](char32_t scalar) {
        std::mbstate_t state{};
        return std::wcrtomb(bytes.data(), static_cast<wchar_t>(scalar), &state) !=
               static_cast<std::size_t>(-1);
    });
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

void useLocale(const Environment& environment, const std::vector<std::string>& letters) {
    // A locale that is named but not installed still tells which text the terminal takes.
    if (std::setlocale(LC_CTYPE, "") == nullptr && Terminal::of(environment).unicode)
        std::setlocale(LC_CTYPE, "C.UTF-8");
    const auto missing = std::find_if_not(letters.begin(), letters.end(), hasAll);
    if (missing != letters.end())
        throw Failure("LANG",
                      fmt::format("the character set of this locale, {}, has no \"{}\"; try LANG=C.UTF-8",
                                  nl_langinfo(CODESET), *missing));
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
    for (const auto& [pair, colour] : pairs) init_pair(pair, colour, background);
    hasColours_ = true;
}

std::optional<int> Screen::Implementation::paint(const FrameLine& line, int at) const {
    std::optional<int> cursor;
    move(at, 0);
    for (const Span& span : line) {
        const bool isNext = span.style == Style::next || span.style == Style::nextWrong;
        if (isNext && !cursor) cursor = getcurx(stdscr);
        const Look look = lookOf(span.style);
        attr_set(hasColours_ ? look.coloured : look.plain, hasColours_ ? look.pair : own, nullptr);
        std::wstring wide;
        for (const char32_t scalar : scalarsOf(span.text)) wide += static_cast<wchar_t>(scalar);
        addnwstr(wide.c_str(), static_cast<int>(wide.size()));
    }
    attr_set(A_NORMAL, own, nullptr);
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
            .unicode = isUtf8()};
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
