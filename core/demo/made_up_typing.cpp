#include "core/demo/made_up_typing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace tapcore {
namespace {

/// Presses of other keys for each letter that is typed: small digits come more often than large ones.
constexpr std::array<std::pair<KeyCode, double>, 31> otherKeys = {{
    {51, 0.080},   // delete
    {36, 0.034},   // return
    {48, 0.017},   // tab
    {53, 0.008},   // esc
    {56, 0.028},   // shift
    {60, 0.012},   // right shift
    {43, 0.012},   // ,
    {47, 0.013},   // .
    {27, 0.006},   // -
    {44, 0.004},   // /
    {39, 0.0042},  // '
    {41, 0.0014},  // ;
    {24, 0.0010},  // =
    {33, 0.0007},  // [
    {30, 0.0007},  // ]
    {42, 0.0004},  // backslash
    {50, 0.0005},  // `
    {18, 0.0040},  // 1
    {19, 0.0028},  // 2
    {20, 0.0019},  // 3
    {21, 0.0015},  // 4
    {23, 0.0015},  // 5
    {22, 0.0011},  // 6
    {26, 0.0010},  // 7
    {28, 0.0010},  // 8
    {25, 0.0010},  // 9
    {29, 0.0040},  // 0
    {123, 0.016},  // left
    {124, 0.018},  // right
    {125, 0.021},  // down
    {126, 0.019},  // up
}};
constexpr KeyCode spaceBar = 49;
constexpr KeyCode commandKey = 55;

/// Shortcuts for each letter that is typed, by the key's letter on QWERTY: C, V, Z, S, T, W, A, X, F, Tab.
constexpr std::array<std::pair<KeyCode, double>, 10> shortcuts = {{{8, 0.0065},
                                                                   {9, 0.0062},
                                                                   {6, 0.0040},
                                                                   {1, 0.0036},
                                                                   {17, 0.0021},
                                                                   {13, 0.0020},
                                                                   {0, 0.0013},
                                                                   {7, 0.0015},
                                                                   {3, 0.0012},
                                                                   {48, 0.0060}}};

/// What part of a working day's typing comes in an hour, from 7 in the morning on; then of a day off.
constexpr std::int64_t firstHour = 7;
constexpr std::array<double, 16> workingHours = {0.02, 0.07, 0.12, 0.14, 0.12, 0.05, 0.07, 0.11,
                                                 0.11, 0.09, 0.05, 0.01, 0.01, 0.02, 0.01, 0};
constexpr std::array<double, 16> freeHours = {0,    0,    0.03, 0.12, 0.16, 0.11, 0.04, 0.06,
                                              0.09, 0.08, 0.06, 0.04, 0.04, 0.08, 0.07, 0.02};
constexpr std::int64_t leavesTheDesk = 18;

/// What part of the typing of the first two machines is done on each further one, too.
constexpr double sideShare = 0.3;

bool isWeekend(const Day& day) { return day.weekday() == 0 || day.weekday() == 6; }

/// Between the years, and two weeks in August.
bool isHoliday(const Day& day) {
    return (day.month == 12 && day.day >= 24) || (day.month == 1 && day.day == 1) ||
           (day.month == 8 && day.day >= 3 && day.day <= 16);
}

/// A number from 0 to 1.
double chance(SeededRandom& random) {
    constexpr double steps = 1 << 30;
    return static_cast<double>(random.below(1 << 30)) / steps;
}

/// A number that is normally distributed about 0 with deviation 1: the sum of twelve even ones, which is
/// exact arithmetic, and so the same on every machine.
double normal(SeededRandom& random) {
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += chance(random);
    return sum;
}

/// How many come when so many are expected: about as a Poisson distribution has it.
std::int64_t drawn(double expected, SeededRandom& random) {
    if (expected <= 0) return 0;
    if (expected < 8) {
        const auto whole = static_cast<std::int64_t>(expected);
        std::int64_t count = 0;
        for (std::int64_t i = 0; i < 2 * whole + 2; ++i)
            count += chance(random) < expected / static_cast<double>(2 * whole + 2) ? 1 : 0;
        return count;
    }
    return std::llround(std::max(0.0, expected + std::sqrt(expected) * normal(random)));
}

/// How often each letter follows any two.
FlatMap<std::string, double> sharesOfLetters(const LetterModel& model) {
    FlatMap<std::string, double> shares;
    double all = 0;
    for (const auto& [context, next] : model.transitions) {
        for (const auto& [letter, count] : next) {
            shares[letter] += static_cast<double>(count);
            if (letter != LetterModel::wordEnd) all += static_cast<double>(count);
        }
    }
    FlatMap<std::string, double> result;
    for (const auto& [letter, sum] : shares) result[letter] = all > 0 ? sum / all : 0;
    return result;
}

}  // namespace

MadeUpTyping::MadeUpTyping(const LetterModel& model, const Legends& legends, std::uint64_t seed,
                           const Day& begin, std::size_t machines)
    : seed_(seed), begin_(begin), machines_(machines) {
    const FlatMap<std::string, double> shares = sharesOfLetters(model);
    for (const auto& [code, legend] : legends)
        if (const double* share = legend.empty() ? nullptr : shares.find(legend.front()))
            keys_.push_back({code, *share});
    keys_.push_back({spaceBar, shares.valueOr(std::string(LetterModel::wordEnd), 0)});
    double chordShare = 0;
    for (const auto& [code, share] : otherKeys) keys_.push_back({code, share});
    for (const auto& [code, share] : shortcuts) {
        chords_.push_back({{Modifiers::command, code}, share});
        chordShare += share;
    }
    keys_.push_back({commandKey, chordShare});
    double all = chordShare;
    for (const auto& key : keys_) all += key.share;
    for (auto& key : keys_) key.share /= all;
    for (auto& chord : chords_) chord.share /= all;
    for (const std::string& letter : model.order) letters_.push_back({letter, shares.valueOr(letter, 0)});
}

/// The numbers of one day for one purpose, which do not depend on what else was asked for.
SeededRandom MadeUpTyping::randomOf(const Day& day, std::uint64_t purpose) const {
    const auto number = static_cast<std::uint64_t>(day.daysSince(Day(1970, 1, 1)));
    SeededRandom random(seed_ ^ (number * 0x9E3779B97F4A7C15U) ^ (purpose << 56));
    return SeededRandom(random.next());
}

double MadeUpTyping::keystrokesOf(const Day& day) const {
    SeededRandom random = randomOf(day, 1);
    const bool isIll = random.below(60) == 0;
    const bool staysAway = random.below(3) == 0;
    const double mood = std::clamp(1 + 0.25 * normal(random), 0.3, 2.0);
    if (isIll) return 0;
    if (isHoliday(day)) return staysAway ? 900 * mood : 0;
    if (isWeekend(day)) return staysAway ? 0 : 2600 * mood;
    return 13500 * mood;
}

void MadeUpTyping::typeHour(DayFile& file, std::int64_t hour, double keystrokes,
                            const std::vector<double>& mood, SeededRandom& random) const {
    for (const auto& chord : chords_) {
        const std::int64_t count = drawn(keystrokes * chord.share, random);
        file.tally.add(chord.item, hour, count);
        file.tally.add(chord.item.keyCode, hour, count);
    }
    for (std::size_t i = 0; i < keys_.size(); ++i)
        file.tally.add(keys_[i].item, hour, drawn(keystrokes * keys_[i].share * mood[i], random));
    file.tally.add(Tally::MouseHour{.clicks = drawn(keystrokes / 18, random),
                                    .right = drawn(keystrokes / 400, random),
                                    .middle = drawn(keystrokes / 900, random),
                                    .scrolls = drawn(keystrokes / 4, random),
                                    .moved = drawn(keystrokes * 60, random)},
                   hour);
    const auto busiest = static_cast<std::int64_t>(keystrokes / 60 * 5);
    file.peakPerMinute = std::max(file.peakPerMinute, std::min<std::int64_t>(busiest, 480));
}

double MadeUpTyping::shareOf(std::size_t machine, bool atDesk) const {
    if (machine >= 2) return sideShare;
    return machines_ == 1 || atDesk == (machine == 0) ? 1 : 0;
}

DayFile MadeUpTyping::day(const Day& day, std::size_t machine) const {
    const double keystrokes = keystrokesOf(day);
    const bool isFree = isWeekend(day) || isHoliday(day);
    SeededRandom random = randomOf(day, machine < 2 ? 2 + machine : 8 + machine);
    // What is written today has a little more of some letters, and comes an hour earlier or later.
    std::vector<double> mood;
    for (std::size_t i = 0; i < keys_.size(); ++i) mood.push_back(std::max(0.2, 1 + 0.08 * normal(random)));
    DayFile file;
    const auto& parts = isFree ? freeHours : workingHours;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::int64_t hour = firstHour + static_cast<std::int64_t>(i);
        const double share = shareOf(machine, !isFree && hour < leavesTheDesk);
        const double inHour = share * keystrokes * parts[i] * std::clamp(1 + 0.35 * normal(random), 0.0, 2.5);
        if (inHour >= 20) typeHour(file, hour, inHour, mood, random);
    }
    return file;
}

DayFile MadeUpTyping::day(const Day& day) const {
    DayFile all = this->day(day, 0);
    for (std::size_t machine = 1; machine < machines_; ++machine) all.merge(this->day(day, machine));
    return all;
}

PracticeDay MadeUpTyping::practice(const Day& day, const std::string& layout) const {
    PracticeDay practised;
    const std::int64_t passed = day.daysSince(begin_);
    SeededRandom random = randomOf(day, 4);
    if (passed < 0 || isHoliday(day) || random.below(isWeekend(day) ? 4 : 2) != 0) return practised;
    constexpr double slowest = 340;  // milliseconds a letter, at first and in the end
    constexpr double fastest = 170;
    const double learned = static_cast<double>(passed) / (static_cast<double>(passed) + 90);
    const double usual = slowest - (slowest - fastest) * learned;
    const auto open = std::min<std::size_t>(letters_.size(), 6 + static_cast<std::size_t>(passed) / 5);
    const auto lessons = static_cast<std::int64_t>(1 + random.below(4));
    for (std::size_t i = 0; i < open; ++i) {
        const auto expected = static_cast<double>(lessons) * 160 * (letters_[i].share + 0.01);
        LetterStats stats{.presses = drawn(expected, random), .days = 1};
        if (stats.presses == 0) continue;
        stats.misses = drawn(static_cast<double>(stats.presses) * (0.07 - 0.045 * learned), random);
        stats.timed = stats.presses;
        const double hardness = 1 + 0.012 * static_cast<double>(i);
        stats.milliseconds = std::llround(static_cast<double>(stats.timed) * usual * hardness *
                                          std::clamp(1 + 0.06 * normal(random), 0.7, 1.4));
        practised.add(layout, letters_[i].item, stats);
    }
    practised.lessons = lessons;
    practised.seconds = lessons * 70 + static_cast<std::int64_t>(random.below(60));
    practised.layout = layout;
    practised.best = std::llround(12000 / usual * 1.08);
    practised.bests[layout] = practised.best;
    return practised;
}

}  // namespace tapcore
