#pragma once

#include <functional>

namespace platform {

enum class ColorScheme {
    light,
    dark,
};

/// The user's settings for the appearance of programs. Main thread only.
class Appearance {
public:
    Appearance() = default;
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;
    virtual ~Appearance() = default;

    /// Light if the desktop has no such setting.
    [[nodiscard]] virtual ColorScheme colorScheme() const = 0;

    /// Whether animations are disabled.
    [[nodiscard]] virtual bool reducesMotion() const = 0;

    /// Begins to follow the desktop's settings: `changed`, which replaces an earlier one, is called after each change.
    /// The program calls this when it first shows a window; no setting is read before.
    virtual void follow(std::function<void()> changed) = 0;
};

} // namespace platform
