#include "core/files/data_listing.h"

#include <algorithm>
#include <optional>

#include "core/counting/day.h"
#include "core/files/file_format.h"
#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

constexpr std::string_view cloudEnding = ".icloud";

bool isKnown(std::string_view extension) {
    const auto& known = FileFormat::knownExtensions;
    return std::find(known.begin(), known.end(), extension) != known.end();
}

std::optional<ListedFile> listedFile(std::string_view name) {
    const bool isPlaceholder =
        name.starts_with('.') && name.ends_with(cloudEnding) && name.size() > cloudEnding.size();
    if (isPlaceholder) name = name.substr(1, name.size() - 1 - cloudEnding.size());
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || !isKnown(name.substr(dot + 1))) return std::nullopt;
    return ListedFile{std::string(name.substr(0, dot)), std::string(name.substr(dot + 1)), !isPlaceholder};
}

}  // namespace

std::vector<ListedFile> allDataFiles(const std::filesystem::path& folder) {
    std::vector<ListedFile> files;
    for (const std::string& name : namesIn(folder))
        if (auto file = listedFile(name)) files.push_back(std::move(*file));
    return files;
}

std::vector<ListedFile> dataFiles(const std::filesystem::path& folder) {
    auto files = allDataFiles(folder);
    std::erase_if(files, [](const ListedFile& file) { return file.extension == "tsv"; });
    return files;
}

DataListing::DataListing(const std::filesystem::path& folder) {
    for (const ListedFile& file : allDataFiles(folder)) fileNames_.push_back(file.fileName());
    std::sort(fileNames_.begin(), fileNames_.end());
}

bool DataListing::has(std::string_view fileName) const {
    return std::binary_search(fileNames_.begin(), fileNames_.end(), fileName);
}

bool isDayName(std::string_view name) {
    // Ten bytes with a year of four digits, a month and a day of two leave room for two dashes alone.
    return name.size() == 10 && name.find('+') == std::string_view::npos && Day::parse(name).has_value();
}

bool isMonthName(std::string_view name) {
    return name.size() == 7 && Day::parse(std::string(name) + "-01").has_value();
}

}  // namespace tapcore
