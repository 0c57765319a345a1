#include "core/files/data_listing.h"

#include <algorithm>
#include <optional>

#include "core/counting/day.h"
#include "core/files/file_format.h"
#include "core/files/folder_error.h"
#include "core/foundation/ascii.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"

namespace tapcore {
namespace {

constexpr std::string_view cloudEnding = ".icloud";

std::optional<ListedFile> listedFile(std::string_view name) {
    const auto awaited = awaitedName(name);
    if (awaited) name = *awaited;
    const std::size_t dot = name.rfind('.');
    if (dot == name.npos || dot == 0 || !FileFormat::isKnown(name.substr(dot + 1))) return std::nullopt;
    return ListedFile{std::string(name.substr(0, dot)), std::string(name.substr(dot + 1)), !awaited};
}

std::vector<ListedFile> dataFilesAmong(const std::vector<std::string>& names) {
    std::vector<ListedFile> files;
    for (const std::string& name : names) {
        auto file = listedFile(name);
        if (file && (file->isHere || !std::binary_search(names.begin(), names.end(), file->fileName())))
            files.push_back(std::move(*file));
    }
    return files;
}

std::vector<ListedFile> thoseWritten(std::vector<ListedFile> files) {
    std::erase_if(files, [](const ListedFile& file) { return file.extension == "tsv"; });
    return files;
}

/// Whether a text looks like a pattern, in which "0" means any digit.
bool isLike(std::string_view pattern, std::string_view text) {
    return std::equal(pattern.begin(), pattern.end(), text.begin(), text.end(),
                      [](char wanted, char c) { return wanted == '0' ? isDigit(c) : c == wanted; });
}

}  // namespace

std::vector<std::string> namesIn(const std::filesystem::path& folder, FileProblems* problems) {
    FolderListing listing = listFolder(folder);
    if (listing.status == FolderListing::Status::unreadable)
        report(problems, folder, listing.error.message());
    return std::move(listing.names);
}

std::vector<ListedFile> allDataFiles(const std::filesystem::path& folder) {
    const FolderListing listing = listFolder(folder);
    if (listing.status == FolderListing::Status::unreadable) refuse(folder, listing.error);
    return dataFilesAmong(listing.names);
}

std::vector<ListedFile> allDataFiles(const std::filesystem::path& folder, FileProblems& problems) {
    return dataFilesAmong(namesIn(folder, &problems));
}

std::vector<ListedFile> dataFiles(const std::filesystem::path& folder) {
    return thoseWritten(allDataFiles(folder));
}

std::vector<ListedFile> dataFiles(const std::filesystem::path& folder, FileProblems& problems) {
    return thoseWritten(allDataFiles(folder, problems));
}

DataListing::DataListing(const std::filesystem::path& folder, FileProblems& problems) {
    for (const ListedFile& file : allDataFiles(folder, problems)) fileNames_.push_back(file.fileName());
    std::sort(fileNames_.begin(), fileNames_.end());
}

bool DataListing::has(std::string_view fileName) const {
    return std::binary_search(fileNames_.begin(), fileNames_.end(), fileName);
}

bool isDayName(std::string_view name) { return isLike("0000-00-00", name) && Day::parse(name).has_value(); }

bool isMonthName(std::string_view name) {
    return isLike("0000-00", name) && Day::parse(std::string(name) + "-01").has_value();
}

std::filesystem::path cloudPlaceholder(const std::filesystem::path& url) {
    return url.parent_path() / ("." + url.filename().string() + std::string(cloudEnding));
}

std::optional<std::string_view> awaitedName(std::string_view name) {
    if (!name.starts_with('.') || !name.ends_with(cloudEnding) || name.size() <= cloudEnding.size() + 1)
        return std::nullopt;
    return name.substr(1, name.size() - 1 - cloudEnding.size());
}

bool isOnlyInCloud(const std::filesystem::path& url) {
    return existsOrThrow(cloudPlaceholder(url)) && !existsOrThrow(url);
}

void fetchIfInCloud(const std::filesystem::path& url, const CloudFetch& fetch) {
    if (fetch && isThere(cloudPlaceholder(url)) && !isThere(url)) fetch(url);
}

}  // namespace tapcore
