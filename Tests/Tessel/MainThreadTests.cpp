#include "CorvidKit/HotKeys.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/MenuBarSymbol.h"
#include "Tessel/RemoteControl.h"
#include "Tessel/StatusMenu.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tessel {
namespace {

/// The desktop's callbacks, called from another thread.
class CallbackDeathTest : public testing::Test {
protected:
    /// Whether the process stops there, before any effect.
    void stopsAt(const std::string& file, const std::function<void()>& callback) {
        EXPECT_DEATH(
            {
                const platform::simulated::MainActor::Elsewhere elsewhere(desktop.mainActor);
                const corvid::Subscription changes =
                    state.objectWillChange().subscribe([] { fputs("changed\n", stderr); });
                callback();
            },
            "^" + file + ":[0-9]+: Fatal error: Incorrect actor executor assumption; .* MainActor\n$");
    }

    static std::function<void()> printing(const char* word) {
        return [word] { fputs(word, stderr); };
    }

    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    AppState state{desktop.standardUserDefaults, false, dispatcher};
    std::unique_ptr<platform::StatusItem> item = desktop.statusBar.createStatusItem("Item-0");
    RemoteControl remote{state, RemoteControl::Context{.version = "1.2",
                                                       .localization = desktop.localization,
                                                       .application = desktop.thisApplication,
                                                       .backend = [] { return std::string("Simulated"); },
                                                       .open = printing("opened")}};
};

TEST_F(CallbackDeathTest, ALineOfTheItemsMenuIsOfTheMainThread) {
    const StatusMenu menu(state, *item,
                          StatusMenu::Context{.mainActor = desktop.mainActor,
                                              .localization = desktop.localization,
                                              .application = desktop.thisApplication,
                                              .open = printing("opened")});
    for (const std::size_t line : {1U, 3U, 4U}) {
        stopsAt("Tessel/StatusMenu", [&] { desktop.statusBar.items().front()->choose(line); });
    }
}

TEST_F(CallbackDeathTest, ARequestFromOutsideIsOfTheMainThread) {
    stopsAt("Tessel/RemoteControl", [&] { static_cast<void>(remote.open()); });
    stopsAt("Tessel/RemoteControl", [&] { static_cast<void>(remote.status()); });
    stopsAt("Tessel/RemoteControl", [&] { remote.perform("center", [](const auto& /*answer*/) {}); });
    stopsAt("Tessel/RemoteControl", [&] { static_cast<void>(remote.setRule("org.example.Editor", "center")); });
    stopsAt("Tessel/RemoteControl", [&] { static_cast<void>(remote.quit()); });
}

TEST_F(CallbackDeathTest, TheChoiceOfApplicationsIsOfTheMainThread) {
    desktop.applicationCatalogue.install("/applications/Editor", {"org.example.Editor", "Editor", ""});
    state.chooseApp(WindowAction::maximize, desktop.openPanel);
    stopsAt("Tessel/AppState", [&] { desktop.openPanel.choose({"/applications/Editor"}); });
    stopsAt("Tessel/AppState", [&] { desktop.openPanel.choose({}); });
}

TEST_F(CallbackDeathTest, NewsOfInstalledApplicationsAreOfTheMainThread) {
    stopsAt("Tessel/AppState", [&] { state.applicationsChanged(); });
}

TEST_F(CallbackDeathTest, TheNameOfTheItemsSymbolIsOfTheMainThread) {
    const corvid::MenuBarController::Symbol symbol = menuBarSymbol(state);
    stopsAt("Tessel/MenuBarSymbol", [&] { static_cast<void>(symbol()); });
}

} // namespace
} // namespace tessel
