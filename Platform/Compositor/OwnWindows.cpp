#include "Platform/Compositor/OwnWindows.h"

#include "Platform/Linux/Windows/ScreenSpace.h"

#include <unistd.h>

#include <algorithm>

namespace platform::compositor {

std::optional<corvid::CGPoint> OwnWindows::pointer() {
    const auto frame = primary();
    const auto position = frame ? access.pointer() : std::nullopt;
    return position ? std::optional(linux::inScreenSpace(*position, *frame)) : std::nullopt;
}

std::optional<corvid::CGRect> OwnWindows::activeScreen() {
    const WindowTable* table = turn.table();
    if (table == nullptr) {
        return std::nullopt;
    }
    const auto active = std::ranges::find_if(table->outputs(), &Output::isActive);
    return active == table->outputs().end()
               ? std::nullopt
               : std::optional(linux::inScreenSpace(active->frame, table->outputs().front().frame));
}

void OwnWindows::place(Number /*window*/, const std::string& title, corvid::CGPoint topLeft) {
    if (const auto frame = primary()) {
        access.placeOwnWindow(title, linux::fromAccessibilitySpace(topLeft, *frame));
    }
}

bool OwnWindows::isKeyboardElsewhere() {
    const WindowTable* table = turn.table();
    const auto focused = table == nullptr ? std::nullopt : table->focused();
    const Window* window = focused ? table->find(*focused) : nullptr;
    return window != nullptr && window->clues.process != ::getpid();
}

std::optional<corvid::CGRect> OwnWindows::primary() {
    const WindowTable* table = turn.table();
    return table == nullptr || table->outputs().empty() ? std::nullopt : std::optional(table->outputs().front().frame);
}

} // namespace platform::compositor
