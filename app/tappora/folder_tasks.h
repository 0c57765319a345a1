#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/files/store.h"

namespace tappora {

struct Environment;
struct FolderOptions;

// What `tappora folder` does, a function a task. Each fails with Failure, UsageError or filesystem_error.

void showFolder(const FolderOptions& options, const Environment& environment, bool json);
/// Stores the choice, or goes back to the default folder.
void setFolder(const std::optional<std::string>& directory, const Environment& environment);
void shareFolder(const FolderOptions& options, const Environment& environment);
void adoptFolder(const std::string& directory, const FolderOptions& options, const Environment& environment);

void convertFolder(const std::optional<std::string>& format, const FolderOptions& options,
                   const Environment& environment);
void refreshMonths(const FolderOptions& options, const Environment& environment);
/// Prints a line for each finding, and fails when there is one.
void checkDataFolder(const FolderOptions& options, const Environment& environment, bool json);

// These destroy, and ask first unless `yes`. `what` is one of the choices, or a date for clearing a day.
std::vector<std::string> resetChoices();
std::vector<std::string> clearChoices();
void resetFolder(const std::string& what, bool yes, const FolderOptions& options,
                 const Environment& environment);
void clearFolder(const std::string& what, bool yes, const FolderOptions& options,
                 const Environment& environment);

// What several of them need.

/// Fails when a folder of this machine cannot be listed: nobody could tell what was done there.
void requireListable(const tapcore::Store& store);

}  // namespace tappora
