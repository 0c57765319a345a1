#include "app/common/system/file_text.h"

#include <utility>

#include "app/common/program.h"

namespace tappora {

std::string requiredText(const std::filesystem::path& path, tapcore::FileRead file) {
    auto text = optionalText(path, std::move(file));
    if (!text) throw Failure(path.string(), "no such file");
    return *std::move(text);
}

std::optional<std::string> optionalText(const std::filesystem::path& path, tapcore::FileRead file) {
    if (file.status == tapcore::FileRead::Status::missing) return std::nullopt;
    if (file.status == tapcore::FileRead::Status::unreadable)
        throw Failure(path.string(), file.error.message());
    return std::move(file.text);
}

}  // namespace tappora
