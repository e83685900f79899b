#include "CorvidKit/HotKeys.h"
#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using corvid::PropertyListValue;
using Lines = std::vector<std::string>;

class PreviewState : public testing::Test {
protected:
    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    corvid::InMemoryPreferenceStore store{{{"enabled", true}}};
    AppState state{store, true, dispatcher};
};

TEST_F(PreviewState, ChangesNothingOfTheDesktop) {
    EXPECT_TRUE(state.isPreview);
    state.setHasAccessibility(true);
    state.setEnabled(false);
    state.setEnabled(true);
    state.setRules({{"org.example.Editor", WindowAction::maximize}});
    desktop.mainActor.advance(60s);
    EXPECT_EQ(desktop.trace.take(), (Lines{"locate org.example.Editor"})) << "for its row";
    EXPECT_TRUE(desktop.mainActor.waiting().empty());
}

TEST_F(PreviewState, HasNoPermissionUntilItIsGivenOne) {
    EXPECT_FALSE(state.hasAccessibility());
    EXPECT_EQ(state.status(), AppStatus::waitingForPermission);
    int changes = 0;
    const auto subscription = state.objectWillChange().subscribe([&] { ++changes; });
    state.setHasAccessibility(true);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(state.status(), AppStatus::active);
}

TEST_F(PreviewState, StoresTheSwitchInItsOwnStoreButNotTheRules) {
    state.setEnabled(false);
    state.setRules({{"org.example.Editor", WindowAction::maximize}});
    EXPECT_EQ(store.values, (PropertyListValue::Dictionary{{"enabled", false}}));
    EXPECT_EQ(state.rules(), (Prefs::Rules{{"org.example.Editor", WindowAction::maximize}}));
    EXPECT_EQ(state.status(), AppStatus::paused);
}

TEST_F(PreviewState, BeginsWithWhatItsStoreHolds) {
    corvid::InMemoryPreferenceStore filled{
        {{"enabled", false}, {"rules", PropertyListValue::Dictionary{{"org.example.Editor", "center"}}}}};
    const AppState other(filled, true, dispatcher);
    EXPECT_FALSE(other.isEnabled());
    EXPECT_EQ(other.rules(), (Prefs::Rules{{"org.example.Editor", WindowAction::center}}));
}

} // namespace
} // namespace tessel
