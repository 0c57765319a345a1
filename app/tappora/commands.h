#pragma once

#include <string_view>
#include <variant>

namespace tappora {

class CommandLine;
struct Environment;

// Every command is a function in a file of its own, NAME_command.cpp. It declares its options and tasks on
// its command line, which then parses them and runs what was asked for.

// clang-format off
void glanceCommand  (CommandLine&, const Environment&);  // `tappora` alone
void boardsCommand  (CommandLine&, const Environment&);
void dayCommand     (CommandLine&, const Environment&);
void demoCommand    (CommandLine&, const Environment&);
void exportCommand  (CommandLine&, const Environment&);
void fingersCommand (CommandLine&, const Environment&);
void folderCommand  (CommandLine&, const Environment&);
void heatmapCommand (CommandLine&, const Environment&);
void importCommand  (CommandLine&, const Environment&);
void keysCommand    (CommandLine&, const Environment&);
void layoutsCommand (CommandLine&, const Environment&);
void mcpCommand     (CommandLine&, const Environment&);
void openCommand    (CommandLine&, const Environment&);
void pauseCommand   (CommandLine&, const Environment&);
void promptCommand  (CommandLine&, const Environment&);
void reportCommand  (CommandLine&, const Environment&);
void resumeCommand  (CommandLine&, const Environment&);
void settingsCommand(CommandLine&, const Environment&);
void setupCommand   (CommandLine&, const Environment&);
void statusCommand  (CommandLine&, const Environment&);
void summaryCommand (CommandLine&, const Environment&);
void toolCommand    (CommandLine&, const Environment&);
void widgetCommand  (CommandLine&, const Environment&);
// clang-format on

/// A program of its own beside this one, which is started with the arguments of the command.
struct Companion {
    std::string_view program;
    std::string_view first = {};  ///< an argument before them; "" for none
};

struct Command {
    std::string_view name;
    std::string_view does;  ///< for the list in --help
    std::variant<void (*)(CommandLine&, const Environment&), Companion> runs;
};

// clang-format off
inline constexpr Command commands[] = {
    {"record",   "Count keys, shortcuts and the mouse, live or from a recording",    Companion{"tappora-record"}},
    {"status",   "Print whether it counts, and what is wrong if not",                statusCommand},
    {"pause",    "Count nothing for a while",                                        pauseCommand},
    {"resume",   "End a pause",                                                      resumeCommand},
    {"summary",  "Print the figures of a period",                                    summaryCommand},
    {"report",   "Print what a week, a month or a year of typing says",              reportCommand},
    {"day",      "Print one day as its table file",                                  dayCommand},
    {"heatmap",  "Draw how often each key was pressed on the keyboard",              heatmapCommand},
    {"fingers",  "Print how much each finger types, and how far it moves",           fingersCommand},
    {"widget",   "Print what the desktop widgets show, or draw them as pictures",    widgetCommand},
    {"folder",   "Show the data folder and take care of it",                         folderCommand},
    {"backup",   "Put everything into one file",                                     Companion{"tappora-backup", "backup"}},
    {"restore",  "Take back what a backup holds",                                    Companion{"tappora-backup", "restore"}},
    {"settings", "Show and change every choice",                                     settingsCommand},
    {"keys",     "Show the keys of your keyboard, and call them what you like",      keysCommand},
    {"layouts",  "List, show, check and import layouts, which put legends on keys",  layoutsCommand},
    {"boards",   "List, show, check and import boards, the keyboards of heat maps",  boardsCommand},
    {"setup",    "Have keys counted from now on, and say what that grants",          setupCommand},
    {"widgets",  "Show the widgets on the desktop",                                  Companion{"tappora-widgets"}},
    {"tray",     "Show today's count in the tray, and pause there",                  Companion{"tappora-tray"}},
    {"practice", "Practise typing",                                                  Companion{"tappora-practice"}},
    {"ask",      "Ask a language model about your typing",                           Companion{"tappora-ask"}},
    {"tool",     "Run one of the assistant's tools by hand",                         toolCommand},
    {"prompt",   "Print a prompt for a language model of your own choice",           promptCommand},
    {"mcp",      "Serve the assistant's tools to any agent",                         mcpCommand},
    {"open",     "Show what a tappora:// link asks for",                             openCommand},
    {"export",   "Print counts as rows of CSV or JSON, for other programs",          exportCommand},
    {"import",   "Add rows that were exported to this machine's days",               importCommand},
    {"demo",     "Write a data folder of made-up typing, to try the program with",   demoCommand},
};
// clang-format on

}  // namespace tappora
