#include "core/files/file_kind.h"

#include <algorithm>
#include <string>

#include "core/files/data_listing.h"
#include "core/files/file_format.h"
#include "core/files/folder_names.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

bool isDataFile(const fs::path& file) {
    const std::string extension = file.extension().string();
    return !extension.empty() && FileFormat::isKnown(std::string_view(extension).substr(1));
}

}  // namespace

FileKind fileKindOf(const fs::path& file, std::string_view folder) {
    const std::string name = file.stem().string();
    if (folder == monthsFolder)
        return isDataFile(file) && isMonthName(name) ? FileKind::month : FileKind::other;
    const bool isOfDays = folder == daysFolder || folder == practiceFolder;
    return isOfDays && isDataFile(file) && isDayName(name) ? FileKind::day : FileKind::other;
}

bool hasDaysOf(const fs::path& month) {
    const auto days = allDataFiles(month.parent_path().parent_path() / daysFolder);
    return std::any_of(days.begin(), days.end(),
                       [&](const ListedFile& day) { return day.name.starts_with(month.stem().string()); });
}

}  // namespace tapcore
