#include "Platform/Linux/Windows/Application.h"

namespace platform::linux {

std::optional<std::string> Application::bundleIdentifier() const {
    const auto asked = directory.lock();
    if (identifier || terminated || !asked) {
        return identifier;
    }
    return (*asked)->identify(process);
}

std::optional<std::string> Application::localizedName() const {
    const auto identified = bundleIdentifier();
    const auto asked = directory.lock();
    return identified && asked ? (*asked)->displayName(*identified) : std::nullopt;
}

ActivationPolicy Application::activationPolicy() const {
    const auto asked = directory.lock();
    return terminated || !asked ? ActivationPolicy::accessory : (*asked)->activationPolicy(process);
}

} // namespace platform::linux
