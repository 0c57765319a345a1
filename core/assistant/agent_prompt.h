#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/counting/key_face.h"
#include "core/files/file_format.h"
#include "core/keyboard/board.h"
#include "core/keyboard/layout.h"

namespace tapcore {

/// What a language model is told of a data folder before it is asked about it. The user speaks in it ("my
/// typing") to the model ("you").
struct AgentPrompt {
    /// Written in place of the folder's path when that is not to be told.
    static constexpr std::string_view placeholder = "<the data folder>";
    /// Where the manual for agents is found. Nothing is published there under this reserved name; who does
    /// publish a manual names its address.
    static constexpr std::string_view manualURL = "https://tappora.example/agents";

    FileFormat format;
    std::optional<Board> board = {};
    std::optional<Layout> layout = {};
    Legends legends = {};                         ///< of the layout, its bases' included
    std::string language = "English";             ///< to answer in; English when empty
    std::string manual = std::string(manualURL);  ///< a web address
    std::vector<std::string> macs = {};           ///< the machines' sub-folders in a shared folder

    /// For any agent that the user lets look at the folder at this path.
    std::string text(std::string_view root = placeholder) const;

    /// For a model that reaches the folder through the assistant's tools alone.
    std::string inApp(const Day& today) const;

    // Two texts that may be put around the first one.

    /// What Tappora and its data are about: to come before the prompt.
    static std::string_view opening();
    /// How a file in this format is written: to come after the lines about the files.
    static std::string formatSection(FileFormat format);
};

}  // namespace tapcore
