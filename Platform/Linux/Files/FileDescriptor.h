#pragma once

#include <unistd.h>

#include <utility>

namespace platform::linux {

/// An open file descriptor, closed with its owner. Negative: none.
class FileDescriptor {
public:
    FileDescriptor() = default;

    explicit FileDescriptor(int descriptor)
        : number{descriptor} {}

    FileDescriptor(FileDescriptor&& other) noexcept
        : number{std::exchange(other.number, -1)} {}

    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    ~FileDescriptor() {
        if (number >= 0) {
            ::close(number);
        }
    }

    explicit operator bool() const { return number >= 0; }

    [[nodiscard]] int get() const { return number; }

    /// Releases the descriptor to the caller.
    [[nodiscard]] int release() { return std::exchange(number, -1); }

private:
    int number = -1;
};

} // namespace platform::linux
