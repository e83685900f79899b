#include "Platform/Linux/SingleInstance.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace platform::linux {

std::optional<SingleInstance> SingleInstance::acquire(const std::string& session) {
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) {
        return std::nullopt;
    }
    SingleInstance instance(descriptor);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // A first character of zero makes the name abstract; its length is part of it.
    const std::string name = "org.corvid.Tessel/" + std::to_string(getuid()) + "/" + session;
    const std::size_t length = std::min(name.size(), sizeof(address.sun_path) - 1);
    std::copy_n(name.begin(), length, std::begin(address.sun_path) + 1);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&address), size) != 0) {
        return std::nullopt;
    }
    return instance;
}

SingleInstance::SingleInstance(SingleInstance&& other) noexcept
    : descriptor(std::exchange(other.descriptor, -1)) {
}

SingleInstance& SingleInstance::operator=(SingleInstance&& other) noexcept {
    std::swap(descriptor, other.descriptor);
    return *this;
}

SingleInstance::~SingleInstance() {
    if (descriptor >= 0) {
        close(descriptor);
    }
}

} // namespace platform::linux
