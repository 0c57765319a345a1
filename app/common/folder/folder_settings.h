#pragma once

#include <functional>

#include "app/common/folder/data_folder.h"
#include "core/files/folder_config.h"

namespace tappora {

/// Changes the settings that travel with the data folder, as stored, under its lock. Failure, which says what
/// to do, when what is stored cannot be used; it is left as it is.
void changeFolderSettings(const FolderOptions& folder, const Environment& environment,
                          const std::function<void(tapcore::FolderConfig& config)>& change);

}  // namespace tappora
