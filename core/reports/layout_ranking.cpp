#include "core/reports/layout_ranking.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "core/foundation/checked.h"
#include "core/keyboard/letter_moves.h"
#include "core/practice/practice_layout.h"

namespace tapcore {
namespace {

constexpr std::int64_t enoughPresses = 1000;
constexpr double clearlyLess = 0.8;
constexpr double fewStayed = 0.01;

std::int64_t stayedPresses(const LetterMoves& moves, const Tally::KeyCounts& counts,
                           const std::set<KeyCode>& leftOut) {
    std::int64_t stayed = 0;
    for (const KeyCode code : moves.stayed)
        if (!leftOut.contains(code)) addChecked(stayed, counts.valueOr(code, 0));
    return stayed;
}

template <class Key>
double shareOf(const Load& load, const std::map<Key, Load::Part>& parts, Key key) {
    const auto found = parts.find(key);
    return found == parts.end() ? 0 : load.share(found->second);
}

LayoutStanding standing(const LegendSet& layout, const Load& load, std::int64_t stayed) {
    LayoutStanding result{.id = layout.id,
                          .name = layout.name,
                          .metres = load.all.metres,
                          .homeRow = shareOf(load, load.byRow, Board::Row::home),
                          .leftHand = shareOf(load, load.byHand, Board::Hand::left),
                          .finger = {},
                          .fingerShare = 0,
                          .stayed = stayed};
    for (const auto& [striker, part] : load.byFinger)
        if (load.share(part) > result.fingerShare) {
            result.finger = striker;
            result.fingerShare = load.share(part);
        }
    return result;
}

LayoutStanding standingOn(const LegendSet& layout, const RankingQuestion& question,
                          const Tally::KeyCounts& counts) {
    const LetterMoves moves(question.today.legends, layout.legends, question.board);
    const Load load(question.board, question.today.legends, counts, question.leftOut, moves.moved);
    return standing(layout, load, stayedPresses(moves, counts, question.leftOut));
}

}  // namespace

const LayoutStanding* LayoutRanking::clearlyBetter() const {
    if (others.empty() || presses < enoughPresses) return nullptr;
    const auto isClear = [&](const LayoutStanding& other) {
        return other.metres < today.metres * clearlyLess &&
               static_cast<double>(other.stayed) <= static_cast<double>(presses) * fewStayed;
    };
    const auto found = std::find_if(others.begin(), others.end(), isClear);
    return found == others.end() ? nullptr : &*found;
}

bool typesOn(const Board& board, const std::vector<std::string>& letters, const Legends& legends) {
    if (letters.empty()) return false;
    Legends onBoard;
    for (const KeyCode code : board.keyCodes())
        if (const auto found = legends.find(code); found != legends.end()) onBoard.insert(*found);
    return PracticeLayout::types(letters, onBoard);
}

std::optional<LayoutRanking> rankLayouts(const RankingQuestion& question, const Tally::KeyCounts& counts) {
    const LegendSet& today = question.today;
    if (!typesOn(question.board, question.letters, today.legends)) return std::nullopt;
    const Load load(question.board, today.legends, counts, question.leftOut);
    LayoutRanking ranking{.presses = load.all.presses, .today = standing(today, load, 0), .others = {}};
    for (const LegendSet& layout : question.layouts)
        if (layout.id != today.id && typesOn(question.board, question.letters, layout.legends))
            ranking.others.push_back(standingOn(layout, question, counts));
    std::sort(ranking.others.begin(), ranking.others.end(),
              [](const LayoutStanding& a, const LayoutStanding& b) {
                  return std::tie(a.metres, a.name, a.id) < std::tie(b.metres, b.name, b.id);
              });
    return ranking;
}

}  // namespace tapcore
