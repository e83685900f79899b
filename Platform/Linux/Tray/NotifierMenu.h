#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Desktop/StatusItem.h"

#include <cstdint>
#include <vector>

namespace platform::linux {

/// The menu of a status item for panels: an object of the interface com.canonical.dbusmenu (version 3 of the DBusMenu
/// protocol). The root has the id 0, the lines count up from 1. A request with an unknown id, or with values of the
/// wrong types, gets an error. Main thread only.
class NotifierMenu {
public:
    /// Actions are run through `mainActor`, which must outlive this, after the panel has its answer.
    explicit NotifierMenu(MainActor& mainActor)
        : mainActor(mainActor) {}

    NotifierMenu(const NotifierMenu&) = delete;
    NotifierMenu& operator=(const NotifierMenu&) = delete;
    ~NotifierMenu() = default;

    static constexpr const char* objectPath = "/StatusNotifierMenu";

    /// Offers the menu on a bus, until it is withdrawn. False where the library refuses.
    [[nodiscard]] bool offer(sd_bus* bus);
    void withdraw();

    /// Panels that have read the former lines get a signal to read these.
    void setLines(std::vector<StatusMenuLine> newLines);

private:
    struct Methods;

    sd_bus* bus = nullptr;
    OwnedSlot object;
    MainActor& mainActor;
    std::vector<StatusMenuLine> lines;
    std::uint32_t revision = 1;
};

} // namespace platform::linux
