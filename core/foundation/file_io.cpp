#include "core/foundation/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "core/foundation/descriptor.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// Why something that is not a file is not read.
class NoFile : public std::error_category {
  public:
    const char* name() const noexcept override { return "no file"; }
    std::string message(int) const override { return "not a regular file"; }
};

std::error_code notRegular() {
    static const NoFile category;
    return {1, category};
}

/// Reads to the end of the file; says why that fails.
std::error_code readAll(const Descriptor& file, std::string& text, std::size_t most, bool takesStreams) {
    struct stat status {};
    if (::fstat(file.get(), &status) < 0) return lastError();
    if (!takesStreams && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) return notRegular();
    constexpr std::size_t reserve = 1;  // so that a file that does not grow is read in one piece
    text.resize(std::min(static_cast<std::size_t>(std::max<off_t>(status.st_size, 0)), most) + reserve);
    std::size_t size = 0;
    while (true) {
        const auto got = ::read(file.get(), text.data() + size, text.size() - size);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return lastError();
        if (got == 0) break;  // less than asked for is not the end: a pipe gives what it has
        size += static_cast<std::size_t>(got);
        if (size > most) return std::make_error_code(std::errc::file_too_large);
        if (size == text.size()) text.resize(std::min(size, most - size) + size + reserve);
    }
    text.resize(size);
    return {};
}

/// The end of a stream (a pipe, a device) is waited for; or streams are not taken at all.
FileRead readOpened(const Descriptor& file, std::size_t most, bool takesStreams) {
    FileRead result;
    if (!file.isOpen() && (errno == ENOENT || errno == ENOTDIR)) return result;
    result.error = file.isOpen() ? readAll(file, result.text, most, takesStreams) : lastError();
    if (result.error) {
        result.status = FileRead::Status::unreadable;
        result.text.clear();
        return result;
    }
    result.status = FileRead::Status::read;
    return result;
}

FileRead readNamed(const fs::path& path, std::size_t most, bool takesStreams) {
    const int flags = O_RDONLY | O_CLOEXEC | (takesStreams ? 0 : O_NONBLOCK);
    return readOpened(Descriptor(retrying([&] { return ::open(path.c_str(), flags); })), most, takesStreams);
}

FileRead withoutMark(FileRead file) {
    if (file.text.starts_with("\xEF\xBB\xBF")) file.text.erase(0, 3);
    return file;
}

}  // namespace

std::error_code FileRead::failure() const {
    return status == Status::missing ? std::make_error_code(std::errc::no_such_file_or_directory) : error;
}

FileRead readFile(const fs::path& path, std::size_t most) { return withoutMark(readBytes(path, most)); }

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

bool existsOrThrow(const fs::path& path) {
    std::error_code error;
    const auto status = fs::symlink_status(path, error);
    const bool isMissing = status.type() == fs::file_type::not_found || error == std::errc::filename_too_long;
    if (error && !isMissing) throw fs::filesystem_error("cannot tell whether it is there", path, error);
    return !isMissing;
}

FileRead readBytes(const fs::path& path, std::size_t most) { return readNamed(path, most, true); }

FileRead readStoredFile(const fs::path& path) { return withoutMark(readNamed(path, anySize, false)); }

FileRead readStoredFile(const Descriptor& file) { return withoutMark(readOpened(file, anySize, false)); }

FolderTimes::FolderTimes(const fs::path& folder)
    : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

std::optional<std::chrono::nanoseconds> FolderTimes::lastWritten(const std::string& name) const {
    struct stat status {};
    if (!folder_.isOpen() || ::fstatat(folder_.get(), name.c_str(), &status, 0) < 0) return std::nullopt;
#ifdef __APPLE__
    const timespec time = status.st_mtimespec;
#else
    const timespec time = status.st_mtim;
#endif
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace tapcore
