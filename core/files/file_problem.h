#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace tapcore {

/// Something about a file that its owner may want to know: what was read all the same, or what was left out.
struct FileProblem {
    std::filesystem::path path;
    std::size_t line = 0;  ///< from 1; 0 when it is about the whole file
    std::string why;

    bool operator==(const FileProblem&) const = default;
};
using FileProblems = std::vector<FileProblem>;

/// A line of a data file that could not be used, and why.
struct SkippedRow {
    std::size_t line = 0;  ///< from 1
    std::string why;

    bool operator==(const SkippedRow&) const = default;
};

}  // namespace tapcore
