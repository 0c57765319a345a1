#include "app/common/folder/quiet_hours.h"

#include "app/common/folder/settings.h"
#include "app/common/system/directories.h"
#include "app/common/system/environment.h"
#include "core/foundation/checked.h"

namespace tappora {
namespace {

using tapcore::Day;
using tapcore::DayFile;
using tapcore::Tally;
using tapcore::WaitingHour;

bool hasPresses(const Tally& tally, std::size_t hour) {
    return !tally.keys[hour].empty() || tally.unkeyed[hour] > 0;
}

void forgetKeys(Tally& tally, std::size_t hour) {
    for (const auto& [key, count] : tally.keys[hour]) tapcore::addChecked(tally.unkeyed[hour], count);
    tally.keys[hour] = {};
    tally.chords[hour] = {};
}

/// The hour that counts wait for: their last one, or, where they are of no hour, the current one.
WaitingHour lastHour(const Day& day, const Tally& tally, const std::optional<WaitingHour>& underWay) {
    for (std::size_t hour = Tally::hours; hour-- > 0;)
        if (hasPresses(tally, hour) || !tally.mouse[hour].isEmpty())
            return {day, static_cast<std::int64_t>(hour)};
    return underWay && underWay->day == day ? *underWay : WaitingHour{day, Tally::hours - 1};
}

void addTo(DayFile& file, const DayFile& counts) {
    file.merge(counts.tally, counts.peakPerMinute, counts.pausedMinutes);
    if (counts.board) file.board = counts.board;
    if (counts.layout) file.layout = counts.layout;
}

}  // namespace

QuietRules QuietRules::now(const Environment& environment) {
    if (!configDirectory(environment.variable)) return {};
    const Settings settings = Settings::read(environment);
    const Environment current = atThisMoment(environment);
    return {.floor = *settings.integer("privacy.floor"),
            .hourly = settings.flag("privacy.hourly"),
            .underWay =
                WaitingHour{Day(current.now, current.calendar), current.calendar.local(current.now).hour}};
}

QuietHours::Place QuietHours::add(const Day& day, const DayFile& counts) const {
    store_.requireFits(day, counts.tally);
    const WaitingHour last = lastHour(day, counts.tally, rules_.underWay);
    if (!isDue(last, counts.tally)) {
        store_.addWaiting(last, counts);
        return Place::waiting;
    }
    // What is added of hours that are over, as a recording's, leaves those alone that wait for their end.
    store(day, counts, rules_.underWay ? dueOf(day, counts.tally) : Hours());
    return Place::inFolder;
}

std::set<Day> QuietHours::takeIn() const {
    std::set<Day> days;
    for (const WaitingHour& hour : store_.waitingHours()) days.insert(hour.day);
    for (const Day& day : days) store_.requireFits(day, {});
    std::erase_if(days, [&](const Day& day) { return dueOf(day, {}).empty(); });
    for (const Day& day : days) store(day, {}, dueOf(day, {}));
    return days;
}

/// Whether an hour may be in the folder, with counts that are not stored yet: it is over, or all its presses
/// have reached the floor, and it need not end first.
bool QuietHours::isDue(const WaitingHour& hour, const Tally& counts) const {
    if (!rules_.mayKeepWaiting() || hour != *rules_.underWay) return true;
    if (rules_.hourly) return false;
    Tally waiting = store_.readWaiting(hour).tally;
    waiting.merge(counts);
    const auto presses = pressesWith(hour.day, counts);
    for (std::size_t at = 0; at < Tally::hours; ++at)
        if (hasPresses(waiting, at) && presses[at] < rules_.floor) return false;
    return true;
}

QuietHours::Hours QuietHours::dueOf(const Day& day, const Tally& counts) const {
    Hours due = store_.waitingHours();
    std::erase_if(due, [&](const WaitingHour& hour) { return hour.day != day || !isDue(hour, counts); });
    return due;
}

/// All that is known of a day's hours.
Tally::Hourly<std::int64_t> QuietHours::pressesWith(const Day& day, const Tally& counts) const {
    Tally all = store_.readOwn(day).tally;
    all.merge(counts);
    return all.byHour();
}

void QuietHours::store(const Day& day, const DayFile& counts, const Hours& waiting) const {
    Tally touched = counts.tally;
    for (const WaitingHour& hour : waiting) touched.merge(store_.readWaiting(hour).tally);
    const auto presses = rules_.floor > 0 ? pressesWith(day, counts.tally) : touched.byHour();
    const auto addAndJudge = [&](DayFile& file) {
        addTo(file, counts);
        for (std::size_t hour = 0; hour < Tally::hours; ++hour)
            if (hasPresses(touched, hour) && presses[hour] < rules_.floor) forgetKeys(file.tally, hour);
    };
    store_.change(day, tapcore::Store::UnusedLines::kept, addAndJudge, waiting);
}

}  // namespace tappora
