#pragma once

#include <vector>

#include "core/counting/day.h"
#include "core/files/data_listing.h"
#include "core/files/day_file.h"
#include "core/files/file_problem.h"
#include "core/files/store.h"
#include "core/files/waiting_hours.h"

namespace tapcore {

/// Reads many days of a store: what is in its folders is listed once, so that each day asks for no more than
/// its own files. A file that comes later is not seen.
class DayReader {
  public:
    /// A folder that cannot be listed is named in `problems`, and left out.
    explicit DayReader(const Store& store, FileProblems* problems = nullptr);

    /// A day's counts, of all parts and copies added, as `Store::read` gives them.
    DayFile read(const Day& day, FileProblems* problems = nullptr) const;

  private:
    struct Part {
        Store store;
        DataListing days;
        std::vector<WaitingHour> waiting;
    };
    std::vector<Part> parts_;
};

}  // namespace tapcore
