#include "core/files/summary.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/foundation/checked.h"

namespace tapcore {

void Summary::add(const Day& day, const DayFile& file) {
    const Tally& tally = file.tally;
    const auto hourly = tally.byHour();
    const std::int64_t total = std::accumulate(hourly.begin(), hourly.end(), std::int64_t{0}, checkedSum);
    addChecked(keystrokes, total);
    addChecked(activeHours,
               std::count_if(hourly.begin(), hourly.end(), [](auto count) { return count >= 1; }));
    peakPerMinute = std::max(peakPerMinute, file.peakPerMinute);
    byDay.push_back({day, total});
    addCounts(byKey, tally.byKey());
    addCounts(byChord, tally.byChord());
    for (std::size_t hour = 0; hour < Tally::hours; ++hour) {
        addChecked(byHour[hour], hourly[hour]);
        mouse[hour] = mouse[hour] + tally.mouse[hour];
    }
}

std::int64_t Summary::averagePerActiveHour() const { return activeHours == 0 ? 0 : keystrokes / activeHours; }

std::int64_t Summary::clicks() const { return mouseTotal().allClicks(); }

Tally::Hourly<std::int64_t> Summary::clicksByHour() const { return clicksOf(mouse); }

Tally::MouseHour Summary::mouseTotal() const { return sumOf(mouse); }

double Summary::movedMetres() const {
    return static_cast<double>(mouseTotal().moved) * Tally::metresPerPoint;
}

std::optional<std::int64_t> Summary::keyboardShare() const {
    const std::int64_t all = checkedSum(keystrokes, clicks());
    if (all == 0) return std::nullopt;
    const double share = static_cast<double>(keystrokes) * 100 / static_cast<double>(all);
    return static_cast<std::int64_t>(std::round(share));
}

Summary Summary::remapped(const std::optional<KeyRemap>& remap) const {
    if (!remap) return *this;
    Summary result = *this;
    result.byKey = tapcore::remapped(byKey, *remap);
    result.byChord = tapcore::remapped(byChord, *remap);
    return result;
}

}  // namespace tapcore
