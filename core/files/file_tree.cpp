#include "core/files/file_tree.h"

#include <string>
#include <utility>

#include "core/files/data_listing.h"
#include "core/files/folder_error.h"
#include "core/foundation/folder_listing.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

class Walk {
  public:
    explicit Walk(FileProblems& missing) : missing_(missing) {}

    void into(const fs::path& folder) {
        const FolderListing listing = listFolder(folder);
        if (listing.status == FolderListing::Status::unreadable)
            missing_.push_back({folder, 0, listing.error.message()});
        for (const std::string& name : listing.names) visit(folder / name, name);
    }

    std::vector<fs::path> files;

  private:
    void visit(const fs::path& path, const std::string& name) {
        if (awaitedName(name)) return visitPlaceholder(path.parent_path() / *awaitedName(name));
        if (!name.starts_with('.')) visitEntry(path);
    }

    void visitEntry(const fs::path& path) {
        std::error_code error;
        switch (fs::symlink_status(path, error).type()) {
            case fs::file_type::regular:
                return files.push_back(path);
            case fs::file_type::directory:
                return into(path);
            case fs::file_type::symlink:
                return missing_.push_back({path, 0, "a symbolic link"});
            default:
                missing_.push_back({path, 0, error ? error.message() : "not a regular file"});
        }
    }

    void visitPlaceholder(const fs::path& file) {
        try {
            if (isOnlyInCloud(file))
                missing_.push_back({file, 0, make_error_code(FolderError::notHereYet).message()});
        } catch (const fs::filesystem_error& error) {
            missing_.push_back({file, 0, error.code().message()});
        }
    }

    FileProblems& missing_;
};

}  // namespace

std::vector<fs::path> filesBelow(const fs::path& folder, FileProblems& missing) {
    Walk walk(missing);
    walk.into(folder);
    return std::move(walk.files);
}

}  // namespace tapcore
