#include "core/reports/usual.h"

#include <algorithm>
#include <cmath>

namespace tapcore {
namespace {

double medianOf(std::vector<double>& values) {
    std::sort(values.begin(), values.end());
    return quantile(values, 0.5);
}

}  // namespace

double quantile(const std::vector<double>& ascending, double part) {
    const double at = part * static_cast<double>(ascending.size() - 1);
    const auto below = static_cast<std::size_t>(at);
    const std::size_t above = std::min(below + 1, ascending.size() - 1);
    return ascending[below] + (at - static_cast<double>(below)) * (ascending[above] - ascending[below]);
}

std::optional<Usual> usualOf(std::vector<double> values) {
    if (values.size() < fewestUsual) return std::nullopt;
    std::sort(values.begin(), values.end());
    return Usual{quantile(values, 0.5), quantile(values, 0.25), quantile(values, 0.75), values.size()};
}

double farness(double value, std::vector<double> earlier, double noise) {
    const double median = medianOf(earlier);
    for (double& each : earlier) each = std::abs(each - median);
    constexpr double toStandardDeviation = 1.4826;
    return (value - median) / std::max(toStandardDeviation * medianOf(earlier), noise);
}

}  // namespace tapcore
