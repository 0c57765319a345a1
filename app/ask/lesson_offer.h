#pragma once

#include <string>

#include "app/common/folder/data_folder.h"
#include "app/common/system/environment.h"

namespace tappora {

/// Offers the lesson that an answer ends with ("Practise: e, t, n"), if it does. A person at the terminal is
/// asked, and the trainer, which practises in the same data folder, is run until its end; without one, the
/// command for it is printed on standard error.
void offerLesson(const std::string& answer, const FolderOptions& folder, const Environment& environment);

}  // namespace tappora
