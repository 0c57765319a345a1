#pragma once

#include <map>
#include <string>

#include "app/common/folder/data_folder.h"
#include "app/common/system/environment.h"
#include "core/files/count_sum.h"

namespace tappora {

/// Finds out whether the counts that the widgets show can be added up, for a program that must go on: adding
/// them up where they cannot would end it. It remembers each day's sum, and reads a day again only when one
/// of its files has changed.
class WidgetSums {
  public:
    /// Failure, naming the data folder, when the counts of the days that the widgets are made of do not fit.
    void require(const FolderOptions& options, const Environment& environment);

  private:
    /// What the files of a day came to, and the state that they were in.
    struct Known {
        std::string state;
        tapcore::CountSum sum;
    };
    std::map<std::string, Known> days_;  ///< by date
};

}  // namespace tappora
