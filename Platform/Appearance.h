#pragma once

#include <functional>

namespace platform {

enum class ColorScheme {
    light,
    dark,
};

/// How the user wants programs to look. Main thread only.
class Appearance {
public:
    Appearance() = default;
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;
    virtual ~Appearance() = default;

    /// Light where the desktop does not say.
    [[nodiscard]] virtual ColorScheme colorScheme() const = 0;

    /// Whether things are to appear in place instead of moving there.
    [[nodiscard]] virtual bool reducesMotion() const = 0;

    /// Begins to follow the desktop's settings: `changed` is called, in place of an earlier one, after each change. The
    /// program asks for this when it first shows a window; until then nothing is read.
    virtual void follow(std::function<void()> changed) = 0;
};

} // namespace platform
