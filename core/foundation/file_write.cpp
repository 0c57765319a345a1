// Writing files: the functions of file_io.h that make, replace, rename and remove.

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "core/foundation/descriptor.h"
#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// Each folder's one temporary file. Writers take turns at it, and remove the one that a crash left.
constexpr std::string_view temporaryName = ".tappora.tmp";

[[noreturn]] void fail(std::string_view what, const fs::path& path) {
    const std::error_code error = lastError();
    throw fs::filesystem_error(std::string(what), path, error);
}

/// Waits for who else has the file locked. Where the file system has no locks, nobody has.
void lock(const Descriptor& file) {
    retrying([&] { return ::flock(file.get(), LOCK_EX); });
}

/// False with errno when that fails.
bool setLastWritten(const Descriptor& file, std::chrono::nanoseconds time) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;  // when it was read
    times[1].tv_sec = static_cast<time_t>(seconds.count());
    times[1].tv_nsec = static_cast<long>((time - seconds).count());
    return ::futimens(file.get(), times) == 0;
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

    void fill(std::string_view text, std::optional<std::chrono::nanoseconds> lastWritten) const {
        if (!writeAll(file_, text)) fail("cannot write", target_);
        if (lastWritten && !setLastWritten(file_, *lastWritten)) fail("cannot write", target_);
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
        lock(file_);
        errno = EEXIST;  // another writer took it for an abandoned one before it was locked, if it is gone
        return isNamed(file_, path_, LastLink::notFollowed);
    }

    /// Waits for the living writer that holds the file, if one does, and removes what a dead one left. A pipe
    /// of that name is not waited for.
    void removeAbandoned() const {
        constexpr int flags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
        const Descriptor left(::open(path_.c_str(), flags));
        if (!left.isOpen() && errno == ENOENT) return;
        if (!left.isOpen()) fail("cannot open what a crash left", path_);
        lock(left);
        const bool isStillHere = isNamed(left, path_, LastLink::notFollowed);  // no writer moved it meanwhile
        if (isStillHere && ::unlink(path_.c_str()) < 0) fail("cannot remove what a crash left", path_);
    }

    fs::path target_;
    fs::path path_;
    Descriptor file_{-1};
    bool isInPlace_ = false;
};

fs::path folderOf(const fs::path& path) {
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

Written both(const Written& first, const Written& second) { return first.isSafe() ? second : first; }

}  // namespace

Written writeFile(const fs::path& path, std::string_view text,
                  std::optional<std::chrono::nanoseconds> lastWritten) {
    const fs::path folder = folderOf(path);
    const Written made = makeFolders(folder);
    Temporary temporary(folder, path);
    temporary.fill(text, lastWritten);
    temporary.moveInPlace();
    return both(made, flushFolder(folder));
}

bool isTemporary(const fs::path& path) { return path.filename() == temporaryName; }

Written flushFolder(const fs::path& folder) {
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen() && retrying([&] { return ::fsync(opened.get()); }) == 0) return {};
    // Some network file systems cannot flush folders; what was renamed there is in place all the same.
    if (errno == EINVAL || errno == ENOTSUP) return {};
    return Written::butNotYetSafe(folder, lastError());
}

Written makeFolders(const fs::path& folder) {
    std::error_code error;
    if (fs::is_directory(folder, error)) return {};
    const fs::path above = folderOf(folder);
    Written made;
    if (above != folder) made = makeFolders(above);
    if (::mkdir(folder.c_str(), S_IRWXU) < 0 && errno != EEXIST) fail("cannot make the folder", folder);
    if (!fs::is_directory(folder, error))
        throw fs::filesystem_error("cannot make the folder", folder,
                                   error ? error : std::make_error_code(std::errc::not_a_directory));
    return both(made, flushFolder(above));
}

Written renameFile(const fs::path& from, const fs::path& to) {
    const Written made = makeFolders(folderOf(to));
    if (::rename(from.c_str(), to.c_str()) < 0) fail("cannot rename", from);
    const Written left = folderOf(from) == folderOf(to) ? Written() : flushFolder(folderOf(from));
    return both(made, both(flushFolder(folderOf(to)), left));
}

bool removeFile(const fs::path& path) {
    if (::unlink(path.c_str()) == 0) return true;
    if (errno == ENOENT) return false;
    fail("cannot remove", path);
}

}  // namespace tapcore
