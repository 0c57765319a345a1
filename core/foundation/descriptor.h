#pragma once

#include <unistd.h>

#include <utility>

namespace tapcore {

/// An open file descriptor, closed at the end; none when below 0.
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

}  // namespace tapcore
