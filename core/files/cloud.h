#pragma once

#include <filesystem>
#include <functional>

namespace tapcore {

// iCloud Drive keeps a file that it has not brought here as a placeholder: ".2026-09-17.org.icloud" for
// "2026-09-17.org".

/// Asks the system to bring such a file. It does not wait for it.
using CloudFetch = std::function<void(const std::filesystem::path& url)>;

/// The name of a file's placeholder.
std::filesystem::path cloudPlaceholder(const std::filesystem::path& url);

/// Whether a file is there as its placeholder alone.
bool isOnlyInCloud(const std::filesystem::path& url);

/// Asks for a file that is there as its placeholder alone; does nothing without `fetch`.
void fetchIfInCloud(const std::filesystem::path& url, const CloudFetch& fetch);

}  // namespace tapcore
