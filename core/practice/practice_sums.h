#pragma once

#include <filesystem>
#include <optional>

#include "core/files/store.h"
#include "core/practice/practice_day.h"

namespace tapcore {

/// Whether no number of a day is so large that nobody can have practised so much: the sum of many such days
/// stays within 64 bits.
bool isAddable(const PracticeDay& day);

/// The first file of practice, of all parts of the folder, whose counts are too large to be added up; reading
/// all practice would end the program.
std::optional<std::filesystem::path> unaddablePractice(const Store& store);

}  // namespace tapcore
