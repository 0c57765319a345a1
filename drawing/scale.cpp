#include "drawing/scale.h"

#include <algorithm>
#include <cmath>

namespace drawing {
namespace {

/// The smallest of 1, 2, 5, 10, 20, … that is at least `least`.
double roundStep(double least) {
    double power = 1;
    while (10 * power < least) power *= 10;
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least) return factor * power;
    return 10 * power;
}

}  // namespace

double amount(double value) { return std::isfinite(value) ? std::max(value, 0.0) : 0; }

std::vector<double> roundMarks(double largest, int most) {
    const double step = roundStep(amount(largest) / most);
    const double count = std::max(std::ceil(amount(largest) / step), 1.0);
    std::vector<double> marks;
    for (double mark = 0; mark <= count; ++mark) marks.push_back(mark * step);
    return marks;
}

}  // namespace drawing
