#pragma once

#include <optional>
#include <string>
#include <utility>

#include "app/common/folder/data_folder.h"
#include "app/common/folder/tell.h"
#include "app/common/system/environment.h"
#include "core/counting/day.h"
#include "core/files/store.h"
#include "core/reports/report_period.h"

namespace tappora {

/// Writes the reports of the week and the month that ended, as the setting "reports.save" says, once each:
/// one that is there is left alone. Nothing that it does stops the counting.
class ReportKeeper {
  public:
    ReportKeeper(FolderOptions folder, const Environment& environment, Tell tell);

    /// Looks for reports to write when the day, or the setting, is another one than the last time. What
    /// another program's lock prevents is tried again with the next call, what fails with the next day; that
    /// is told once. Throws nothing.
    void keepUp(const tapcore::Day& today);

  private:
    bool write(const tapcore::Store& store, const tapcore::ReportPeriod& period, const tapcore::Day& today);

    FolderOptions folder_;
    Environment environment_;
    Attempt attempt_;
    std::optional<std::pair<tapcore::Day, std::string>> done_;  ///< for which day and setting
};

}  // namespace tappora
