#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <utility>
#include <vector>

#include "core/foundation/checked.h"

namespace tapcore {

/// A map kept as one sorted vector: cheap to walk, to merge and to append to in ascending order.
/// Walking it gives pairs by key ascending. References and iterators end with the next insertion.
template <class Key, class Value>
class FlatMap {
  public:
    using value_type = std::pair<Key, Value>;
    using const_iterator = typename std::vector<value_type>::const_iterator;

    FlatMap() = default;
    FlatMap(std::initializer_list<value_type> items) {
        for (const auto& [key, value] : items) (*this)[key] = value;
    }

    const_iterator begin() const { return items_.begin(); }
    const_iterator end() const { return items_.end(); }
    std::size_t size() const { return items_.size(); }
    bool empty() const { return items_.empty(); }
    void clear() { items_.clear(); }
    void reserve(std::size_t size) { items_.reserve(size); }

    /// The value of `key`, made first when there is none. Constant time for a key above all others.
    Value& operator[](const Key& key) {
        if (items_.capacity() == 0) items_.reserve(fewItems);
        if (items_.empty() || items_.back().first < key) return items_.emplace_back(key, Value{}).second;
        auto at = lowerBound(key);
        if (at->first != key) at = items_.emplace(at, key, Value{});
        return at->second;
    }

    /// The value of `key`, or nothing. Owned by the map.
    const Value* find(const Key& key) const {
        const auto at = std::lower_bound(items_.begin(), items_.end(), key, before);
        return at != items_.end() && at->first == key ? &at->second : nullptr;
    }

    /// The value of `key`, or the one given.
    Value valueOr(const Key& key, Value otherwise) const {
        const Value* found = find(key);
        return found ? *found : std::move(otherwise);
    }

    bool contains(const Key& key) const { return find(key) != nullptr; }

    /// Merges two maps in one walk; `join(value, otherValue)` says what two values of one key become.
    template <class Join>
    void merge(const FlatMap& other, Join join) {
        if (empty()) items_ = other.items_;
        else if (hasKeysOf(other)) joinPresent(other, join);
        else joinAndInsert(other, join);
    }

    bool operator==(const FlatMap&) const = default;

  private:
    static constexpr std::size_t fewItems = 16;  ///< to start with: an hour's keys are dozens

    static bool before(const value_type& item, const Key& key) { return item.first < key; }
    auto lowerBound(const Key& key) { return std::lower_bound(items_.begin(), items_.end(), key, before); }

    bool hasKeysOf(const FlatMap& other) const {
        return std::includes(begin(), end(), other.begin(), other.end(),
                             [](const value_type& a, const value_type& b) { return a.first < b.first; });
    }

    template <class Join>
    void joinPresent(const FlatMap& other, Join join) {
        auto mine = items_.begin();
        for (const auto& [key, value] : other) {
            while (mine->first < key) ++mine;
            join(mine->second, value);
        }
    }

    template <class Join>
    void joinAndInsert(const FlatMap& other, Join join) {
        std::vector<value_type> merged;
        merged.reserve(items_.size() + other.items_.size());
        auto left = items_.begin();
        for (const auto& item : other.items_) {
            while (left != items_.end() && left->first < item.first) merged.push_back(std::move(*left++));
            if (left != items_.end() && left->first == item.first) {
                join(left->second, item.second);
                merged.push_back(std::move(*left++));
            } else {
                merged.push_back(item);
            }
        }
        std::move(left, items_.end(), std::back_inserter(merged));
        items_ = std::move(merged);
    }

    std::vector<value_type> items_;
};

/// Adds the counts of `other` to those of equal keys; fatal when one leaves 64 bits.
template <class Key>
void addCounts(FlatMap<Key, std::int64_t>& counts, const FlatMap<Key, std::int64_t>& other) {
    counts.merge(other, [](std::int64_t& count, std::int64_t more) { addChecked(count, more); });
}

/// The sum of all counts; fatal when it leaves 64 bits.
template <class Key>
std::int64_t sumOfCounts(const FlatMap<Key, std::int64_t>& counts) {
    std::int64_t sum = 0;
    for (const auto& item : counts) addChecked(sum, item.second);
    return sum;
}

}  // namespace tapcore
