#include "Platform/Compositor/Screens.h"

#include "Platform/Linux/Windows/ScreenSpace.h"

namespace platform::compositor {

std::vector<Screen> Screens::screens() {
    const WindowTable* table = turn.table();
    if (table == nullptr) {
        return {};
    }
    std::vector<Screen> screens;
    screens.reserve(table->outputs().size());
    for (const Output& output : table->outputs()) {
        const corvid::CGRect& primary = table->outputs().front().frame;
        screens.push_back({.frame = linux::inScreenSpace(output.frame, primary),
                           .visibleFrame = linux::inScreenSpace(output.workArea, primary)});
    }
    return screens;
}

} // namespace platform::compositor
