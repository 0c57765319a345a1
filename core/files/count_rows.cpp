#include "core/files/count_rows.h"

namespace tapcore {
namespace {

using Kind = CountRow::Kind;
using Visit = std::function<void(const CountRow&)>;

void visitKeys(const Tally& tally, const Visit& visit) {
    for (std::size_t hour = 0; hour < Tally::hours; ++hour)
        for (const auto& [code, count] : tally.keys[hour])
            visit({Kind::key, static_cast<std::int64_t>(hour), code, {}, count});
    for (std::size_t hour = 0; hour < Tally::hours; ++hour)
        for (const auto& [chord, count] : tally.chords[hour])
            visit({Kind::chord, static_cast<std::int64_t>(hour), chord.keyCode, chord.modifiers, count});
}

/// A figure that each hour has, where it is above 0.
void visitHours(Kind kind, const std::function<std::int64_t(std::size_t hour)>& countOf, const Visit& visit) {
    for (std::size_t hour = 0; hour < Tally::hours; ++hour)
        if (const std::int64_t count = countOf(hour); count > 0)
            visit({kind, static_cast<std::int64_t>(hour), {}, {}, count});
}

}  // namespace

void forEachRow(const DayFile& file, const Visit& visit) {
    const Tally& tally = file.tally;
    visitKeys(tally, visit);
    visitHours(
        Kind::unkeyed, [&](std::size_t hour) { return tally.unkeyed[hour]; }, visit);
    visitHours(
        Kind::click, [&](std::size_t hour) { return tally.mouse[hour].clicks; }, visit);
    visitHours(
        Kind::right, [&](std::size_t hour) { return tally.mouse[hour].right; }, visit);
    visitHours(
        Kind::middle, [&](std::size_t hour) { return tally.mouse[hour].middle; }, visit);
    visitHours(
        Kind::scroll, [&](std::size_t hour) { return tally.mouse[hour].scrolls; }, visit);
    visitHours(
        Kind::moved, [&](std::size_t hour) { return tally.mouse[hour].moved; }, visit);
    if (file.peakPerMinute > 0) visit({Kind::peak, {}, {}, {}, file.peakPerMinute});
    if (file.pausedMinutes > 0) visit({Kind::paused, {}, {}, {}, file.pausedMinutes});
}

}  // namespace tapcore
