#pragma once

#include <vector>

#include "core/keyboard/board.h"

namespace tapcore {

/// Guesses from the places of keys which hand, finger and row strike each of them, and where fingers rest.
/// The letters, known by their codes, show where each finger's column runs; every other key belongs to the
/// letter next to it. On a board whose letters are not known they are assumed around its middle, the home row
/// two above the lowest row.
void guessStrikes(std::vector<Board::Key>& keys);

}  // namespace tapcore
