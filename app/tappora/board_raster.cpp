#include "app/tappora/board_raster.h"

#include <algorithm>
#include <cmath>

namespace tappora {
namespace {

using tapcore::Board;

/// So that a dot on a key's very edge is judged alike whatever the rounding.
constexpr double grain = 1e-6;

bool holds(const Board::Rect& rect, Board::Point point, double right, double bottom) {
    return point.x > rect.x - grain && point.x < rect.x + rect.w - right - grain &&
           point.y > rect.y - grain && point.y < rect.y + rect.h - bottom - grain;
}

/// A key that turns the other way: it takes the key's points back to where they were.
Board::Key turnedBack(Board::Key key) {
    key.r = -key.r;
    return key;
}

/// The box around a turned key.
Board::Rect boxOf(const Board::Key& key) { return Board{.id = "", .keys = {key}}.bounds(); }

std::size_t dots(double length) { return static_cast<std::size_t>(std::ceil(std::max(length - grain, 0.0))); }

}  // namespace

bool isDrawable(const Board::Rect& bounds) {
    constexpr double most = 200;
    return bounds.w > 0 && bounds.h > 0 && bounds.w <= most && bounds.h <= most;
}

BoardRaster::BoardRaster(const Board& board, std::size_t across, std::size_t down)
    : bounds_(board.bounds()),
      across_(static_cast<double>(across)),
      down_(static_cast<double>(down)),
      width_(dots(bounds_.w * across_)),
      height_(dots(bounds_.h * down_)),
      keys_(width_ * height_, none) {
    for (std::size_t number = 0; number < board.keys.size(); ++number) draw(board.keys[number], number);
}

void BoardRaster::draw(const Board::Key& key, std::size_t number) {
    const Board::Rect box = boxOf(key);
    const Board::Key back = turnedBack(key);
    const auto first = [](double place) {
        return static_cast<std::size_t>(std::max(std::floor(place), 0.0));
    };
    const std::size_t right = std::min(width_, dots((box.x + box.w - bounds_.x) * across_) + 1);
    const std::size_t bottom = std::min(height_, dots((box.y + box.h - bounds_.y) * down_) + 1);
    for (std::size_t y = first((box.y - bounds_.y) * down_); y < bottom; ++y)
        for (std::size_t x = first((box.x - bounds_.x) * across_); x < right; ++x) {
            const Board::Point middle{bounds_.x + (static_cast<double>(x) + 0.5) / across_,
                                      bounds_.y + (static_cast<double>(y) + 0.5) / down_};
            const Board::Point own = back.turned(middle);
            const bool isCovered = holds(key.rect(), own, 1 / across_, 1 / down_) ||
                                   (key.second && holds(*key.second, own, 1 / across_, 1 / down_));
            if (isCovered) keys_[y * width_ + x] = number;
        }
}

}  // namespace tappora
