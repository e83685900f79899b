#pragma once

#include "Platform/Linux/Files/RegularFile.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Program/ProgramFile.h"
#include "Platform/Seam/Desktop/ThisApplication.h"

#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace platform::linux {

/// This program as far as its event loop and its file are concerned. Both must outlive it.
class LoopApplication final : public ThisApplication {
public:
    LoopApplication(MainLoop& mainLoop, const ProgramFile& file)
        : mainLoop(mainLoop)
        , file(file) {}

    [[nodiscard]] int run(std::function<void()> didFinishLaunching) override {
        mainLoop.post(std::move(didFinishLaunching));
        return mainLoop.run();
    }

    /// On Linux a window takes the keyboard by itself when it is shown; there is nothing to prepare.
    void activateIgnoringOtherApps() override {}

    void terminate() override { mainLoop.end(EXIT_SUCCESS); }

    [[nodiscard]] bool isReplaced() const override { return file.isReplaced(); }

    void restart() override {
        const std::optional<std::string> path = programPath();
        if (path && isExecutableFile(*path)) {
            successor = path;
            terminate();
        }
    }

    /// The program to become once this one has ended.
    [[nodiscard]] const std::optional<std::string>& nextProgram() const { return successor; }

private:
    MainLoop& mainLoop;
    const ProgramFile& file;
    std::optional<std::string> successor;
};

} // namespace platform::linux
