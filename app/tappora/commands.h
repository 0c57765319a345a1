#pragma once

#include <string_view>
#include <variant>

namespace tappora {

class CommandLine;
struct Environment;

// Every command is a function in a file of its own, NAME_command.cpp. It declares its options and tasks on its
// command line, which then parses them and runs what was asked for.

// clang-format off
void folderCommand (CommandLine&, const Environment&);
void glanceCommand (CommandLine&, const Environment&);  // `tappora` alone
void boardsCommand (CommandLine&, const Environment&);
void dayCommand    (CommandLine&, const Environment&);
void fingersCommand(CommandLine&, const Environment&);
void heatmapCommand(CommandLine&, const Environment&);
void layoutsCommand(CommandLine&, const Environment&);
void mcpCommand    (CommandLine&, const Environment&);
void promptCommand (CommandLine&, const Environment&);
void summaryCommand(CommandLine&, const Environment&);
void toolCommand   (CommandLine&, const Environment&);
void widgetCommand (CommandLine&, const Environment&);
// clang-format on

/// A program of its own beside this one, which is started with the arguments of the command.
struct Companion {
    std::string_view program;
};

struct Command {
    std::string_view name;
    std::string_view does;  ///< for the list in --help
    std::variant<void (*)(CommandLine&, const Environment&), Companion> runs;
};

// clang-format off
inline constexpr Command commands[] = {
    {"record",   "Counts keys, shortcuts and the mouse, live or from a recording", Companion{"tappora-record"}},
    {"summary",  "The figures of a period",                                        summaryCommand},
    {"day",      "One day as its table file",                                      dayCommand},
    {"heatmap",  "How often each key was pressed, on the keyboard",                heatmapCommand},
    {"fingers",  "What each finger, hand and row carries, and travels",            fingersCommand},
    {"widget",   "What the desktop widgets show: their file, timeline, pictures",  widgetCommand},
    {"folder",   "The data folder: where it is, and its care",                     folderCommand},
    {"layouts",  "The layouts that put legends on keys, and their import",         layoutsCommand},
    {"boards",   "The keyboards that heat maps are drawn on, and their import",    boardsCommand},
    {"widgets",  "The widgets on the desktop",                                     Companion{"tappora-widgets"}},
    {"practice", "The typing trainer",                                             Companion{"tappora-practice"}},
    {"ask",      "Answers a question about your typing, with a language model",    Companion{"tappora-ask"}},
    {"tool",     "One of the assistant's tools by hand",                           toolCommand},
    {"prompt",   "What to tell an agent of your own choice",                       promptCommand},
    {"mcp",      "The assistant's tools for any agent",                            mcpCommand},
};
// clang-format on

}  // namespace tappora
