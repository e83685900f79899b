#pragma once

#include <optional>
#include <string>

namespace platform::linux {

/// The right to be the only Tessel of a session, held for as long as the object lives.
///
/// It is an abstract Unix socket's name (unix(7)), made of the user and the session: the kernel frees it with the
/// process, however that ends, so that it cannot go stale.
class SingleInstance {
public:
    /// Takes the right for a session (its display's name); nothing where another process has it.
    [[nodiscard]] static std::optional<SingleInstance> acquire(const std::string& session);

    SingleInstance(SingleInstance&& other) noexcept;
    SingleInstance& operator=(SingleInstance&& other) noexcept;
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();

private:
    explicit SingleInstance(int descriptor)
        : descriptor(descriptor) {}

    int descriptor;
};

} // namespace platform::linux
