#pragma once

#include <filesystem>
#include <vector>

#include "core/files/store.h"
#include "core/keyboard/layout.h"

namespace tappora {

/// The user's own layouts, as `Store::ownLayouts`, without those whose bases lead back to them, which are
/// reported: a layout of the program that one of them was to replace stays in use. The layouts of the program
/// are in `resources`; only those that are bases of the user's are read.
std::vector<tapcore::Layout> ownLayouts(const tapcore::Store& store, const std::filesystem::path& resources,
                                        tapcore::FileProblems& problems);

}  // namespace tappora
