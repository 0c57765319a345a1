#include "drawing/contour.h"

#include <algorithm>
#include <array>
#include <utility>

namespace drawing {
namespace {

std::vector<double> sortedEdges(std::vector<double> edges) {
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    return edges;
}

/// The plane cut along all sides of the rectangles, and which of the cells they cover.
class Grid {
  public:
    explicit Grid(std::span<const Rect> parts) {
        for (const Rect& part : parts) {
            xs_.insert(xs_.end(), {part.x, part.right()});
            ys_.insert(ys_.end(), {part.y, part.bottom()});
        }
        xs_ = sortedEdges(std::move(xs_));
        ys_ = sortedEdges(std::move(ys_));
        covered_.resize(xs_.size() * ys_.size());
        borders_.resize(covered_.size());
        for (const Rect& part : parts) cover(part);
    }

    std::vector<Contour> contours() {
        forEachCrossing([this](Crossing at) { borders_[index(at)] = bordersAt(at); });
        std::vector<Contour> result;
        forEachCrossing([&](Crossing at) {
            if (borders_[index(at)][0]) result.push_back(traced(at));
        });
        return result;
    }

  private:
    struct Crossing {
        std::size_t column;
        std::size_t row;
    };
    /// Which sides begin at a crossing, by heading.
    using Borders = std::array<bool, 4>;

    template <class Visit>
    void forEachCrossing(Visit visit) {
        for (std::size_t row = 0; row < ys_.size(); ++row)
            for (std::size_t column = 0; column < xs_.size(); ++column) visit(Crossing{column, row});
    }

    std::size_t index(Crossing at) const { return at.row * xs_.size() + at.column; }
    Point place(Crossing at) const { return {xs_[at.column], ys_[at.row]}; }

    void cover(const Rect& part) {
        forEachCrossing([&](Crossing at) {
            const auto [x, y] = place(at);
            if (x >= part.x && x < part.right() && y >= part.y && y < part.bottom())
                covered_[index(at)] = true;
        });
    }

    /// Whether the cell right below a crossing is covered. Left of the first and above it none is: there the
    /// number has wrapped.
    bool isCovered(std::size_t column, std::size_t row) const {
        return column < xs_.size() && row < ys_.size() && covered_[row * xs_.size() + column];
    }

    Borders bordersAt(Crossing at) const {
        const bool here = isCovered(at.column, at.row);
        const bool left = isCovered(at.column - 1, at.row);
        const bool above = isCovered(at.column, at.row - 1);
        const bool across = isCovered(at.column - 1, at.row - 1);
        return {here && !above, left && !here, across && !left, above && !across};
    }

    static Crossing next(Crossing at, Heading heading) {
        switch (heading) {
            case 0:
                return {at.column + 1, at.row};
            case 1:
                return {at.column, at.row + 1};
            case 2:
                return {at.column - 1, at.row};
            default:
                return {at.column, at.row - 1};
        }
    }

    /// Takes the sides from the one that goes right from `at`, until they lead back to it.
    Contour traced(Crossing at) {
        Contour contour;
        Heading heading = 0;
        while (borders_[index(at)][heading]) {
            borders_[index(at)][heading] = false;
            at = next(at, heading);
            const Heading turned = nextHeading(borders_[index(at)], heading);
            if (turned != heading) contour.push_back({place(at), heading, turned});
            heading = turned;
        }
        return contour;
    }

    /// Turns right where it can, so that cells which only share a corner stay apart. Back at the start
    /// nothing is left to take but the first side again, and that one went right.
    static Heading nextHeading(const Borders& sides, Heading heading) {
        for (const Heading next : {rightOf(heading), heading, leftOf(heading)})
            if (sides[next]) return next;
        return 0;
    }

    std::vector<double> xs_;
    std::vector<double> ys_;
    std::vector<bool> covered_;
    std::vector<Borders> borders_;
};

}  // namespace

std::vector<Contour> contoursOf(std::span<const Rect> parts) {
    if (parts.size() != 1) return Grid(parts).contours();
    const Rect& one = parts.front();  // what most are
    return {{{{one.right(), one.y}, 0, 1},
             {{one.right(), one.bottom()}, 1, 2},
             {{one.x, one.bottom()}, 2, 3},
             {{one.x, one.y}, 3, 0}}};
}

}  // namespace drawing
