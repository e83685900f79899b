#include "CorvidKit/Toolkit/QuickToolkit.h"
#include "Tessel/Menu/ApplicationPanel.h"
#include "Tessel/Menu/MenuViewItem.h"
#include "Tessel/MenuPlugin.h"

#include <memory>

namespace {

/// Makes the menu's item. The panel of applications is kept beside it, for the popover may make its item anew while the
/// panel is open.
class MenuBuilder {
public:
    std::unique_ptr<QQuickItem> operator()(const platform::View& view, QQmlEngine& engine,
                                           corvid::toolkit::PopoverWindow* popover) {
        if (popover != nullptr && !panel) {
            panel = std::make_shared<tessel::ApplicationPanel>(engine, *popover);
        }
        return tessel::makeItem(view, engine, panel.get());
    }

private:
    std::shared_ptr<tessel::ApplicationPanel> panel;
};

} // namespace

/// What the program calls when it first needs the toolkit (see `MenuPlugin`).
extern "C" [[gnu::visibility("default")]] platform::Toolkit*
tesselStartToolkit(const corvid::toolkit::Surroundings& surroundings) {
    return corvid::toolkit::QuickToolkit::start(surroundings, MenuBuilder()).release();
}
