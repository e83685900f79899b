#include "CorvidKit/HotKeys.h"
#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/StatusMenu.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tessel {
namespace {

using Titles = std::vector<std::string>;

class StatusMenuOfAnItem : public testing::Test {
protected:
    const platform::simulated::StatusBar::Item& shown() { return *desktop.statusBar.items().front(); }

    Titles titles() {
        Titles result;
        for (const platform::StatusMenuLine& line : shown().menu) {
            result.push_back(line.title);
        }
        return result;
    }

    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    corvid::InMemoryPreferenceStore store{{}};
    AppState state{store, false, dispatcher};
    std::unique_ptr<platform::StatusItem> item = desktop.statusBar.createStatusItem("Item-0");
    int opened = 0;
    std::optional<StatusMenu> menu{std::in_place, state, *item,
                                   StatusMenu::Surroundings{.mainActor = desktop.mainActor,
                                                            .localization = desktop.localization,
                                                            .application = desktop.thisApplication,
                                                            .open = [this] { ++opened; }}};
};

TEST_F(StatusMenuOfAnItem, SaysHowTheProgramStandsAndWhatCanBeDone) {
    EXPECT_EQ(titles(), (Titles{"Active · 6 shortcuts · 0 apps", "Turn off", "", "Open Tessel", "Quit"}));
    EXPECT_EQ(shown().toolTip, "Active · 6 shortcuts · 0 apps");
    EXPECT_FALSE(shown().menu.at(0).isEnabled);
    EXPECT_TRUE(shown().menu.at(1).isEnabled);
    EXPECT_TRUE(shown().menu.at(3).isEnabled);
    EXPECT_TRUE(shown().menu.at(4).isEnabled);
}

TEST_F(StatusMenuOfAnItem, SwitchesTheProgramOffAndOnAgain) {
    shown().choose(1);
    EXPECT_FALSE(state.isEnabled());
    desktop.mainActor.run();
    EXPECT_EQ(titles(), (Titles{"Paused", "Turn on", "", "Open Tessel", "Quit"}));
    EXPECT_EQ(shown().toolTip, "Paused");
    shown().choose(1);
    EXPECT_TRUE(state.isEnabled());
    desktop.mainActor.run();
    EXPECT_EQ(titles().at(1), "Turn off");
}

TEST_F(StatusMenuOfAnItem, LeadsToTheProgramAndOutOfIt) {
    shown().choose(3);
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(desktop.trace.take("terminate").size(), 0U);
    shown().choose(4);
    EXPECT_EQ(desktop.trace.take("terminate").size(), 1U);
}

TEST_F(StatusMenuOfAnItem, LeadsToWhatHasTakenItsPlace) {
    desktop.thisApplication.isUpdated = true;
    menu->update();
    EXPECT_EQ(titles(), (Titles{"Active · 6 shortcuts · 0 apps", "Tessel was updated", "Restart Tessel", "Turn off", "",
                                "Open Tessel", "Quit"}));
    EXPECT_FALSE(shown().menu.at(1).isEnabled);
    shown().choose(2);
    EXPECT_EQ(desktop.trace.take("restart"), std::vector<std::string>{"restart this program"});
    desktop.thisApplication.isUpdated = false;
    menu->update();
    EXPECT_EQ(titles().size(), 5U);
}

TEST_F(StatusMenuOfAnItem, CountsTheRules) {
    state.setRule("org.example.Editor", WindowAction::maximize);
    EXPECT_EQ(titles().front(), "Active · 6 shortcuts · 0 apps") << "told before the change";
    desktop.mainActor.run();
    EXPECT_EQ(titles().front(), "Active · 6 shortcuts · 1 apps");
}

TEST_F(StatusMenuOfAnItem, StaysAsItIsWhenNothingOfItHasChanged) {
    // What a panel was given stays there until another menu is set.
    item->setMenu({});
    state.setEnabled(true);
    desktop.mainActor.run();
    EXPECT_EQ(titles(), Titles());
    state.setEnabled(false);
    desktop.mainActor.run();
    EXPECT_EQ(titles().size(), 5U);
}

TEST_F(StatusMenuOfAnItem, IsInTheUsersLanguage) {
    desktop.localization.texts = {{"Tessel/Paused", "Angehalten"},
                                  {"Tessel/Turn on", "Einschalten"},
                                  {"Tessel/Open Tessel", "Tessel öffnen"},
                                  {"CorvidKit/Quit", "Beenden"}};
    state.setEnabled(false);
    desktop.mainActor.run();
    EXPECT_EQ(titles(), (Titles{"Angehalten", "Einschalten", "", "Tessel öffnen", "Beenden"}));
}

TEST_F(StatusMenuOfAnItem, FollowsNothingOnceItIsDropped) {
    state.setEnabled(false);
    menu.reset();
    desktop.mainActor.run();
    EXPECT_EQ(shown().toolTip, "Active · 6 shortcuts · 0 apps");
}

} // namespace
} // namespace tessel
