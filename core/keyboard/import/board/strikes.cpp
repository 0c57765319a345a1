#include "core/keyboard/import/board/strikes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

namespace tapcore {
namespace {

using Finger = Board::Finger;
using Hand = Board::Hand;
using Row = Board::Row;

// The key codes of the block that touch typing teaches, row by row from the one with digits.
constexpr std::array<std::array<KeyCode, 10>, 4> block = {{
    {18, 19, 20, 21, 23, 22, 26, 28, 25, 29},
    {12, 13, 14, 15, 17, 16, 32, 34, 31, 35},
    {0, 1, 2, 3, 5, 4, 38, 40, 37, 41},
    {6, 7, 8, 9, 11, 45, 46, 43, 47, 44},
}};
constexpr std::array<Finger, 10> fingers = {Finger::pinky, Finger::ring,  Finger::middle, Finger::index,
                                            Finger::index, Finger::index, Finger::index,  Finger::middle,
                                            Finger::ring,  Finger::pinky};
constexpr int numberRow = static_cast<int>(Row::number);
constexpr int homeRow = static_cast<int>(Row::home);
constexpr int lowerRow = static_cast<int>(Row::lower);
constexpr int bottomRow = static_cast<int>(Row::bottom);

bool restsInHomeRow(std::size_t column) { return column < 4 || column > 5; }

/// A place whose finger is known.
struct Anchor {
    Board::Point center;
    double angle = 0;  ///< of the columns there, in degrees
    std::size_t column = 0;
    int row = numberRow;

    Hand hand() const { return column < 5 ? Hand::left : Hand::right; }
    Finger finger() const { return fingers[column]; }
};

double angleOf(const Board::Key& key) { return key.isTurned() ? key.r : 0; }

double distance(const Board::Point& a, const Board::Point& b) { return std::hypot(a.x - b.x, a.y - b.y); }

/// The keys of the block that the board has.
std::vector<Anchor> anchorsByCode(const std::vector<Board::Key>& keys) {
    std::vector<Anchor> anchors;
    for (std::size_t row = 0; row < block.size(); ++row)
        for (std::size_t column = 0; column < 10; ++column)
            for (const Board::Key& key : keys)
                if (key.keyCode == block[row][column])
                    anchors.push_back(
                        {key.center(), angleOf(key), column, numberRow + static_cast<int>(row)});
    return anchors;
}

/// The middle of the lowest keys that are not turned, or of the board's last row where all are turned.
double lowestRow(const std::vector<Board::Key>& keys, const Board::Rect& bounds) {
    double lowest = -std::numeric_limits<double>::infinity();
    for (const Board::Key& key : keys)
        if (!key.isTurned()) lowest = std::max(lowest, key.center().y);
    return std::isinf(lowest) ? bounds.y + bounds.h - 0.5 : lowest;
}

/// Where the left hand's letters end and the right hand's begin: at the widest stretch of x near the middle
/// in which no key of their rows is; without one, where rows of 13 units and more have T and Y, or in the
/// middle.
std::pair<double, double> innerEnds(const std::vector<Board::Key>& keys, const Board::Rect& bounds,
                                    double home) {
    std::vector<std::pair<double, double>> spans;
    for (const Board::Key& key : keys)
        if (!key.isTurned() && std::abs(key.center().y - home) < 1.5)
            spans.emplace_back(key.x, key.x + key.w);
    std::sort(spans.begin(), spans.end());
    const double middle = bounds.x + bounds.w / 2;
    std::pair<double, double> widest{middle, middle};
    double covered = bounds.x;
    for (const auto& [left, right] : spans) {
        const bool isNearMiddle = std::abs((covered + left) / 2 - middle) < bounds.w / 6;
        if (isNearMiddle && left - covered > widest.second - widest.first) widest = {covered, left};
        covered = std::max(covered, right);
    }
    if (widest.second - widest.first > 0.5) return widest;
    const double between = bounds.w > 13 ? bounds.x + 6.65 : middle;
    return {between, between};
}

/// Where the letters would be on a board that says nothing about them.
std::vector<Anchor> assumedAnchors(const std::vector<Board::Key>& keys, const Board::Rect& bounds) {
    const double lowest = lowestRow(keys, bounds);
    const auto [left, right] = innerEnds(keys, bounds, lowest + homeRow - bottomRow);
    std::vector<Anchor> anchors;
    for (int row = numberRow; row <= lowerRow; ++row)
        for (std::size_t column = 0; column < 10; ++column) {
            const double fromMiddle = static_cast<double>(column) - 4.5;
            const double x = (column < 5 ? left : right) + fromMiddle;
            anchors.push_back({{x, lowest + row - bottomRow}, 0, column, row});
        }
    return anchors;
}

struct Strike {
    Hand hand = Hand::left;
    Finger finger = Finger::thumb;
    Row row = Row::thumb;
};

/// The arrow keys and the number pad of a board in one piece: three fingers next to each other, whatever is
/// near.
std::optional<Finger> clusterFinger(KeyCode code) {
    struct Cluster {
        Finger finger;
        std::initializer_list<KeyCode> codes;
    };
    for (const Cluster& cluster :
         {Cluster{Finger::index, {123, 71, 89, 86, 83}}, Cluster{Finger::middle, {125, 126, 75, 91, 87, 84}},
          Cluster{Finger::ring, {124, 67, 92, 88, 85, 65}}, Cluster{Finger::pinky, {78, 69, 76}},
          Cluster{Finger::thumb, {82}}})
        if (std::find(cluster.codes.begin(), cluster.codes.end(), code) != cluster.codes.end())
            return cluster.finger;
    return std::nullopt;
}

class Guess {
  public:
    explicit Guess(const std::vector<Board::Key>& keys) {
        Board board;
        board.keys = keys;
        const Board::Rect bounds = board.bounds();
        anchors_ = anchorsByCode(keys);
        if (anchors_.size() < 20) anchors_ = assumedAnchors(keys, bounds);
        isSplit_ = innerGap() > 1.6;
        findSpace(keys);
    }

    Strike strike(const Board::Key& key) const {
        const Anchor& near = nearest(key.center());
        const Board::Point from = inColumn(near, key.center());
        const int row = std::clamp(near.row + static_cast<int>(std::lround(from.y)), 0, bottomRow);
        const Strike plain{near.hand(), near.finger(), static_cast<Row>(row)};
        if (!isSplit_ && key.keyCode)
            if (const auto finger = clusterFinger(*key.keyCode)) return {Hand::right, *finger, plain.row};
        if (row < bottomRow) return plain;
        return isSplit_ ? belowHalf(key, near, from, plain) : belowLetters(key, near, plain);
    }

    /// Marks the key nearest to each place where a finger rests.
    void markResting(std::vector<Board::Key>& keys) const {
        for (const Anchor& anchor : anchors_) {
            if (anchor.row != homeRow || !restsInHomeRow(anchor.column)) continue;
            const auto key =
                std::min_element(keys.begin(), keys.end(), [&](const Board::Key& a, const Board::Key& b) {
                    return distance(a.center(), anchor.center) < distance(b.center(), anchor.center);
                });
            if (distance(key->center(), anchor.center) < 0.6) key->home = true;
        }
    }

  private:
    const Anchor& nearest(const Board::Point& point) const {
        return *std::min_element(anchors_.begin(), anchors_.end(), [&](const Anchor& a, const Anchor& b) {
            return distance(a.center, point) < distance(b.center, point);
        });
    }

    /// How far a point is right of and below an anchor, along its column.
    static Board::Point inColumn(const Anchor& anchor, const Board::Point& point) {
        const double angle = anchor.angle * std::numbers::pi / 180;
        const double dx = point.x - anchor.center.x;
        const double dy = point.y - anchor.center.y;
        return {std::cos(angle) * dx + std::sin(angle) * dy, std::cos(angle) * dy - std::sin(angle) * dx};
    }

    /// How far the inner columns of the two hands are apart, centre to centre, where they are closest.
    double innerGap() const {
        double gap = std::numeric_limits<double>::infinity();
        for (const Anchor& left : anchors_)
            for (const Anchor& right : anchors_)
                if (left.column == 4 && right.column == 5)
                    gap = std::min(gap, distance(left.center, right.center));
        return gap;
    }

    /// The space bar of a board in one piece: by its code, or the widest key of those lowest.
    void findSpace(const std::vector<Board::Key>& keys) {
        const Board::Key* widest = nullptr;
        for (const Board::Key& key : keys) {
            const Anchor& near = nearest(key.center());
            const bool isBelow = near.row + std::lround(inColumn(near, key.center()).y) >= bottomRow;
            if (key.keyCode == spaceKey) {
                widest = &key;
                break;
            }
            if (isBelow && key.w >= 2 && (!widest || key.w > widest->w)) widest = &key;
        }
        if (!widest) return;
        spaceLeft_ = widest->center().x - widest->w / 2;
        spaceRight_ = widest->center().x + widest->w / 2;
    }

    /// Below the letters of a half, columns go on where keys are exactly under them; the rest is the
    /// thumb's.
    static Strike belowHalf(const Board::Key& key, const Anchor& near, const Board::Point& from,
                            const Strike& plain) {
        const double off = std::max(std::abs(from.x), std::abs(from.y - std::round(from.y)));
        const bool isInColumn = off < 0.2 && key.w == 1 && key.h == 1 && angleOf(key) == near.angle;
        if (isInColumn) return plain;
        return {plain.hand, Finger::thumb, Row::thumb};
    }

    /// The space bar and the keys beside it are the thumbs', and so is what is under the index fingers.
    Strike belowLetters(const Board::Key& key, const Anchor& near, const Strike& plain) const {
        const double x = key.center().x;
        if (x > spaceLeft_ && x < spaceRight_) return {Hand::right, Finger::thumb, Row::bottom};
        const double beside = std::max(spaceLeft_ - x, x - spaceRight_) - key.w / 2;
        const bool isThumbs = beside < 0.1 || (near.finger() == Finger::index && !(spaceLeft_ < spaceRight_));
        return isThumbs ? Strike{plain.hand, Finger::thumb, Row::bottom} : plain;
    }

    std::vector<Anchor> anchors_;
    bool isSplit_ = false;
    double spaceLeft_ = std::numeric_limits<double>::infinity();
    double spaceRight_ = -std::numeric_limits<double>::infinity();
};

}  // namespace

void guessStrikes(std::vector<Board::Key>& keys) {
    if (keys.empty()) return;
    const Guess guess(keys);
    for (Board::Key& key : keys) {
        const Strike strike = guess.strike(key);
        key.hand = strike.hand;
        key.finger = strike.finger;
        key.row = strike.row;
        key.home = key.keyCode == spaceKey;
    }
    guess.markResting(keys);
}

}  // namespace tapcore
