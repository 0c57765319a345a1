#include "core/files/counted_names.h"

#include "core/files/data_listing.h"
#include "core/files/folder_names.h"
#include "core/files/store.h"

namespace tapcore {

bool isCountedName(std::string_view folder, std::string_view name) {
    return folder == monthsFolder ? isMonthName(name) : isDayName(name);
}

std::set<std::string> countedNames(const Store& store, std::string_view folder, FileProblems* problems) {
    std::set<std::string> names = store.names(folder, problems);
    std::erase_if(names, [&](const std::string& name) { return !isCountedName(folder, name); });
    return names;
}

}  // namespace tapcore
