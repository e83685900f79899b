#pragma once

#include "Platform/Seam/Desktop/Appearance.h"

#include <functional>
#include <optional>

namespace platform::linux {

/// The user's wishes by one source; nothing for a wish that the source does not have.
struct AppearanceWishes {
    std::optional<ColorScheme> colorScheme;
    std::optional<bool> reducesMotion;

    friend bool operator==(const AppearanceWishes&, const AppearanceWishes&) = default;
};

/// A place where a desktop keeps how programs are to look. Main thread only.
class AppearanceSource {
public:
    AppearanceSource() = default;
    AppearanceSource(const AppearanceSource&) = delete;
    AppearanceSource& operator=(const AppearanceSource&) = delete;
    virtual ~AppearanceSource() = default;

    [[nodiscard]] virtual AppearanceWishes wishes() const = 0;

    /// Begins to read and to follow; `changed` is called after each change, not during this call. To be called once.
    virtual void follow(std::function<void()> changed) = 0;
};

} // namespace platform::linux
