#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "app/common/command_line/records_json.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/practice/figures.h"
#include "app/practice/tasks.h"
#include "core/foundation/integers.h"
#include "core/practice/practice_record.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::PracticeRecord;

/// The record, with what today adds to it.
struct RecordOfToday {
    PracticeRecord record;
    std::int64_t streak = 0;
    std::int64_t todaySeconds = 0;
    std::int64_t goalSeconds = 0;
};

std::string daysText(std::int64_t days) {
    return tapcore::counted(static_cast<std::size_t>(days), "day", "days");
}

std::string weekText(const PracticeRecord& record) {
    std::string text = record.daysThisWeek > 0 ? daysText(record.daysThisWeek) : "not practised";
    if (record.weekWPM) text += fmt::format(", {} wpm", *record.weekWPM);
    if (record.weekChange) text += fmt::format(" ({:+} on the week before)", *record.weekChange);
    return text;
}

std::string streakText(const RecordOfToday& today) {
    if (today.record.longestStreak == 0) return "no day that reached the goal yet";
    return fmt::format("{}, at most {}", daysText(today.streak), today.record.longestStreak);
}

std::string text(const RecordOfToday& today) {
    const PracticeRecord& record = today.record;
    const std::string best = record.bestWPM > 0 ? fmt::format("{} wpm", record.bestWPM) : "none yet";
    return fmt::format(
        "  today         {} of {}\n"
        "  last 7 days   {}\n"
        "  in a row      {}\n"
        "  best lesson   {}\n",
        minutes(today.todaySeconds), minutes(today.goalSeconds), weekText(record), streakText(today), best);
}

json toJson(const RecordOfToday& today) {
    const PracticeRecord& record = today.record;
    json result = {{"bestWPM", record.bestWPM},           {"longestStreak", record.longestStreak},
                   {"daysThisWeek", record.daysThisWeek}, {"streak", today.streak},
                   {"todaySeconds", today.todaySeconds},  {"goalSeconds", today.goalSeconds}};
    if (record.weekWPM) result["weekWPM"] = *record.weekWPM;
    if (record.weekChange) result["weekChange"] = *record.weekChange;
    return result;
}

}  // namespace

void printRecord(const PracticeOptions& options, const Environment& environment) {
    const tapcore::Calendar& calendar = environment.calendar;
    const tapcore::Store store = openStore(options.folder, environment);
    const std::int64_t goal =
        choosePractice(options, environment, Settings::read(environment), store).setup.goalSeconds;
    const tapcore::Day day = today(options.folder, environment, calendar);
    const tapcore::PracticeHistory history = readHistory(store);
    const RecordOfToday record{PracticeRecord(history, day, goal, calendar),
                               PracticeRecord::streak(history, day, goal, calendar), history.seconds(day),
                               goal};
    print(options.json ? jsonText(toJson(record)) : text(record));
}

}  // namespace tappora
