#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "app/practice/frame.h"
#include "core/keyboard/board.h"
#include "core/practice/practice_layout.h"

namespace tappora {

/// The part of a keyboard that types text, drawn with a line for each of its rows.
class KeyboardView {
  public:
    KeyboardView(const tapcore::Board& board, tapcore::Legends legends, const tapcore::Legends& own = {});

    /// The rows, with the key of the next character shown; none when they do not fit into so many columns, or
    /// the terminal cannot show their legends.
    std::vector<FrameLine> lines(const std::string& next, const ScreenShape& shape) const;

    /// How the next character is struck, in words: "left index finger", "right ring finger, with left shift".
    /// Nothing when no key of the board types it.
    std::optional<std::string> finger(const std::string& next) const;

    /// Says, in lines of text, which of the letters no key types, because the layout or the board lacks it,
    /// and how to choose another one; `fitting` are the layouts that have all letters. "" when none is
    /// missing.
    std::string remark(const std::vector<std::string>& letters, const std::string& layout,
                       const std::vector<std::string>& fitting) const;

  private:
    struct Key {
        std::size_t row = 0;
        double x = 0;  ///< of its middle, in key units
        std::string legend;
        tapcore::KeyCode code = 0;
        tapcore::Board::Hand hand = tapcore::Board::Hand::left;
        tapcore::Board::Finger finger = tapcore::Board::Finger::pinky;
    };

    const Key* struck(const std::string& next) const;
    std::optional<std::vector<FrameLine>> drawn(std::size_t columnsOfUnit, const Key* next,
                                                std::size_t columns) const;

    std::string board_;  ///< its id
    tapcore::Legends legends_;
    std::vector<Key> keys_;  ///< by row, then from left to right
};

}  // namespace tappora
