#pragma once

#include <filesystem>
#include <string>
#include <variant>
#include <vector>

namespace tappora {

// What setting up changes, as values: they can be printed, made, and taken back.

struct MakeFolder {
    std::filesystem::path path;
};

struct WriteFile {
    std::filesystem::path path;
    std::string text;
};

struct RemoveFile {
    std::filesystem::path path;
};

/// Folders with something in them stay.
struct RemoveEmptyFolder {
    std::filesystem::path path;
};

struct RunProgram {
    std::vector<std::string> commandLine;
    std::vector<std::string>
        takesBack;  ///< the command line that undoes it; none when nothing is to be undone
};

/// A script for `sh`, which takes itself back when it fails.
struct RunAsRoot {
    std::string script;
};

using Change = std::variant<MakeFolder, WriteFile, RemoveFile, RemoveEmptyFolder, RunProgram, RunAsRoot>;
using Changes = std::vector<Change>;

/// The changes in words, whole. `rootBy` is the program that gets root's rights; "" for none.
std::string described(const Changes& changes, const std::string& rootBy);

/// Makes all of them, or none: when one fails, those before it are taken back. Failure says which one and
/// why.
void make(const Changes& changes, const std::string& rootBy);

}  // namespace tappora
