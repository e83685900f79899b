#pragma once

#include "Platform/Linux/MainLoop.h"
#include "Platform/ThisApplication.h"

#include <cstdlib>
#include <functional>
#include <utility>

namespace platform::linux {

/// This program as far as its event loop is concerned. The loop must outlive it.
class LoopApplication final : public ThisApplication {
public:
    explicit LoopApplication(MainLoop& mainLoop)
        : mainLoop(mainLoop) {}

    [[nodiscard]] int run(std::function<void()> didFinishLaunching) override {
        mainLoop.post(std::move(didFinishLaunching));
        return mainLoop.run();
    }

    /// On Linux a window takes the keyboard by itself when it is shown; there is nothing to prepare.
    void activateIgnoringOtherApps() override {}

    void terminate() override { mainLoop.end(EXIT_SUCCESS); }

private:
    MainLoop& mainLoop;
};

} // namespace platform::linux
