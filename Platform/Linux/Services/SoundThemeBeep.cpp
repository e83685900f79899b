#include "Platform/Linux/Services/SoundThemeBeep.h"

#include "Platform/Linux/Processes/ProgramStart.h"

namespace platform::linux {

void SoundThemeBeep::beep() {
    // The theme that every other one inherits from.
    constexpr const char* bell = "/usr/share/sounds/freedesktop/stereo/bell.oga";
    const bool isPlayed = startProgram("canberra-gtk-play", {"--id=bell"}) || startProgram("pw-play", {bell}) ||
                          startProgram("paplay", {bell});
    static_cast<void>(isPlayed);
}

} // namespace platform::linux
