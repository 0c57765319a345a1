#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
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

/// Adds what is to be told of a file, when somebody listens.
inline void report(FileProblems* problems, const std::filesystem::path& path, std::string why,
                   std::size_t line = 0) {
    if (problems) problems->push_back({path, line, std::move(why)});
}
inline void report(FileProblems* problems, const FileProblems& more) {
    if (problems) problems->insert(problems->end(), more.begin(), more.end());
}

/// A line of a data file that could not be used, and why.
struct SkippedRow {
    std::size_t line = 0;  ///< from 1
    std::string why;

    bool operator==(const SkippedRow&) const = default;
};

}  // namespace tapcore
