#pragma once

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/assistant/assistant_tools.h"
#include "core/files/file_problem.h"
#include "core/foundation/held_folder.h"

namespace tapcore {

// What the tools' texts share.

AssistantTools::Output toolText(std::string text);
AssistantTools::Output toolError(std::string text);

/// A string argument of a call; nothing when it is missing or not a string.
std::optional<std::string> argument(const nlohmann::json& arguments, std::string_view name);

/// The first characters of a text, as many as `limit`; fewer when they take more bytes than so many may.
std::string_view bounded(std::string_view text, std::size_t limit);

/// `text` as a message or a result gives it back: bounded, however long it is.
std::string shortened(std::string_view text);

std::string joined(std::span<const std::string> items, std::string_view separator);

/// A result with a line for each thing that could not be read for it. Where nothing could be, it is an error.
AssistantTools::Output withProblems(AssistantTools::Output output, const FileProblems& problems);

/// Reads the data files of a folder. What was found to be in it is opened once, step by step below the folder
/// and through no link, so that nothing put in its way meanwhile leads out.
class DataFileReader {
  public:
    explicit DataFileReader(const std::filesystem::path& base);

    /// A file, links resolved; missing when it is not a regular file or not UTF-8.
    FileRead read(const std::filesystem::path& file) const;

  private:
    std::filesystem::path root_;
    HeldFolder held_;
};

}  // namespace tapcore
