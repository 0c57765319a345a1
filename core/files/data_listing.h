#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/file_problem.h"

namespace tapcore {

/// A data file as a folder lists it.
struct ListedFile {
    std::string name;       ///< without extension: "2026-09-20"
    std::string extension;  ///< "org", "md" or "tsv"
    bool isHere = true;     ///< false for one that iCloud Drive keeps as a placeholder

    std::string fileName() const { return name + "." + extension; }
};

/// The names in a folder, sorted. One that cannot be listed gives an empty list, and is named in `problems`.
std::vector<std::string> namesIn(const std::filesystem::path& folder, FileProblems* problems);

/// The data files of a folder, in all formats read, by name; an empty list when the folder does not exist. A
/// placeholder of iCloud Drive (".2026-09-17.org.icloud") is listed as the file that is to come, unless that
/// is there by now. Throws filesystem_error with the path when the folder cannot be listed: it is not an
/// empty one.
std::vector<ListedFile> allDataFiles(const std::filesystem::path& folder);
/// The data files of a folder, for readers who continue without it: one that cannot be listed is named in
/// `problems`, and its list is empty.
std::vector<ListedFile> allDataFiles(const std::filesystem::path& folder, FileProblems& problems);

/// Those in the two formats written: the files that count as being there when a folder is listed.
std::vector<ListedFile> dataFiles(const std::filesystem::path& folder);
std::vector<ListedFile> dataFiles(const std::filesystem::path& folder, FileProblems& problems);

/// The names of a folder's data files, of all formats and placeholders included, listed once: for reading
/// many of them without asking for each one that is not there. A folder that cannot be listed counts as
/// empty, and is named in `problems`.
class DataListing {
  public:
    DataListing(const std::filesystem::path& folder, FileProblems& problems);

    bool has(std::string_view fileName) const;

  private:
    std::vector<std::string> fileNames_;
};

/// Whether a name is exactly how a day is written: "2026-09-20". More than that parses as a day
/// ("2026-09--20"), and is not a file of it.
bool isDayName(std::string_view name);

/// Whether a name is exactly how a month is written: "2026-09".
bool isMonthName(std::string_view name);

// iCloud Drive keeps a file that it has not brought here as a placeholder: ".2026-09-17.org.icloud" for
// "2026-09-17.org".

/// Asks the system to bring such a file. It does not wait for it.
using CloudFetch = std::function<void(const std::filesystem::path& url)>;

/// The path of a file's placeholder.
std::filesystem::path cloudPlaceholder(const std::filesystem::path& url);

/// The name of the file that a placeholder of this name is for; nothing for the name of another file.
std::optional<std::string_view> awaitedName(std::string_view name);

/// Whether a file is there as its placeholder alone. Throws filesystem_error with the path when that cannot
/// be found out.
bool isOnlyInCloud(const std::filesystem::path& url);

/// Asks for a file that is there as its placeholder alone; does nothing without `fetch`, and when it cannot
/// be found out what is there.
void fetchIfInCloud(const std::filesystem::path& url, const CloudFetch& fetch);

}  // namespace tapcore
