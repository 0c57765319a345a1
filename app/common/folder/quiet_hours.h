#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "core/counting/day.h"
#include "core/counting/tally.h"
#include "core/files/day_file.h"
#include "core/files/store.h"
#include "core/files/waiting_hours.h"

namespace tappora {

struct Environment;

/// What the settings ask for, and the current hour.
struct QuietRules {
    std::int64_t floor = 0;                                       ///< privacy.floor
    bool hourly = false;                                          ///< privacy.hourly
    std::optional<tapcore::WaitingHour> underWay = std::nullopt;  ///< none: every hour is over

    /// Those of the user's settings, at this moment. Failure when the settings cannot be read.
    static QuietRules now(const Environment& environment);

    /// Whether counts may have to wait.
    bool mayKeepWaiting() const { return underWay && (floor > 0 || hourly); }
    /// The same rules, for counts of hours that are over.
    QuietRules afterwards() const { return {floor, hourly, std::nullopt}; }
};

/// Stores counts as the rules ask: in the day's file, or, while they may not be there, among the hours that
/// wait. An hour is judged as a whole, with what is stored of it and what waits: when it has fewer presses
/// than the floor, its keys and shortcuts are forgotten in the day's file. Its caller holds the lock of
/// writers.
class QuietHours {
  public:
    QuietHours(tapcore::Store store, const QuietRules& rules) : store_(std::move(store)), rules_(rules) {}

    /// Where counts were stored.
    enum class Place { inFolder, waiting };
    /// Adds counts in one step: what it throws means that none of them is stored. Board and layout of the
    /// counts are those that the day's file is to name.
    Place add(const tapcore::Day& day, const tapcore::DayFile& counts) const;

    /// Takes the hours that need not wait any longer into their days, and gives these. What it throws names a
    /// file; the hours then wait on.
    std::set<tapcore::Day> takeIn() const;

  private:
    using Hours = std::vector<tapcore::WaitingHour>;

    bool isDue(const tapcore::WaitingHour& hour, const tapcore::Tally& counts) const;
    Hours dueOf(const tapcore::Day& day, const tapcore::Tally& counts) const;
    void store(const tapcore::Day& day, const tapcore::DayFile& counts, const Hours& waiting) const;
    tapcore::Tally::Hourly<std::int64_t> pressesWith(const tapcore::Day& day,
                                                     const tapcore::Tally& counts) const;

    tapcore::Store store_;
    QuietRules rules_;
};

}  // namespace tappora
