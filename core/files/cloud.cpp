#include "core/files/cloud.h"

#include "core/foundation/file_io.h"

namespace tapcore {

namespace fs = std::filesystem;

fs::path cloudPlaceholder(const fs::path& url) {
    return url.parent_path() / ("." + url.filename().string() + ".icloud");
}

bool isOnlyInCloud(const fs::path& url) { return isThere(cloudPlaceholder(url)) && !isThere(url); }

void fetchIfInCloud(const fs::path& url, const CloudFetch& fetch) {
    if (fetch && isOnlyInCloud(url)) fetch(url);
}

}  // namespace tapcore
