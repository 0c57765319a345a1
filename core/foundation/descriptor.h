#pragma once

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace tapcore {

/// An open file descriptor, closed at the end; nothing is open when it is below 0.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int opened) : value_(opened) {}
    Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~Descriptor() {
        if (value_ >= 0) ::close(value_);
    }

    int get() const { return value_; }
    /// Hands the descriptor out: closing it is no longer this one's.
    int release() { return std::exchange(value_, -1); }
    bool isOpen() const { return value_ >= 0; }

  private:
    int value_ = -1;
};

/// The result of a system call, made again for as long as a signal interrupts it.
int retrying(auto call) {
    int result = 0;
    do result = static_cast<int>(call());
    while (result < 0 && errno == EINTR);
    return result;
}

/// Why the last system call of this thread failed, as errno says.
inline std::error_code lastError() { return {errno, std::generic_category()}; }

/// Writes all of `text`, then sees that it is on disk. False with errno when that fails.
bool writeAll(const Descriptor& file, std::string_view text);

/// What is done with a name that is a link.
enum class LastLink { followed, notFollowed };

/// Whether what is open still has this name: another file or folder may have taken its place.
bool isNamed(const Descriptor& opened, const std::filesystem::path& path, LastLink link);

}  // namespace tapcore
