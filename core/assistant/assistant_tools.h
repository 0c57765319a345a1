#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "core/assistant/tool_text.h"
#include "core/counting/day.h"
#include "core/counting/key_face.h"
#include "core/files/store.h"

namespace tapcore {

/// A tool call that a model asks for.
struct ToolCall {
    std::string id;
    std::string name;
    std::map<std::string, std::string> arguments;
    bool isReadable = true;  ///< false when its arguments are no JSON object: it is not to be run

    bool operator==(const ToolCall&) const = default;
};

/// The tools by which a language model looks at the data folder: they list, read and search its files and add
/// up a period. None of them writes, and none of them reads anything but data files of this folder, whatever
/// path is asked for. Made for each question again; keeps nothing between calls.
struct AssistantTools {
    /// One tool as a model is told of it. Every parameter is a string.
    struct Spec {
        std::string name;
        std::string description;
        std::vector<std::pair<std::string, std::string>> properties;  ///< parameter and what it is
        std::vector<std::string> required;
        bool namesKeys = false;  ///< whether its results name keys, by `legends`

        bool operator==(const Spec&) const = default;
    };

    /// The result of a call.
    struct Output {
        std::string text;  ///< what the model receives; always UTF-8
        bool isError = false;
        std::vector<std::string> read;  ///< the files whose contents are in `text`

        bool operator==(const Output&) const = default;
    };

    /// What the tool `summary` adds up.
    struct PeriodFigures {
        Day first;
        Day last;
        std::int64_t days = 0;
        bool isCut = false;  ///< asked for from an earlier day than `spanLimit` allows
        Summary sum;
        FileProblems problems;  ///< what is not in it, or not whole; paths relative to `base`
    };

    static constexpr std::array<std::string_view, 4> folders = {daysFolder, monthsFolder, reportsFolder,
                                                                practiceFolder};
    static constexpr std::array<std::string_view, 2> extensions = {"org", "md"};
    static constexpr std::size_t readLimit = 12000;  ///< characters of one `read_file`
    static constexpr std::size_t listLimit = 120;    ///< names of one `list_files`
    static constexpr std::size_t searchLimit = 60;   ///< lines of one `search`
    static constexpr std::int64_t spanLimit = 400;   ///< days of one `summary`
    /// Bytes of any result.
    static constexpr std::size_t byteLimit = readLimit * bytesOfCharacter;

    std::filesystem::path base;     ///< the data folder
    std::vector<std::string> macs;  ///< the machines' sub-folders; empty in a folder that is not shared
    std::optional<Store> store;     ///< without it there is no `summary`
    Day today;
    Legends legends;  ///< name the keys in summaries

    /// The tools over a store's folder. The sub-folder of a machine that alone has written there is known to
    /// them too.
    static AssistantTools over(const Store& store, const Day& today, Legends legends);

    /// The tools there are, in the order in which they are offered.
    std::vector<Spec> specs() const;
    /// The description of a tool; "" for an unknown name.
    std::string spec(std::string_view name) const;

    /// Carries out one call and never fails: what is wrong with it is told in the output. An argument that is
    /// missing or not a string is absent.
    Output run(std::string_view name, const nlohmann::json& arguments) const;
    /// Carries out a model's call. One that cannot be read is answered with how to do better.
    Output run(const ToolCall& call) const;

    /// What `summary` says with these arguments as a record; or, as `run` gives it, why it cannot. Needs a
    /// store.
    std::variant<PeriodFigures, Output> period(const nlohmann::json& arguments) const;
    /// What `summary` says of a period, as text.
    std::string text(const PeriodFigures& period) const;

    /// The data files of a folder in all places, relative to `base`, the newest first: those whose name so
    /// written contains a text. Folders that cannot be listed are named in `problems`, relative to `base`
    /// too.
    std::vector<std::string> names(std::string_view folder, std::string_view contains,
                                   FileProblems& problems) const;

    /// Where the files of a folder are, relative to `base`: at the top, then with each machine.
    std::vector<std::string> places(std::string_view folder) const;

    /// The file that a path relative to `base` means, links resolved, whether it exists or not. Nothing for
    /// what is not a data file of this folder: other folders and endings, hidden files, paths and links that
    /// lead out.
    std::optional<std::filesystem::path> resolve(std::string_view path) const;

    /// A data folder as the paths that `resolve` gives begin: links resolved, as far as that is possible.
    static std::filesystem::path rootOf(const std::filesystem::path& base);

  private:
    struct DataFile {
        std::string name;            ///< relative to `base`, as the model is told
        std::filesystem::path path;  ///< links resolved
    };
    struct Copy;

    bool isDataPath(std::string_view path) const;
    void reportUnlisted(const std::string& place, FileProblems& problems) const;
    std::vector<DataFile> filesIn(const std::string& place, std::string_view contains,
                                  FileProblems& problems) const;
    std::vector<Copy> copies(std::string_view path, FileProblems& problems) const;

    static Output joinedParts(const std::vector<Copy>& found);

    Output listFiles(std::string_view folder, std::string_view contains) const;
    Output readFile(std::string_view path) const;
    Output search(std::string_view query) const;
    Output summary(const nlohmann::json& arguments) const;
};

/// The result of a call that found something, or could not be done.
AssistantTools::Output toolText(std::string text);
AssistantTools::Output toolError(std::string text);

/// A result with a line for each thing that could not be read for it. Where nothing could be, it is an error.
AssistantTools::Output withProblems(AssistantTools::Output output, const FileProblems& problems);

}  // namespace tapcore
