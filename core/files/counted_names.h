#pragma once

#include <set>
#include <string>
#include <string_view>

#include "core/files/file_problem.h"

namespace tapcore {

class Store;

/// Whether a file of that name, without extension, counts in one of the data folders: that of a month in
/// "months", that of a day in the others.
bool isCountedName(std::string_view folder, std::string_view name);

/// The names in a data folder of every part that count. Others may be there: notes, copies of a sync tool.
std::set<std::string> countedNames(const Store& store, std::string_view folder,
                                   FileProblems* problems = nullptr);

}  // namespace tapcore
