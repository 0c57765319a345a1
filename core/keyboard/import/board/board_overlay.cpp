#include "core/keyboard/import/board/board_overlay.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tapcore {
namespace {

// How far two keys may differ, in units and degrees, and be taken for the same one.
constexpr double tolerance = 0.3;
constexpr double angleTolerance = 8;

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

/// How well two keys match, 1 for exactly and 0 for not at all, the second one moved.
double fitOf(const Spot& a, const Spot& b, const Board::Point& moved) {
    const double dx = std::abs(b.center.x + moved.x - a.center.x);
    const double dy = std::abs(b.center.y + moved.y - a.center.y);
    const double apart = std::max({dx, dy, std::abs(a.w - b.w), std::abs(a.h - b.h)});
    if (apart >= tolerance || std::abs(a.angle - b.angle) > angleTolerance) return 0;
    return 1 - apart / tolerance;
}

using Keys = std::vector<Board::Key>;

Keys keysOf(const std::vector<DraftKey>& draft) {
    Keys keys;
    for (const DraftKey& key : draft) keys.push_back(key.key);
    return keys;
}

Board::Rect boundsOfKeys(Keys keys) { return Board{.id = {}, .keys = std::move(keys)}.bounds(); }

/// How the two halves of a board are moved to match a draft; the same way where it is moved whole.
struct Moves {
    double middle = 0;  ///< where the board's left half ends
    Board::Point left;
    Board::Point right;

    const Board::Point& of(const Spot& spot) const { return spot.center.x < middle ? left : right; }
};

Keys half(const Keys& keys, double middle, bool isLeft) {
    Keys some;
    std::copy_if(keys.begin(), keys.end(), std::back_inserter(some),
                 [&](const Board::Key& key) { return (key.center().x < middle) == isLeft; });
    return some;
}

/// Lays corners on each other: of two rectangles the left or right ones, above or below.
Board::Point corner(const Board::Rect& draft, const Board::Rect& board, bool isLeft, bool isUpper) {
    return {draft.x - board.x + (isLeft ? 0 : draft.w - board.w),
            draft.y - board.y + (isUpper ? 0 : draft.h - board.h)};
}

bool isSplit(const Board& board) {
    const Board::Key* g = board.key(5);
    const Board::Key* h = board.key(4);
    return g && h && std::hypot(h->center().x - g->center().x, h->center().y - g->center().y) > 1.6;
}

std::vector<Moves> movesFor(const Keys& draft, const Board& board) {
    const Board::Rect bounds = boundsOfKeys(draft);
    const Board::Rect other = board.bounds();
    std::vector<Moves> all;
    for (const bool isUpper : {true, false}) {
        const Board::Point moved = corner(bounds, other, true, isUpper);
        all.push_back({.left = moved, .right = moved});
    }
    if (!isSplit(board)) return all;
    const double draftMiddle = bounds.x + bounds.w / 2;
    const double boardMiddle = other.x + other.w / 2;
    const auto outer = [&](bool isLeft, bool isUpper) {
        return corner(boundsOfKeys(half(draft, draftMiddle, isLeft)),
                      boundsOfKeys(half(board.keys, boardMiddle, isLeft)), isLeft, isUpper);
    };
    for (const bool isUpper : {true, false})
        all.push_back({.middle = boardMiddle, .left = outer(true, isUpper), .right = outer(false, isUpper)});
    return all;
}

/// Gives each key of the board to the free key of the draft that it covers best.
BoardOverlay laid(const std::vector<Spot>& draft, const Board& board, const Moves& moves) {
    BoardOverlay overlay{.board = &board, .keys = std::vector<const Board::Key*>(draft.size())};
    double fitted = 0;
    for (const Board::Key& key : board.keys) {
        const Spot spot = spotOf(key);
        double best = 0;
        std::size_t at = 0;
        for (std::size_t i = 0; i < draft.size(); ++i) {
            const double fits = overlay.keys[i] ? 0 : fitOf(draft[i], spot, moves.of(spot));
            if (fits > best) best = fits, at = i;
        }
        if (best == 0) continue;
        overlay.keys[at] = &key;
        fitted += best;
    }
    const std::size_t all = draft.size() + board.keys.size() - overlay.alike();
    overlay.fit = fitted / static_cast<double>(all);
    return overlay;
}

}  // namespace

std::size_t BoardOverlay::alike() const {
    return keys.size() - static_cast<std::size_t>(std::count(keys.begin(), keys.end(), nullptr));
}

bool BoardOverlay::covers(std::size_t part, std::size_t whole) const {
    return alike() * whole >= std::max(keys.size(), board->keys.size()) * part;
}

std::vector<BoardOverlay> overlays(const std::vector<DraftKey>& draft, const Board& board) {
    const Keys keys = keysOf(draft);
    std::vector<Spot> spots;
    for (const Board::Key& key : keys) spots.push_back(spotOf(key));
    std::vector<BoardOverlay> all;
    for (const Moves& moves : movesFor(keys, board)) all.push_back(laid(spots, board, moves));
    return all;
}

bool hasTypewriterRows(const Board& board) {
    constexpr KeyCode q = 12, a = 0, z = 6, g = 5, h = 4;
    const auto apart = [&](KeyCode one, KeyCode other) {
        const Board::Key* from = board.key(one);
        const Board::Key* to = board.key(other);
        return from && to ? to->center().x - from->center().x : std::numeric_limits<double>::infinity();
    };
    const auto about = [](double is, double wanted) { return std::abs(is - wanted) < 0.1; };
    return about(apart(q, a), 0.25) && about(apart(a, z), 0.5) && about(apart(g, h), 1);
}

}  // namespace tapcore
