#include "CorvidKit/Toolkit/QuickToolkit.h"
#include "Tessel/Menu/MenuViewItem.h"
#include "Tessel/MenuPlugin.h"

/// What the program calls when it first needs the toolkit (see `MenuPlugin`).
extern "C" [[gnu::visibility("default")]] platform::Toolkit*
tesselStartToolkit(const corvid::toolkit::Surroundings& surroundings) {
    return corvid::toolkit::QuickToolkit::start(surroundings, tessel::makeItem).release();
}
