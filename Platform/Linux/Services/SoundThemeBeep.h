#pragma once

#include "Platform/Seam/Desktop/Beep.h"

namespace platform::linux {

/// The sound theme's bell (Sound Naming Specification, "bell"), for desktops that have no bell of their own: played by
/// the program that knows the user's theme and volume where it is installed, and otherwise by the sound server's own
/// player. Silent where there is neither.
class SoundThemeBeep final : public Beep {
public:
    void beep() override;
};

} // namespace platform::linux
