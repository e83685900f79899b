#pragma once

#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppRules.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tessel {

/// A desktop with a watcher of app rules: the editor's first window is maximized, the terminal's is centered.
class AppRulesTest : public testing::Test {
protected:
    using Application = platform::simulated::Application;
    using Window = platform::simulated::Window;
    using Lines = std::vector<std::string>;

    static constexpr platform::ProcessIdentifier editorProcess = 10;
    static constexpr platform::ProcessIdentifier terminalProcess = 20;

    /// The frame of a maximized window on the simulated screen.
    static constexpr corvid::CGRect maximized{{0, 25}, {1920, 1055}};
    static constexpr corvid::CGRect natural{{100, 100}, {800, 600}};

    AppRulesTest() {
        watcher->setRules(
            {{"org.example.Editor", WindowAction::maximize}, {"org.example.Terminal", WindowAction::center}});
    }

    static platform::simulated::ApplicationOptions editorOptions() {
        return {.process = editorProcess, .bundleIdentifier = "org.example.Editor"};
    }

    static platform::simulated::ApplicationOptions terminalOptions() {
        return {.process = terminalProcess, .bundleIdentifier = "org.example.Terminal"};
    }

    Application& launchEditor() { return desktop.applications.launch(editorOptions()); }

    Application& addEditor() { return desktop.applications.add(editorOptions()); }

    std::size_t observerCount() const { return desktop.accessibilityObservers.count(); }

    platform::simulated::Desktop desktop;
    /// On the heap, so that a use after its end is detected.
    std::unique_ptr<AppRules> watcher = std::make_unique<AppRules>();
};

} // namespace tessel
