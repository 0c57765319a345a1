#include "app/recorder/day_book.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "core/foundation/checked.h"

namespace tappora {
namespace {

using tapcore::Tally;

template <class Counts>
Counts without(const Counts& counts, auto isLeftOut) {
    Counts kept;
    for (const auto& [key, count] : counts)
        if (!isLeftOut(key)) kept[key] = count;
    return kept;
}

void forget(Tally& tally, tapcore::KeyCode key) {
    for (std::size_t hour = 0; hour < Tally::hours; ++hour) {
        tapcore::addChecked(tally.unkeyed[hour], tally.keys[hour].valueOr(key, 0));
        tally.keys[hour] = without(tally.keys[hour], [&](tapcore::KeyCode code) { return code == key; });
        tally.chords[hour] =
            without(tally.chords[hour], [&](const Tally::Chord& chord) { return chord.keyCode == key; });
    }
}

}  // namespace

void DayCounts::add(const DayCounts& later) {
    tally.merge(later.tally);
    peakPerMinute = std::max(peakPerMinute, later.peakPerMinute);
    pausedMinutes += later.pausedMinutes;
}

void DayBook::add(const tapcore::Day& day, const tapcore::Counter::Drained& drained,
                  std::int64_t pausedMinutes) {
    const DayCounts counts{drained.tally, drained.peakPerMinute, pausedMinutes};
    if (!counts.isEmpty()) days_[day].add(counts);
}

void DayBook::add(const DayBook& other) {
    for (const auto& [day, counts] : other.days_) days_[day].add(counts);
}

void DayBook::store(const Write& write) {
    std::exception_ptr failure;
    std::erase_if(days_, [&](const auto& entry) {
        try {
            write(entry.first, entry.second);
            return true;
        } catch (...) {
            if (!failure) failure = std::current_exception();
            return false;
        }
    });
    if (failure) std::rethrow_exception(failure);
}

void DayBook::forgetKey(tapcore::KeyCode key) {
    for (auto& [day, counts] : days_) forget(counts.tally, key);
}

}  // namespace tappora
