/// Adds a program to the programs that open at login, or removes it, with the code that the program itself uses.
#include "Platform/Linux/Services/AutostartLoginItem.h"

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

int main(int argumentCount, char** argumentValues) {
    const std::span<char*> arguments(argumentValues, static_cast<std::size_t>(argumentCount));
    if (arguments.size() < 2) {
        std::fputs("usage: LoginItem PROGRAM [--remove]\n", stderr);
        return EXIT_FAILURE;
    }
    auto places = platform::linux::AutostartLoginItem::Places::ofThisProcess();
    places.program = arguments[1];
    platform::linux::AutostartLoginItem item(places);
    const bool isToBe = arguments.size() == 2;
    const auto changed = isToBe ? item.registerItem() : item.unregisterItem();
    if (!changed) {
        std::fprintf(stderr, "%s\n", changed.error().c_str());
        return EXIT_FAILURE;
    }
    return (item.status() == platform::LoginItemStatus::enabled) == isToBe ? EXIT_SUCCESS : EXIT_FAILURE;
}
