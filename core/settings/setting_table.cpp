#include "core/assistant/assistant_wire.h"
#include "core/files/file_format.h"
#include "core/keyboard/map_color.h"
#include "core/settings/setting.h"

namespace tapcore {
namespace {

using Type = Setting::Type;
using Kept = Setting::Kept;

std::vector<std::string> colours() { return {MapColor::words.words.begin(), MapColor::words.words.end()}; }

std::vector<std::string> formats() {
    std::vector<std::string> names;
    for (const FileFormat format : FileFormat::allCases) names.emplace_back(format.rawValue());
    return names;
}

std::vector<std::string> savedPeriods() { return {"none", "week", "month", "both"}; }

/// Those that can be asked on this platform.
std::vector<std::string> providers() {
    using AssistantWire::Provider;
    std::vector<std::string> names;
    for (const Provider provider : {Provider::claude, Provider::openai, Provider::local})
        names.emplace_back(AssistantWire::providers.of(provider));
    return names;
}

constexpr Setting table[] = {
    {.key = "language",
     .does = "The language of texts, by its code, or system",
     .usedBy = "widget, widgets, ask, prompt, record",
     .usual = "system"},

    {.key = "folder.path",
     .does = "The data folder, when neither --folder nor TAPPORA_FOLDER names one",
     .usedBy = "every command",
     .usualWords = "the default folder"},

    {.key = "machine.id",
     .does = "How this machine is told from others that share a folder",
     .usedBy = "every command, in a shared folder",
     .usualWords = "made from the system's id",
     .isPrograms = true},
    {.key = "machine.name",
     .does = "The name of this machine's sub-folder in a shared folder",
     .usedBy = "every command, in a shared folder",
     .usualWords = "the host's name"},

    {.key = "keyboard.board",
     .does = "Your keyboard: an id of tappora boards, or a file",
     .usedBy = "heatmap, fingers, widget, widgets, practice, record",
     .usualWords = "the folder's choice"},
    {.key = "keyboard.layout",
     .does = "What its keys print: an id of tappora layouts, a file, or auto",
     .usedBy = "heatmap, fingers, widget, widgets, practice, record",
     .usualWords = "the folder's choice"},

    {.key = "keys.remaps",
     .does = "Keys to count as others in all figures, such as caps lock=control, left option=left command",
     .usedBy = "every command that shows figures",
     .usualWords = "none"},

    {.key = "appearance.mapColor",
     .does = "The colour family of heat maps",
     .usedBy = "heatmap, fingers, widget, widgets, record",
     .type = Type::word,
     .usual = MapColor(MapColor::usual).words.words[MapColor::usual],
     .kind = "colour",
     .words = colours},

    {.key = "appearance.hours",
     .does = "How hours are shown: 24 hours, 12 hours twice, or as is usual in the locale",
     .usedBy = "tappora alone, summary, report",
     .type = Type::word,
     .usual = "locale",
     .kind = "way to show hours",
     .words =
         [] {
             return std::vector<std::string>{"12", "24", "locale"};
         }},
    {.key = "appearance.firstWeekday",
     .does = "The day that a week begins with in pictures of a report, or locale for what is usual there",
     .usedBy = "report",
     .type = Type::word,
     .usual = "locale",
     .kind = "day to begin with",
     .words =
         [] {
             return std::vector<std::string>{"monday", "sunday", "saturday", "locale"};
         }},

    {.key = "widgets.shown",
     .does = "The widgets to show when none is named, such as today week:medium",
     .usedBy = "widgets",
     .type = Type::list,
     .usualWords = "every widget"},
    {.key = "widgets.place.WIDGET@CONNECTOR",
     .does = "Where a widget is on a monitor",
     .usedBy = "widgets",
     .usualWords = "in rows",
     .isFamily = true,
     .isPrograms = true},
    {.key = "widgets.place.WIDGET",
     .does = "The monitor that a widget was moved on last",
     .usedBy = "widgets",
     .usualWords = "the first monitor",
     .isFamily = true,
     .isPrograms = true},

    {.key = "record.pauseWhenLocked",
     .does = "Count nothing while the session is locked",
     .usedBy = "record",
     .type = Type::flag,
     .usual = "true"},

    {.key = "privacy.floor",
     .does = "Store no keys and shortcuts of an hour with fewer presses, only how many there were",
     .usedBy = "record",
     .type = Type::integer,
     .usual = "0",
     .least = 0,
     .most = 10'000},
    {.key = "privacy.hourly",
     .does = "Write an hour into the data folder once, when it is over",
     .usedBy = "record",
     .type = Type::flag,
     .usual = "false"},

    {.key = "reports.save",
     .does = "Save the report of each week, month or both when it is over",
     .usedBy = "record",
     .type = Type::word,
     .usual = "none",
     .kind = "period",
     .words = savedPeriods},

    {.key = "practice.language",
     .does = "The language of the words, by its code",
     .usedBy = "practice",
     .usualWords = "the system's"},
    {.key = "practice.length",
     .does = "How many words a lesson has",
     .usedBy = "practice",
     .type = Type::integer,
     .usual = "30",
     .least = 5,
     .most = 200},
    {.key = "practice.targetWPM",
     .does = "The words per minute to reach",
     .usedBy = "practice",
     .type = Type::integer,
     .usual = "40",
     .least = 10,
     .most = 150},
    {.key = "practice.goalMinutes",
     .does = "The minutes to practise a day",
     .usedBy = "practice",
     .type = Type::integer,
     .usual = "5",
     .least = 1,
     .most = 24 * 60},
    {.key = "practice.capitals",
     .does = "Mix in capital letters",
     .usedBy = "practice",
     .type = Type::flag,
     .usual = "false"},
    {.key = "practice.punctuation",
     .does = "Mix in punctuation marks",
     .usedBy = "practice",
     .type = Type::flag,
     .usual = "false"},
    {.key = "practice.digits",
     .does = "Mix in numbers",
     .usedBy = "practice",
     .type = Type::flag,
     .usual = "false"},
    {.key = "practice.letErrorsStand",
     .does = "Let wrong keys pass",
     .usedBy = "practice",
     .type = Type::flag,
     .usual = "false"},
    {.key = "practice.mine",
     .does = "Choose letters and words by what was typed in the last 30 days",
     .usedBy = "practice",
     .type = Type::flag,
     .usual = "false"},
    {.key = "practice.layout.LANGUAGE",
     .does = "The layout to practise a language on, by its id",
     .usedBy = "practice",
     .usualWords = "your layout, if it types the language",
     .isFamily = true},
    {.key = "practice.opened.COURSE.LAYOUT",
     .does = "How many letters of a language, digits or marks are open on a layout",
     .usedBy = "practice",
     .type = Type::integer,
     .usualWords = "the first ones",
     .least = 0,
     .most = Setting::anyCount,
     .isFamily = true,
     .isPrograms = true},

    {.key = "ai.provider",
     .does = "The provider to ask, when --provider names none",
     .usedBy = "ask",
     .type = Type::word,
     .usualWords = "the first that can be used",
     .kind = "provider",
     .words = providers},
    {.key = "ai.model",
     .does = "The model to ask, by its id, when --model names none",
     .usedBy = "ask",
     .usualWords = "the provider's first"},

    {.key = "format",
     .does = "The format in which files are written; both are read",
     .usedBy = "every command that writes",
     .type = Type::word,
     .usual = "org",
     .kind = "format",
     .words = formats,
     .kept = Kept::withFolder},
    {.key = "board",
     .does = "The keyboard of all machines, by its id, or auto",
     .usedBy = "heatmap, fingers, widget, widgets, practice, record",
     .usual = "auto",
     .kept = Kept::withFolder},
    {.key = "layout",
     .does = "What the keys of all machines print, by a layout's id, or auto",
     .usedBy = "heatmap, fingers, widget, widgets, practice, record",
     .usual = "auto",
     .kept = Kept::withFolder},
    {.key = "named_keys",
     .does = "Show names and signs on keys, not only letters and numbers",
     .usedBy = "heatmap, widget, widgets",
     .type = Type::flag,
     .usual = "false",
     .kept = Kept::withFolder},
    {.key = "labels.BOARD/KEYCODE",
     .does = "Your own word for a key of a board",
     .usedBy = "every command that names or draws keys",
     .usualWords = "what the layout prints",
     .kept = Kept::withFolder,
     .isFamily = true},
    {.key = "learned.BOARD/LAYOUT/KEYCODE",
     .does = "What a key was seen to type, without shift and with it, such as: q Q",
     .usedBy = "every command that names or draws keys",
     .type = Type::key,
     .usualWords = "what the layout prints",
     .kept = Kept::withFolder,
     .isFamily = true},
};

}  // namespace

std::span<const Setting> allSettings() { return table; }

}  // namespace tapcore
