#include "core/counting/tally.h"

#include <algorithm>
#include <numeric>

namespace tapcore {
namespace {

std::size_t slot(std::int64_t hour) { return static_cast<std::size_t>(hour); }

}  // namespace

std::int64_t Tally::MouseHour::allClicks() const { return checkedSum(checkedSum(clicks, right), middle); }

Tally::MouseHour Tally::MouseHour::operator+(const MouseHour& other) const {
    return {checkedSum(clicks, other.clicks), checkedSum(right, other.right),
            checkedSum(middle, other.middle), checkedSum(scrolls, other.scrolls),
            checkedSum(moved, other.moved)};
}

void Tally::add(KeyCode keyCode, std::int64_t hour, std::int64_t count) {
    if (count >= 1 && isHour(hour)) addChecked(keys[slot(hour)][keyCode], count);
}

void Tally::add(const Chord& chord, std::int64_t hour, std::int64_t count) {
    if (count >= 1 && isHour(hour) && chord.modifiers.isChord()) addChecked(chords[slot(hour)][chord], count);
}

void Tally::addUnkeyed(std::int64_t count, std::int64_t hour) {
    if (count >= 1 && isHour(hour)) addChecked(unkeyed[slot(hour)], count);
}

void Tally::add(const MouseHour& value, std::int64_t hour) {
    if (!value.isEmpty() && isHour(hour)) mouse[slot(hour)] = mouse[slot(hour)] + value;
}

void Tally::merge(const Tally& other) {
    for (std::size_t hour = 0; hour < hours; ++hour) {
        addCounts(keys[hour], other.keys[hour]);
        addCounts(chords[hour], other.chords[hour]);
        addChecked(unkeyed[hour], other.unkeyed[hour]);
        mouse[hour] = mouse[hour] + other.mouse[hour];
    }
}

void Tally::forgetKeys() {
    for (std::size_t hour = 0; hour < hours; ++hour) {
        addChecked(unkeyed[hour], sumOfCounts(keys[hour]));
        keys[hour].clear();
    }
}

void Tally::forgetChords() {
    for (ChordCounts& hour : chords) hour.clear();
}

Tally::Hourly<std::int64_t> Tally::byHour() const {
    Hourly<std::int64_t> result{};
    for (std::size_t hour = 0; hour < hours; ++hour)
        result[hour] = checkedSum(sumOfCounts(keys[hour]), unkeyed[hour]);
    return result;
}

std::int64_t Tally::total() const {
    const auto presses = byHour();
    return std::accumulate(presses.begin(), presses.end(), std::int64_t{0}, checkedSum);
}

std::int64_t Tally::activeHours() const {
    const auto presses = byHour();
    return std::count_if(presses.begin(), presses.end(), [](std::int64_t count) { return count >= 1; });
}

Tally::KeyCounts Tally::byKey() const {
    KeyCounts result;
    for (const KeyCounts& hour : keys) addCounts(result, hour);
    return result;
}

Tally::ChordCounts Tally::byChord() const {
    ChordCounts result;
    for (const ChordCounts& hour : chords) addCounts(result, hour);
    return result;
}

Tally::MouseHour Tally::mouseTotal() const { return sumOf(mouse); }

Tally::Hourly<std::int64_t> Tally::clicksByHour() const { return clicksOf(mouse); }

double Tally::movedMetres() const { return static_cast<double>(mouseTotal().moved) * metresPerPoint; }

bool Tally::isEmpty() const { return *this == Tally{}; }

Tally::MouseHour sumOf(const Tally::Hourly<Tally::MouseHour>& mouse) {
    Tally::MouseHour sum;
    for (const Tally::MouseHour& hour : mouse) sum = sum + hour;
    return sum;
}

Tally::Hourly<std::int64_t> clicksOf(const Tally::Hourly<Tally::MouseHour>& mouse) {
    Tally::Hourly<std::int64_t> clicks{};
    for (std::size_t hour = 0; hour < Tally::hours; ++hour) clicks[hour] = mouse[hour].allClicks();
    return clicks;
}

KeyCode remapped(KeyCode code, const KeyRemap& remap) {
    const auto found = remap.find(code);
    return found == remap.end() ? code : found->second;
}

Tally::KeyCounts remapped(const Tally::KeyCounts& counts, const KeyRemap& remap) {
    Tally::KeyCounts result;
    for (const auto& [code, count] : counts) addChecked(result[remapped(code, remap)], count);
    return result;
}

Tally::ChordCounts remapped(const Tally::ChordCounts& counts, const KeyRemap& remap) {
    Tally::ChordCounts result;
    for (const auto& [chord, count] : counts)
        addChecked(result[{chord.modifiers, remapped(chord.keyCode, remap)}], count);
    return result;
}

Tally remapped(const Tally& tally, const KeyRemap& remap) {
    Tally result = tally;
    for (Tally::KeyCounts& counts : result.keys) counts = remapped(counts, remap);
    for (Tally::ChordCounts& counts : result.chords) counts = remapped(counts, remap);
    return result;
}

}  // namespace tapcore
