#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/keyboard/catalog.h"

namespace tappora {

// What `boards` and `layouts` share: reading and checking files of the user's own.

/// What a catalog says of itself and another one does not.
std::vector<std::string> newProblems(const tapcore::Catalog& catalog, const tapcore::Catalog& without);

/// The items of files, each by `read`. A file that cannot be read is one of the problems.
template <class Read>
auto readFiles(const std::vector<std::string>& files, Read read, std::vector<std::string>& problems) {
    std::vector<decltype(read(std::string()))> items;
    for (const std::string& file : files) {
        try {
            items.push_back(read(file));
        } catch (const tapcore::Catalog::FileError& error) {
            problems.push_back(file + ": " + error.underlying);
        }
    }
    return items;
}

/// The text of a file to import. Failure names the file.
std::string textToImport(const std::string& file);

/// UsageError for an --id that no board or layout can have. `but` ends the sentence about what an id is made
/// of.
void requireSafeID(const std::optional<std::string>& id, std::string_view but = "");

/// Prints what a check found, as text or as JSON. Failure counts the problems when there are any.
void reportProblems(std::string_view command, const std::vector<std::string>& problems, bool isJson);

/// Prints a title and a line for each sentence under it; nothing without sentences.
void printList(std::string_view title, const std::vector<std::string>& sentences);

}  // namespace tappora
