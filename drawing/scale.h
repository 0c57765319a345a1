#pragma once

#include <vector>

namespace drawing {

/// Maps numbers evenly onto places: `from` is at `start`, `to`, which must be another number, at `end`.
/// Numbers beyond them have places beyond those.
struct Scale {
    double from = 0;
    double to = 1;
    double start = 0;
    double end = 1;

    double operator()(double value) const { return start + (value - from) / (to - from) * (end - start); }
};

/// Round numbers from 0 to at least `largest`, evenly spaced by 1, 2 or 5 times a power of ten that is no
/// fraction: at most `most` + 1 of them, and 0 and 1 when there is nothing to measure.
std::vector<double> roundMarks(double largest, int most);

/// What can be drawn as an amount: 0 for what is negative or no finite number.
double amount(double value);

}  // namespace drawing
