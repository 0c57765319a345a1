#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include "core/keyboard/board.h"

namespace tappora {

/// A board cut into dots, as many to a key unit across and down as asked for. The last dots of a key, to the
/// right and below, are left free, so that neighbours stay apart.
class BoardRaster {
  public:
    static constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

    BoardRaster(const tapcore::Board& board, std::size_t across, std::size_t down);

    std::size_t width() const { return width_; }
    std::size_t height() const { return height_; }

    /// Which key of the board covers a dot, by its place in the list, or none.
    std::size_t key(std::size_t x, std::size_t y) const {
        return x < width_ && y < height_ ? keys_[y * width_ + x] : none;
    }

  private:
    void draw(const tapcore::Board::Key& key, std::size_t number);

    tapcore::Board::Rect bounds_;
    double across_;
    double down_;
    std::size_t width_;
    std::size_t height_;
    std::vector<std::size_t> keys_;
};

/// Whether a board can be drawn in characters: no more than 200 key units either way, and some.
bool isDrawable(const tapcore::Board::Rect& bounds);

}  // namespace tappora
