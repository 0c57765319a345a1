#pragma once

#include <optional>
#include <string>

#include "app/common/folder/data_folder.h"
#include "app/common/folder/period.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/system/environment.h"
#include "core/files/store.h"
#include "core/keyboard/map_color.h"
#include "core/reports/report.h"
#include "core/words/words.h"

namespace tappora {

class CommandLine;

/// What `tappora report` is asked for.
struct ReportOptions {
    FolderOptions folder;
    KeyboardOptions keyboard;
    PeriodOptions span;
    std::optional<std::string> kind;
    std::optional<std::string> of;
    std::optional<std::string> compare;
    std::optional<std::string> output;
    std::optional<std::string> color;
    bool saves = false;
    bool opens = false;
    bool json = false;
};

void addReportOptions(CommandLine& line, ReportOptions& options);

/// What a report is made of and how it is to be written.
struct AskedReport {
    tapcore::Store store;
    tapcore::ReportQuestion question;
    tapcore::Words words;
    std::string locale;  ///< of its dates
    tapcore::MapColor color;
};

/// Says, instead of a report, that nothing was counted. Failure when a file was to be written of it.
void sayNothingCounted(const AskedReport& asked, const ReportOptions& options);

/// UsageError for a period that cannot be, or cannot be compared with.
AskedReport askedReport(const ReportOptions& options, const Environment& environment);

}  // namespace tappora
