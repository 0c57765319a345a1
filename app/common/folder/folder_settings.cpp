#include "app/common/folder/folder_settings.h"

#include "app/common/program.h"

namespace tappora {

using tapcore::FolderConfig;

void changeFolderSettings(const FolderOptions& folder, const Environment& environment,
                          const std::function<void(FolderConfig& config)>& change) {
    const LockedStore locked(folder, environment);
    const std::filesystem::path& root = locked.store.root;
    tapcore::FileProblems problems;
    (void)FolderConfig::read(root, &problems);
    if (!problems.empty())
        throw Failure(problems.front().path.string(),
                      problems.front().why + "; repair it first, or remove it");
    const FolderConfig before = FolderConfig::readToChange(root);
    FolderConfig config = before;
    change(config);
    if (config != before) locked.store.warnUnlessSafe(config.write(root));
}

}  // namespace tappora
