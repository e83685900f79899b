#pragma once

#include "Platform/Seam/Desktop/Beep.h"
#include "Platform/ShellCore/ShellLink.h"

namespace platform::shellcore {

/// The shell's alert sound, as the user has chosen it.
class ShellBell final : public Beep {
public:
    explicit ShellBell(ShellLink& link)
        : link(link) {}

    void beep() override { link.send("Beep", ""); }

private:
    ShellLink& link;
};

} // namespace platform::shellcore
