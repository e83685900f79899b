#pragma once

#include "Platform/Seam/Desktop/ThisApplication.h"
#include "Platform/Simulated/MainActor.h"
#include "Platform/Simulated/Trace.h"

#include <functional>
#include <utility>

namespace platform::simulated {

/// Trace: "run this program", "activate this program", "terminate this program", "restart this program".
class ThisApplication final : public platform::ThisApplication {
public:
    ThisApplication(Trace& trace, MainActor& mainActor)
        : trace(trace)
        , mainActor(mainActor) {}

    /// Runs the loop until no work is left.
    [[nodiscard]] int run(std::function<void()> didFinishLaunching) override {
        trace.record("run this program");
        mainActor.post(std::move(didFinishLaunching));
        mainActor.run();
        return 0;
    }

    void activateIgnoringOtherApps() override { trace.record("activate this program"); }

    void terminate() override { trace.record("terminate this program"); }

    [[nodiscard]] bool isReplaced() const override { return isUpdated; }

    void restart() override { trace.record("restart this program"); }

    /// The answer of `isReplaced`.
    bool isUpdated = false;

private:
    Trace& trace;
    MainActor& mainActor;
};

} // namespace platform::simulated
