#include "core/files/folder_error.h"

#include <string>

#include "core/files/count_sum.h"

namespace tapcore {
namespace {

class Category : public std::error_category {
  public:
    const char* name() const noexcept override { return "data folder"; }
    std::string message(int error) const override {
        switch (static_cast<FolderError>(error)) {
            case FolderError::notUtf8:
                return "not UTF-8 text, so it is left as it is; save it as UTF-8";
            case FolderError::notHereYet:
                return "not yet downloaded from iCloud Drive";
            case FolderError::countsTooLarge:
                return std::string(tooLarge);
            case FolderError::notRows:
                return "not rows of counts; repair it, or remove it";
        }
        return "unknown error";
    }
};

}  // namespace

std::error_code make_error_code(FolderError error) {
    static const Category category;
    return {static_cast<int>(error), category};
}

void refuse(const std::filesystem::path& path, std::error_code why) {
    throw std::filesystem::filesystem_error("left as it is", path, why);
}

}  // namespace tapcore
