#include "core/keyboard/import/board/known_board.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tapcore {
namespace {

// How far two keys may differ, in units and degrees, and be taken for the same one.
constexpr double tolerance = 0.3;
constexpr double angleTolerance = 8;

/// At least three in five.
bool isMostOf(std::size_t some, std::size_t all) { return some * 5 >= all * 3; }

/// A key as it is compared.
struct Spot {
    Board::Point center;
    double w = 1;
    double h = 1;
    double angle = 0;
};

Spot spotOf(const Board::Key& key) {
    return {.center = key.center(), .w = key.w, .h = key.h, .angle = key.isTurned() ? key.r : 0};
}

/// How well two keys lie on each other, 1 for exactly and 0 for not at all, the second one moved.
double fit(const Spot& a, const Spot& b, const Board::Point& moved) {
    const double dx = std::abs(b.center.x + moved.x - a.center.x);
    const double dy = std::abs(b.center.y + moved.y - a.center.y);
    const double apart = std::max({dx, dy, std::abs(a.w - b.w), std::abs(a.h - b.h)});
    if (apart >= tolerance || std::abs(a.angle - b.angle) > angleTolerance) return 0;
    return 1 - apart / tolerance;
}

/// One way to lay a board on the draft.
class Trial {
  public:
    Trial(const std::vector<Spot>& draft, const Board& board, const Board::Point& moved) : board_(board) {
        keys_.resize(draft.size());
        for (const Board::Key& key : board.keys) place(draft, key, moved);
    }

    std::size_t alike() const {
        return keys_.size() - static_cast<std::size_t>(std::count(keys_.begin(), keys_.end(), nullptr));
    }

    /// How much of both boards lies on the other, 0 to 1.
    double score() const {
        const auto all = keys_.size() + board_.keys.size() - alike();
        return fitted_ / static_cast<double>(all);
    }

    KnownBoard known() && { return {.board = &board_, .keys = std::move(keys_)}; }

  private:
    /// Gives the board's key to the free key of the draft on which it lies best.
    void place(const std::vector<Spot>& draft, const Board::Key& key, const Board::Point& moved) {
        const Spot spot = spotOf(key);
        double best = 0;
        std::size_t at = 0;
        for (std::size_t i = 0; i < draft.size(); ++i) {
            const double fits = keys_[i] ? 0 : fit(draft[i], spot, moved);
            if (fits > best) best = fits, at = i;
        }
        if (best == 0) return;
        keys_[at] = &key;
        fitted_ += best;
    }

    const Board& board_;
    std::vector<const Board::Key*> keys_;
    double fitted_ = 0;
};

}  // namespace

KnownBoard boardLike(const std::vector<DraftKey>& keys, const std::vector<Board>& boards) {
    std::vector<Spot> draft;
    for (const DraftKey& key : keys) draft.push_back(spotOf(key.key));
    const Board::Rect bounds = boundsOf(keys);
    KnownBoard best{.board = nullptr, .keys = std::vector<const Board::Key*>(keys.size())};
    double bestScore = 0;
    for (const Board& board : boards) {
        if (!isMostOf(keys.size(), board.keys.size()) || !isMostOf(board.keys.size(), keys.size())) continue;
        const Board::Rect other = board.bounds();
        const Board::Point upper{bounds.x - other.x, bounds.y - other.y};
        const Board::Point lower{upper.x, upper.y + bounds.h - other.h};
        for (const Board::Point& moved : {upper, lower}) {
            Trial trial(draft, board, moved);
            const bool isLike = isMostOf(trial.alike(), std::max(keys.size(), board.keys.size()));
            if (!isLike || trial.score() <= bestScore) continue;
            bestScore = trial.score();
            best = std::move(trial).known();
        }
    }
    return best;
}

}  // namespace tapcore
