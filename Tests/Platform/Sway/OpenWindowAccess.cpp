#include "Tests/Platform/Sway/OpenWindowAccess.h"

OpenWindowAccess::OpenWindowAccess() = default;

bool OpenWindowAccess::refresh() {
    const int before = sway.treeReadings();
    sway.send(0x80000003, R"({"change":"focus","container":{}})");
    return runUntil([&] { return sway.treeReadings() > before; });
}
