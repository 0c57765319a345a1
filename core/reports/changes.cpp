#include "core/reports/changes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <iterator>
#include <set>

#include "core/reports/key_class.h"
#include "core/reports/usual.h"

namespace tapcore {
namespace {

/// One figure of a stretch, and when a difference in it is worth saying.
struct Measure {
    Finding::Kind kind = Finding::Kind::volume;
    /// The figure, as people read it.
    std::function<double(const StretchFigures&)> value;
    /// The figure on a scale on which its spread does not depend on its size.
    std::function<double(double value, const StretchFigures&)> scaled;
    double noise = 0;            ///< the least spread, on that scale
    double leastDifference = 0;  ///< as people read it: less is not worth saying
    double leastRatio = 1;       ///< of the larger to the smaller: the same
};

double asItIs(double value, const StretchFigures&) { return value; }

double presses(const StretchFigures& figures) {
    return static_cast<double>(std::max<std::int64_t>(figures.summary.keystrokes, 1));
}

double share(std::int64_t part, const StretchFigures& figures) {
    return static_cast<double>(part) / presses(figures);
}

/// The square root of a share of presses: its spread is then the same for rare and for frequent keys
/// (Bartlett, "The square root transformation in analysis of variance", 1936).
double rooted(double value, const StretchFigures&) { return std::sqrt(value); }

/// What chance gives to such a root: half of 1/sqrt(presses) were each press drawn by itself. Typing comes in
/// bursts of like texts, which makes it larger.
double noiseOfRoot(const StretchFigures& now) { return std::max(1.5 / std::sqrt(presses(now)), 0.002); }

bool isWorthSaying(const Measure& measure, double value, double usual) {
    const double low = std::min(value, usual);
    const double high = std::max(value, usual);
    return high - low >= measure.leastDifference && high >= low * measure.leastRatio;
}

/// One period beside its earlier stretches.
class Search {
  public:
    Search(const CountedStretch& now, const std::vector<CountedStretch>& earlier)
        : now_(now), earlier_(earlier), threshold_(changeThreshold(earlier.size())) {}

    /// The change of a measure, if it is one. `name` says of what it is.
    void look(const Measure& measure, const std::function<void(Finding&)>& name = {}) {
        const double value = measure.value(now_.figures);
        std::vector<double> values;
        std::vector<double> scaled;
        for (const CountedStretch& each : earlier_) {
            values.push_back(measure.value(each.figures));
            scaled.push_back(measure.scaled(values.back(), each.figures));
        }
        const double far = farness(measure.scaled(value, now_.figures), scaled, measure.noise);
        std::sort(values.begin(), values.end());
        const double usual = quantile(values, 0.5);
        if (std::abs(far) < threshold_ || !isWorthSaying(measure, value, usual)) return;
        add(measure.kind, value, usual, far, name);
    }

    void add(Finding::Kind kind, double value, double usual, double far,
             const std::function<void(Finding&)>& name = {}) {
        Finding finding{
            .kind = kind, .value = value, .usual = usual, .farness = far, .stretches = {now_.stretch}};
        for (const CountedStretch& each : earlier_) finding.stretches.push_back(each.stretch);
        if (name) name(finding);
        found_.push_back(std::move(finding));
    }

    const StretchFigures& now() const { return now_.figures; }
    const std::vector<CountedStretch>& earlier() const { return earlier_; }
    std::vector<Finding> found() && { return std::move(found_); }

  private:
    const CountedStretch& now_;
    const std::vector<CountedStretch>& earlier_;
    double threshold_;
    std::vector<Finding> found_;
};

void lookAtAmount(Search& search) {
    search.look(
        {.kind = Finding::Kind::volume,
         .value =
             [](const StretchFigures& figures) { return static_cast<double>(figures.summary.keystrokes); },
         .scaled = [](double value, const StretchFigures&) { return std::log(std::max(value, 1.0)); },
         .noise = 0.1,
         .leastDifference = 500,
         .leastRatio = 1.25});
}

void lookAtMouse(Search& search) {
    const double clicks = static_cast<double>(search.now().summary.clicks());
    search.look({.kind = Finding::Kind::keyboardShare,
                 .value =
                     [](const StretchFigures& figures) {
                         return static_cast<double>(figures.summary.keyboardShare().value_or(100)) / 100;
                     },
                 .scaled = asItIs,
                 .noise = std::max(0.02, 1.5 / std::sqrt(presses(search.now()) + clicks)),
                 .leastDifference = 0.1});
}

void lookAtTimes(Search& search) {
    search.look({.kind = Finding::Kind::middleOfTyping,
                 .value = [](const StretchFigures& figures) { return figures.middleOfTyping().value_or(0); },
                 .scaled = asItIs,
                 .noise = 0.2,
                 .leastDifference = 1});
    search.look({.kind = Finding::Kind::dayLength,
                 .value = [](const StretchFigures& figures) { return figures.dayLength(); },
                 .scaled = asItIs,
                 .noise = 0.4,
                 .leastDifference = 1.5});
    const bool hasWholeWeek = search.now().summary.byDay.size() >= 5;
    if (!hasWholeWeek) return;
    search.look(
        {.kind = Finding::Kind::weekend,
         .value = [](const StretchFigures& figures) { return share(figures.weekendKeystrokes(), figures); },
         .scaled = asItIs,
         .noise = 0.03,
         .leastDifference = 0.15});
}

void lookAtKeys(Search& search) {
    constexpr double leastShare = 0.01;
    const double noise = noiseOfRoot(search.now());
    for (const auto& [code, count] : search.now().summary.byKey) {
        if (share(count, search.now()) < leastShare) continue;
        search.look({.kind = Finding::Kind::key,
                     .value =
                         [key = code](const StretchFigures& figures) {
                             return share(figures.summary.byKey.valueOr(key, 0), figures);
                         },
                     .scaled = rooted,
                     .noise = noise,
                     .leastDifference = leastShare / 2,
                     .leastRatio = 1.5},
                    [key = code](Finding& finding) { finding.key = key; });
    }
    search.look({.kind = Finding::Kind::correction,
                 .value =
                     [](const StretchFigures& figures) {
                         std::int64_t deleted = 0;
                         for (const KeyCode code : correctingKeys)
                             deleted += figures.summary.byKey.valueOr(code, 0);
                         return share(deleted, figures);
                     },
                 .scaled = rooted,
                 .noise = noise,
                 .leastDifference = 0.02,
                 .leastRatio = 1.25});
}

double shareOf(const Load::Striker& striker, const Board& board, const StretchFigures& figures) {
    const Load load(board, {}, figures.summary.byKey, {});
    const auto part = load.byFinger.find(striker);
    return part == load.byFinger.end() ? 0 : load.share(part->second);
}

void lookAtFingers(Search& search, const Board& board) {
    for (const auto& [striker, part] : Load(board, {}, {}, {}).byFinger)
        search.look({.kind = Finding::Kind::finger,
                     .value = [&, finger = striker](
                                  const StretchFigures& figures) { return shareOf(finger, board, figures); },
                     .scaled = rooted,
                     .noise = std::max(noiseOfRoot(search.now()), 0.01),
                     .leastDifference = 0.03},
                    [finger = striker](Finding& finding) { finding.finger = finger; });
}

std::int64_t countOf(const Tally::Chord& chord, const StretchFigures& figures) {
    return figures.summary.byChord.valueOr(chord, 0);
}

/// A shortcut whose presses came or went altogether.
bool lookAtComingAndGoing(Search& search, const Tally::Chord& chord) {
    constexpr std::int64_t enough = 20;
    const auto hasFew = [&](const CountedStretch& each) { return countOf(chord, each.figures) == 0; };
    const auto hasMany = [&](const CountedStretch& each) { return countOf(chord, each.figures) >= enough; };
    const auto& earlier = search.earlier();
    const std::int64_t now = countOf(chord, search.now());
    const auto name = [&](Finding& finding) { finding.chord = chord; };
    std::vector<double> counts;
    for (const CountedStretch& each : earlier)
        counts.push_back(static_cast<double>(countOf(chord, each.figures)));
    std::sort(counts.begin(), counts.end());
    const double usual = quantile(counts, 0.5);
    if (now >= enough && std::all_of(earlier.begin(), earlier.end(), hasFew)) {
        search.add(Finding::Kind::shortcutAppeared, static_cast<double>(now), 0,
                   2 * std::sqrt(static_cast<double>(now)), name);
        return true;
    }
    if (now > 0 || !std::all_of(earlier.begin(), earlier.end(), hasMany)) return false;
    search.add(Finding::Kind::shortcutDropped, 0, usual, -2 * std::sqrt(usual), name);
    return true;
}

void lookAtShortcuts(Search& search) {
    std::set<Tally::Chord> chords;
    for (const auto& item : search.now().summary.byChord) chords.insert(item.first);
    for (const auto& item : search.earlier().front().figures.summary.byChord) chords.insert(item.first);
    constexpr std::int64_t enough = 20;
    const double perTenThousand = 10000;
    const double noise = 2 * noiseOfRoot(search.now()) * std::sqrt(perTenThousand);
    for (const Tally::Chord& chord : chords) {
        if (lookAtComingAndGoing(search, chord) || countOf(chord, search.now()) < enough) continue;
        search.look({.kind = Finding::Kind::shortcutGrew,
                     .value =
                         [=](const StretchFigures& figures) {
                             return share(countOf(chord, figures), figures) * perTenThousand;
                         },
                     .scaled = rooted,
                     .noise = noise,
                     .leastDifference = 5,
                     .leastRatio = 2},
                    [&](Finding& finding) { finding.chord = chord; });
    }
}

// What was not counted is no data: the mouse may be off for a time, and keys or shortcuts may be forgotten.

bool hasTyping(const StretchFigures& figures) { return figures.summary.keystrokes > 0; }

bool hasMouse(const StretchFigures& figures) { return !figures.summary.mouseTotal().isEmpty(); }

/// Whether it is known of nearly all presses which keys they were of.
bool hasKeys(const StretchFigures& figures) {
    constexpr double nearlyAll = 0.95;
    return static_cast<double>(sumOfCounts(figures.summary.byKey)) >= nearlyAll * presses(figures);
}

bool hasShortcuts(const StretchFigures& figures) {
    return hasKeys(figures) && !figures.summary.byChord.empty();
}

}  // namespace

double changeThreshold(std::size_t earlier) {
    constexpr std::array<double, 4> ofFive = {6.5, 5.5, 5, 4.5};  // of five to eight
    return ofFive[std::min(earlier - fewestForChange, ofFive.size() - 1)];
}

std::vector<Finding> changes(const CountedStretch& now, const std::vector<CountedStretch>& earlier,
                             const Board& board) {
    std::vector<CountedStretch> typed;
    for (const CountedStretch& each : earlier)
        if (hasTyping(each.figures)) typed.push_back(each);
    if (!hasTyping(now.figures) || typed.size() < fewestForChange) return {};
    std::vector<Finding> found;
    const auto look = [&](bool (*isKnown)(const StretchFigures&), const std::function<void(Search&)>& at) {
        std::vector<CountedStretch> known;
        std::copy_if(typed.begin(), typed.end(), std::back_inserter(known),
                     [&](const CountedStretch& each) { return isKnown(each.figures); });
        if (!isKnown(now.figures) || known.size() < fewestForChange) return;
        Search search(now, known);
        at(search);
        std::vector<Finding> more = std::move(search).found();
        std::move(more.begin(), more.end(), std::back_inserter(found));
    };
    look(hasTyping, lookAtAmount);
    look(hasMouse, lookAtMouse);
    look(hasTyping, lookAtTimes);
    look(hasKeys, [&](Search& search) {
        lookAtKeys(search);
        lookAtFingers(search, board);
    });
    look(hasShortcuts, lookAtShortcuts);
    // The sign does not matter; findings that are as far stay in the order in which they were looked for.
    std::stable_sort(found.begin(), found.end(), [](const Finding& a, const Finding& b) {
        return std::abs(a.farness) > std::abs(b.farness);
    });
    return found;
}

}  // namespace tapcore
