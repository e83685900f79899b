#include "CorvidKit/Toolkit/QuickToolkit.h"
#include "Tessel/Menu/ApplicationPanel.h"
#include "Tessel/Menu/MenuViewItem.h"
#include "Tessel/MenuPlugin.h"

/// The program calls this when it first needs the toolkit (see `MenuPlugin`).
extern "C" [[gnu::visibility("default")]] platform::Toolkit*
tesselStartToolkit(const corvid::toolkit::Dependencies& dependencies) {
    return corvid::toolkit::QuickToolkit::start(dependencies, tessel::makeItem,
                                                [](QQmlEngine& engine, corvid::toolkit::OpenPanelHooks hooks) {
                                                    return std::make_unique<tessel::ApplicationPanel>(engine,
                                                                                                      std::move(hooks));
                                                })
        .release();
}
