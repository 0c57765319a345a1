#pragma once

#include <string_view>
#include <type_traits>
#include <variant>

namespace tappora {

class CommandLine;
struct Environment;

// Every command is a free function in a file of its own, NAME_command.cpp, that takes what it touches: its
// command line, on which it declares its options and which it then parses, and the environment when it needs
// one.

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

/// How a command runs: as a function of this program, or as a program of its own beside it, which is started
/// with the same arguments.
using Run = void (*)(CommandLine&, const Environment&);
struct Companion {
    std::string_view program;
};

template <auto command>
inline constexpr Run run = [](CommandLine& line, const Environment& environment) {
    if constexpr (std::is_invocable_v<decltype(command), CommandLine&>) command(line);
    else command(line, environment);
};

struct Command {
    std::string_view name;
    std::string_view does;  ///< for the list in --help
    std::variant<Run, Companion> how;
};

// clang-format off
inline constexpr Command commands[] = {
    {"record",  "Counts keys, shortcuts and the mouse, live or from a recording", Companion{"tappora-record"}},
    {"summary", "The figures of a period",                                        run<summaryCommand>},
    {"day",     "One day as its table file",                                      run<dayCommand>},
    {"heatmap", "How often each key was pressed, on the keyboard",                run<heatmapCommand>},
    {"fingers", "What each finger, hand and row carries, and travels",            run<fingersCommand>},
    {"widget",  "What the desktop widgets show: their file, timeline, pictures",  run<widgetCommand>},
    {"folder",  "The data folder: where it is, and its care",                     run<folderCommand>},
    {"layouts", "The layouts that put legends on keys, and their import",         run<layoutsCommand>},
    {"boards",  "The keyboards that heat maps are drawn on, and their import",    run<boardsCommand>},
    {"widgets", "The widgets on the desktop",                                         Companion{"tappora-widgets"}},
    {"practice", "The typing trainer",                                            Companion{"tappora-practice"}},
    {"ask",     "Answers a question about your typing, with a language model",    Companion{"tappora-ask"}},
    {"tool",    "One of the assistant's tools by hand",                           run<toolCommand>},
    {"prompt",  "What to tell an agent of your own choice",                       run<promptCommand>},
    {"mcp",     "The assistant's tools for any agent",                            run<mcpCommand>},
};
// clang-format on

}  // namespace tappora
