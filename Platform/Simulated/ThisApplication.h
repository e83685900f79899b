#pragma once

#include "Platform/Simulated/Trace.h"
#include "Platform/ThisApplication.h"

namespace platform::simulated {

/// Trace: "activate this program", "terminate this program".
class ThisApplication final : public platform::ThisApplication {
public:
    explicit ThisApplication(Trace& trace)
        : trace(trace) {}

    void activateIgnoringOtherApps() override { trace.record("activate this program"); }

    void terminate() override { trace.record("terminate this program"); }

private:
    Trace& trace;
};

} // namespace platform::simulated
