#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Tray/TrayContents.h"
#include "Platform/Linux/Tray/TrayPlace.h"

#include <cstdint>
#include <functional>
#include <string>

namespace platform::linux {

/// A status item, as panels read it: an object of the interface org.kde.StatusNotifierItem (StatusNotifierItem
/// Specification, StatusNotifierItem). Main thread only.
class NotifierItem {
public:
    /// A click on the item, in the desktop's coordinates: pixels, the origin at its top left.
    using Click = std::function<void(std::int32_t x, std::int32_t y)>;

    /// `iconThemePath` is the folder of the program's own icons ("hicolor" and the like), for panels that look there;
    /// see the function of that name.
    NotifierItem(std::string iconThemePath, Click click);
    NotifierItem(const NotifierItem&) = delete;
    NotifierItem& operator=(const NotifierItem&) = delete;
    ~NotifierItem() = default;

    static constexpr const char* objectPath = "/StatusNotifierItem";

    /// Offers an item on a bus, until it is withdrawn; `contents` must stay there as long. False where the library
    /// refuses.
    [[nodiscard]] bool offer(sd_bus* bus, const TrayContents& contents);
    void withdraw();

    /// Signals panels which properties to read again.
    void announce(TrayPlace::Change change) const;

private:
    struct Methods;

    std::string iconThemePath;
    Click click;
    const TrayContents* contents = nullptr;
    sd_bus* bus = nullptr;
    OwnedSlot object;
};

} // namespace platform::linux
