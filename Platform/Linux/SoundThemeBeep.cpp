#include "Platform/Linux/SoundThemeBeep.h"

namespace platform::linux {

void SoundThemeBeep::beep() {
    // The theme that every other one inherits from.
    constexpr const char* bell = "/usr/share/sounds/freedesktop/stereo/bell.oga";
    const bool isPlayed = programs.start("canberra-gtk-play", {"--id=bell"}) || programs.start("pw-play", {bell}) ||
                          programs.start("paplay", {bell});
    static_cast<void>(isPlayed);
}

} // namespace platform::linux
