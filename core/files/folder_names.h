#pragma once

#include <array>
#include <string_view>

namespace tapcore {

// The folders of a data folder.

inline constexpr std::string_view daysFolder = "days";
inline constexpr std::string_view monthsFolder = "months";
inline constexpr std::string_view practiceFolder = "practice";
inline constexpr std::string_view reportsFolder = "reports";
inline constexpr std::string_view assistantFolder = "assistant";
inline constexpr std::string_view settingsFolder = ".keys";
/// Within the assistant's: the conversations that are over.
inline constexpr std::string_view historyFolder = "history";

/// Those with a file for each day or month, in the order in which one looks for any data.
inline constexpr std::array<std::string_view, 3> dataFolders = {daysFolder, practiceFolder, monthsFolder};

/// Names that the data folder needs itself: no machine's sub-folder may take one.
inline constexpr std::array<std::string_view, 6> ownFolders = {
    daysFolder, monthsFolder, reportsFolder, practiceFolder, assistantFolder, settingsFolder};

}  // namespace tapcore
