#pragma once

#include "core/files/store.h"
#include "core/practice/practice_history.h"

namespace tappora {

/// All practice in the data folder. Files that cannot be read are named on standard error; where there is
/// nothing else, the first of them is a Failure.
tapcore::PracticeHistory readHistory(const tapcore::Store& store);

}  // namespace tappora
