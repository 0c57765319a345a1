#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tapcore {

/// What is usual: the median of earlier values, and the middle half of them.
struct Usual {
    double median = 0;
    double lower = 0;       ///< the first quartile
    double upper = 0;       ///< the third quartile
    std::size_t count = 0;  ///< of how many values

    bool operator==(const Usual&) const = default;
};

/// So few values say what is usual.
inline constexpr std::size_t fewestUsual = 3;

/// What is usual among values in any order; nothing for fewer than three. Quartiles are interpolated between
/// the values beside them (definition 7 of Hyndman and Fan, "Sample quantiles in statistical packages",
/// 1996).
std::optional<Usual> usualOf(std::vector<double> values);

/// The quantile of ascending values, `part` from 0 to 1, by that definition; there is at least one value.
double quantile(const std::vector<double>& ascending, double part);

/// How far a value is from earlier ones, in their own spread: the modified z-score of Iglewicz and Hoaglin
/// ("How to detect and handle outliers", 1993), which is the distance from the median in units of 1.4826
/// times the median absolute deviation. That unit is the standard deviation where values are normal, and a
/// few odd values do not change it. `noise`, above 0, is the least unit: what chance alone gives. Negative
/// below the median. There is at least one earlier value.
double farness(double value, std::vector<double> earlier, double noise);

}  // namespace tapcore
