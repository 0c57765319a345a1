#include <fmt/format.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <optional>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/terminal.h"
#include "app/tappora/commands.h"
#include "app/tappora/period_text.h"
#include "app/tappora/recorder_facts.h"
#include "core/counting/chords.h"
#include "core/files/comparison.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

constexpr std::size_t topRows = 5;

/// Today at a glance.
struct Glance {
    tapcore::Day day;
    tapcore::Summary today;
    tapcore::Summary week;  ///< the seven days ending today
    std::optional<std::int64_t> comparison;
    tapcore::FileProblems problems;  ///< of today and the week
    std::optional<Pause> pause{};
    bool hasKeyboard = true;  ///< false when the recorder says that it can read none
};

/// Notes what the recorder into a data folder says; nothing when none runs, or it has no time to answer.
void askRecorder(Glance& glance, const tapcore::Store& store, const Environment& environment) {
    constexpr std::chrono::seconds patience{1};
    const auto answers = answersOf(askStatus({.folder = store.root, .patience = patience}, environment));
    for (const RecorderStatus& status : answers) {
        if (!glance.pause) glance.pause = status.pause;
        glance.hasKeyboard = glance.hasKeyboard && status.devices.hasKeyboard();
    }
}

Glance read(const tapcore::Store& store, const tapcore::Day& day, double hours,
            const tapcore::Calendar& calendar, tapcore::FileProblems& problems) {
    Glance glance{.day = day, .today = {}, .week = {}, .comparison = {}, .problems = {}};
    glance.week = store.summary(7, day, calendar, &glance.problems);
    const auto usual = tapcore::Comparison::usualDays(store, day, calendar, &problems);
    const std::string place = store.url(day).string();
    const tapcore::FatalContext context("summing up", place);
    glance.today.add(day, store.readShown(day));
    glance.comparison = tapcore::Comparison::percent(glance.today.byHour, usual, hours);
    return glance;
}

nlohmann::json glanceJson(const Glance& glance, const tapcore::Legends& legends) {
    nlohmann::json result = {
        {"day", glance.day.description()},
        {"today", glance.today.keystrokes},
        {"byHour", glance.today.byHour},
        {"week", toJson(glance.week.byDay)},
        {"topKeys", toJson(tapcore::topKeys(glance.today.byKey, legends, topRows))},
        {"topChords", toJson(tapcore::Chords::top(glance.today.byChord, legends, topRows))}};
    if (glance.comparison) result["comparison"] = *glance.comparison;
    if (glance.pause) result["pause"] = toJson(*glance.pause);
    return result;
}

std::string headline(const Glance& glance) {
    if (glance.today.keystrokes == 0) return "No keystrokes yet.";
    const std::string total = fmt::format("{} {}", tapcore::grouped(glance.today.keystrokes),
                                          glance.today.keystrokes == 1 ? "keystroke" : "keystrokes");
    return glance.comparison ? fmt::format("{}, {:+} % against your usual", total, *glance.comparison)
                             : total;
}

/// Why nothing is counted now, when that is so.
std::string pauseText(const Glance& glance, const Environment& environment) {
    if (glance.pause) return pauseLine(*glance.pause, environment);
    return glance.hasKeyboard ? "" : fmt::format("{}; tappora status says more.\n", noKeyboard);
}

std::string glanceText(const Glance& glance, const tapcore::Legends& legends,
                       const Environment& environment) {
    const Terminal terminal = Terminal::of(environment);
    return terminal.bold(weekday(glance.day) + " " + glance.day.description()) + "   " + headline(glance) +
           "\n" + pauseText(glance, environment) +
           hoursSection(glance.today, DateStyle::of(environment), terminal) +
           daysSection(glance.week, terminal) + topSection(glance.today, legends, topRows, terminal);
}

std::string welcome(const tapcore::Store& store) {
    return fmt::format(
        "Nothing has been counted yet in {}.\n\n"
        "  tappora setup             has a recorder start by itself\n"
        "  tappora record            counts from now on, until you stop it\n"
        "  tappora record --help     says what it needs, and how to play a recording instead\n",
        store.root.string());
}

}  // namespace

void glanceCommand(CommandLine& line, const Environment& environment) {
    FolderOptions folder;
    bool json = false;
    line.flag("--json", json, "Print today's figures as JSON");
    addFolderOptions(line, folder);
    line.parse();

    const tapcore::Calendar& calendar = environment.calendar;
    const tapcore::Day day = today(folder, environment, calendar);
    const tapcore::Store store = openShown(folder, environment);
    tapcore::FileProblems problems;
    Glance glance = read(store, day, hoursPassed(day, environment, calendar), calendar, problems);
    requireAnswer(glance.problems, glance.week.isEmpty());
    complainOf(problems);
    askRecorder(glance, store, environment);
    if (!json && store.days().empty()) return print(welcome(store) + pauseText(glance, environment));
    const Keyboards keyboards(environment, store);
    const bool namesKeys = !glance.today.byKey.empty() || !glance.today.byChord.empty();
    // The system's layout takes milliseconds to find out.
    const tapcore::Legends legends = namesKeys ? keyboards.chosenLayout({}).names() : tapcore::Legends();
    print(json ? jsonText(glanceJson(glance, legends)) : glanceText(glance, legends, environment));
}

}  // namespace tappora
