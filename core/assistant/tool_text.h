#pragma once

#include <cstddef>
#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "core/files/file_problem.h"
#include "core/foundation/held_folder.h"

namespace tapcore {

// What the tools' texts share.

/// Characters of a line found, or of an argument given back in a message; what is longer ends in "…".
inline constexpr std::size_t quoteLimit = 1000;
/// Bytes that each character of a result may take: one character can hold any number of marks.
inline constexpr std::size_t bytesOfCharacter = 24;

/// A string argument of a call; nothing when it is missing or not a string.
std::optional<std::string> argument(const nlohmann::json& arguments, std::string_view name);

/// The first characters of a text, as many as `limit`; fewer when they take more bytes than so many may.
std::string_view bounded(std::string_view text, std::size_t limit);

/// `text` as a message or a result gives it back: bounded, however long it is.
std::string shortened(std::string_view text);

/// Reads the data files of a folder. What was found to be in it is opened once, step by step below the folder
/// and through no link, so that nothing put in its way meanwhile leads out.
class DataFileReader {
  public:
    /// `root` is the folder itself, links resolved.
    explicit DataFileReader(std::filesystem::path root);

    /// A file, links resolved; missing when it is not a regular file or not UTF-8.
    FileRead read(const std::filesystem::path& file) const;

  private:
    std::filesystem::path root_;
    HeldFolder held_;
};

}  // namespace tapcore
