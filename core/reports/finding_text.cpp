#include "core/reports/finding_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "core/counting/chords.h"
#include "core/foundation/characters.h"
#include "core/foundation/date_text.h"

namespace tapcore {
namespace {

using Kind = Finding::Kind;

/// A share of 1 as per cent: two figures, or all that are before the point.
std::string percent(double share, const Words& words) {
    const double inPercent = share * 100;
    return words.number(inPercent, inPercent < 9.95 ? 1 : 0);
}

std::string whole(double value, const Words& words) { return words.number(value, 0); }

/// "14:30", for hours that are counted from 4 in the morning.
std::string timeOf(double hours) {
    constexpr int dayBegins = 4;
    const int minutes = static_cast<int>(std::lround(hours * 60)) + dayBegins * 60;
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%d:%02d", minutes / 60 % 24, minutes % 60);
    return text.data();
}

std::string nameOfHour(std::int64_t hour) {
    return std::to_string(hour) + "\u2013" + std::to_string(hour + 1);
}

std::string dateOf(const Day& day, std::string_view locale) {
    return dateText({day.year, day.month, day.day}, locale);
}

/// What the finding is about: a key, a shortcut, a finger, a day, an hour.
std::string subject(const Finding& finding, const Legends& legends, const Words& words,
                    std::string_view locale) {
    if (finding.key) return Chords::name(*finding.key, legends);
    if (finding.chord) return Chords::compact(Chords::keys(*finding.chord, legends));
    if (finding.finger) return nameOf(*finding.finger, words);
    if (finding.day) return dateOf(*finding.day, locale);
    return finding.hour ? nameOfHour(*finding.hour) : "";
}

/// A figure of a finding in the unit of its kind.
std::string figure(Kind kind, double value, const Words& words) {
    switch (kind) {
        case Kind::weekend:
        case Kind::key:
        case Kind::finger:
        case Kind::correction:
        case Kind::keyboardShare:
        case Kind::busiestHour:
            return percent(value, words);
        case Kind::dayLength:
            return words.number(value, 1);
        case Kind::middleOfTyping:
            return timeOf(value);
        default:
            return whole(value, words);
    }
}

/// Whether a finding of this kind has one text for more than usual and another for less.
bool hasDirection(Kind kind) {
    return kind != Kind::shortcutAppeared && kind != Kind::shortcutDropped && kind != Kind::record &&
           kind != Kind::busiestHour;
}

/// The command that practises the letters of the language that would gain most; empty for none.
std::string practiceCommand(const std::vector<LetterGain>& gains, const std::vector<std::string>& letters) {
    constexpr std::size_t most = 5;
    std::string list;
    std::size_t count = 0;
    for (const LetterGain& gain : gains)
        if (std::find(letters.begin(), letters.end(), gain.letter) != letters.end() && count++ < most)
            list += (list.empty() ? "" : ", ") + gain.letter;
    return list.empty() ? "" : "tappora practice --letters \"" + list + "\"";
}

std::string textOf(const Report::LayoutOffer& offer, const Words& words) {
    return words.text("report.layout", {{"name", offer.other.name},
                                        {"today", offer.today.name},
                                        {"percent", whole(offer.spared() * 100, words)}});
}

std::string keyOf(const Finding& finding) {
    const std::string key = "report.finding." + std::string(Finding::kinds.of(finding.kind));
    if (!hasDirection(finding.kind)) return key;
    return key + (finding.value > finding.usual ? ".more" : ".less");
}

}  // namespace

std::string nameOf(const Load::Striker& striker, const Words& words) {
    return words.text("finger." + std::string(Board::hands.of(striker.hand)) + "." +
                      std::string(Board::fingers.of(striker.finger)));
}

std::string textOf(const Finding& finding, const Legends& legends, const Words& words,
                   std::string_view locale) {
    const double change = finding.usual > 0 ? std::abs(finding.value - finding.usual) / finding.usual : 0;
    return words.text(keyOf(finding), {{"name", subject(finding, legends, words, locale)},
                                       {"value", figure(finding.kind, finding.value, words)},
                                       {"usual", figure(finding.kind, finding.usual, words)},
                                       {"percent", whole(change * 100, words)},
                                       {"since", dateOf(finding.stretches.back().first, locale)}});
}

std::string textOf(const LetterGain& gain, const Words& words) {
    return words.text("report.gain", {{"letter", uppercased(gain.letter)},
                                      {"share", percent(gain.share, words)},
                                      {"time", words.number(gain.milliseconds)},
                                      {"minutes", words.number(gain.minutesADay, 1)},
                                      {"spared", words.number(gain.sparedADay, 1)}});
}

std::vector<std::string> adviceOf(const Report& report, const ReportKeyboard& keyboard, const Words& words,
                                  std::size_t gains) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < std::min(gains, report.gains.size()); ++i)
        texts.push_back(textOf(report.gains[i], words));
    const std::string command = practiceCommand(report.gains, keyboard.letters);
    if (!command.empty()) texts.push_back(words.text("report.practise", {{"command", command}}));
    if (report.otherLayout) texts.push_back(textOf(*report.otherLayout, words));
    return texts;
}

}  // namespace tapcore
