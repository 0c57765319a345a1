#include "core/foundation/file_io.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// Each folder's one temporary file. Writers take turns at it, and remove the one that a crash left.
constexpr std::string_view temporaryName = ".tappora.tmp";

/// Why what is no file is not read.
class NoFile : public std::error_category {
  public:
    const char* name() const noexcept override { return "no file"; }
    std::string message(int) const override { return "not a regular file"; }
};

std::error_code notRegular() {
    static const NoFile category;
    return {1, category};
}

std::error_code lastError() { return {errno, std::generic_category()}; }

[[noreturn]] void fail(std::string_view what, const fs::path& path) {
    const std::error_code error = lastError();
    throw fs::filesystem_error(std::string(what), path, error);
}

int retrying(auto call) {
    int result = 0;
    do result = static_cast<int>(call());
    while (result < 0 && errno == EINTR);
    return result;
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
        if (got == 0) break;  // less than asked for is no end: a pipe gives what it has
        size += static_cast<std::size_t>(got);
        if (size > most) return std::make_error_code(std::errc::file_too_large);
        if (size == text.size()) text.resize(text.size() * 2);
    }
    text.resize(size);
    return {};
}

void writeAll(const Descriptor& file, std::string_view text, const fs::path& path) {
    while (!text.empty()) {
        const auto written = ::write(file.get(), text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) fail("cannot write", path);
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// The hidden file that a text is written to before it takes its place; removed again unless it does.
class Temporary {
  public:
    /// `target` only names what an error is about.
    Temporary(const fs::path& folder, const fs::path& target)
        : target_(target), path_(folder / temporaryName) {
        while (!make())
            if (errno == EEXIST) removeAbandoned();
            else fail("cannot write", target_);
    }
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary() {
        if (!isInPlace_) ::unlink(path_.c_str());
    }

    void fill(std::string_view text) const {
        writeAll(file_, text, target_);
        if (retrying([&] { return ::fsync(file_.get()); }) < 0) fail("cannot write", target_);
    }

    void moveInPlace() {
        if (::rename(path_.c_str(), target_.c_str()) < 0) fail("cannot write", target_);
        isInPlace_ = true;
    }

  private:
    /// False with errno when the file could not be made; EEXIST says that there is one.
    bool make() {
        constexpr int flags = O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC;
        file_ = Descriptor(::open(path_.c_str(), flags, S_IRUSR | S_IWUSR));
        if (!file_.isOpen()) return false;
        retrying([&] { return ::flock(file_.get(), LOCK_EX); });
        errno = EEXIST;  // another writer took it for an abandoned one before it was locked, if it is gone
        return isNamed(file_);
    }

    /// Waits for the living writer that holds the file, if one does, and removes what a dead one left.
    void removeAbandoned() const {
        const Descriptor left(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
        if (!left.isOpen() && errno == ENOENT) return;
        if (!left.isOpen() || retrying([&] { return ::flock(left.get(), LOCK_EX); }) < 0)
            fail("cannot open what a crash left", path_);
        if (isNamed(left) && ::unlink(path_.c_str()) < 0) fail("cannot remove what a crash left", path_);
    }

    /// Whether the opened file still has the temporary name: its former writer may have moved or removed it.
    bool isNamed(const Descriptor& file) const {
        struct stat opened {};
        struct stat named {};
        return ::fstat(file.get(), &opened) == 0 && ::lstat(path_.c_str(), &named) == 0 &&
               opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
    }

    fs::path target_;
    fs::path path_;
    Descriptor file_{-1};
    bool isInPlace_ = false;
};

fs::path folderOf(const fs::path& path) {
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

/// The end of a stream (a pipe, a device) is waited for; or streams are not taken at all.
FileRead readOpened(const fs::path& path, std::size_t most, bool takesStreams) {
    const int flags = O_RDONLY | O_CLOEXEC | (takesStreams ? 0 : O_NONBLOCK);
    FileRead result;
    const Descriptor file(retrying([&] { return ::open(path.c_str(), flags); }));
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

FileRead withoutMark(FileRead file) {
    if (file.text.starts_with("\xEF\xBB\xBF")) file.text.erase(0, 3);
    return file;
}

}  // namespace

FileRead readFile(const fs::path& path, std::size_t most) { return withoutMark(readBytes(path, most)); }

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

FileRead readBytes(const fs::path& path, std::size_t most) { return readOpened(path, most, true); }

FileRead readStoredFile(const fs::path& path) { return withoutMark(readOpened(path, anySize, false)); }

void writeFile(const fs::path& path, std::string_view text) {
    const fs::path folder = folderOf(path);
    makeFolders(folder);
    Temporary temporary(folder, path);
    temporary.fill(text);
    temporary.moveInPlace();
    flushFolder(folder);
}

bool isTemporary(const fs::path& path) { return path.filename() == temporaryName; }

void flushFolder(const fs::path& folder) {
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.isOpen() || retrying([&] { return ::fsync(opened.get()); }) < 0) {
        // Some network file systems cannot flush folders; what was renamed there is in place all the same.
        if (errno != EINVAL && errno != ENOTSUP) fail("cannot flush the folder", folder);
    }
}

void makeFolders(const fs::path& folder) {
    std::error_code error;
    if (fs::is_directory(folder, error)) return;
    const fs::path above = folderOf(folder);
    if (above != folder) makeFolders(above);
    if (::mkdir(folder.c_str(), S_IRWXU) < 0 && errno != EEXIST) fail("cannot make the folder", folder);
    if (!fs::is_directory(folder, error)) {
        errno = ENOTDIR;
        fail("cannot make the folder", folder);
    }
}

void renameFile(const fs::path& from, const fs::path& to) {
    if (::rename(from.c_str(), to.c_str()) < 0) fail("cannot rename", from);
    flushFolder(folderOf(to));
}

bool removeFile(const fs::path& path) {
    if (::unlink(path.c_str()) == 0) return true;
    if (errno == ENOENT) return false;
    fail("cannot remove", path);
}

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> opened(::opendir(folder.c_str()), ::closedir);
    if (!opened) return names;
    while (const dirent* entry = ::readdir(opened.get()))
        if (const std::string_view name = entry->d_name; name != "." && name != "..")
            names.emplace_back(name);
    std::sort(names.begin(), names.end());
    return names;
}

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
