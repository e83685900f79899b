#include "CorvidKit/HotKeys.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using corvid::PropertyListValue;
using platform::ActivationPolicy;
using platform::AXError;
using platform::simulated::Application;
using platform::simulated::ApplicationOptions;
using platform::simulated::Window;
using Lines = std::vector<std::string>;
namespace AXAttribute = platform::AXAttribute;

constexpr corvid::CGRect natural{{100, 100}, {800, 600}};
constexpr corvid::CGRect maximized{{0, 25}, {1920, 1055}};

/// The state's handling of applications.
class StateOfRules : public testing::Test {
protected:
    AppState& make() {
        made.emplace(desktop.standardUserDefaults, false, dispatcher);
        desktop.trace.clear();
        return *made;
    }

    Application& launchEditor() {
        return desktop.applications.launch({.process = 10, .bundleIdentifier = "org.example.Editor"});
    }

    void storeRule() {
        desktop.standardUserDefaults.store.set(PropertyListValue::Dictionary{{"org.example.Editor", "maximize"}},
                                               "rules");
    }

    Lines addable(const AppState& state) {
        Lines names;
        for (const auto& application : state.addableRunningApps()) {
            names.push_back(application->localizedName().value_or("(none)"));
        }
        return names;
    }

    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    std::optional<AppState> made;
};

TEST_F(StateOfRules, AppliesAStoredRuleToALaunch) {
    storeRule();
    make();
    Window& window = launchEditor().addWindow();
    desktop.mainActor.run();
    EXPECT_EQ(window.frame(), maximized);
}

TEST_F(StateOfRules, PlacesAWindowOnceItAnswersAlsoLongAfterItsFirstTime) {
    storeRule();
    make();
    Window& window = launchEditor().addWindow();
    window.faults.failReads(AXAttribute::position, AXError::cannotComplete);
    desktop.mainActor.advance(1s);
    EXPECT_EQ(window.frame(), natural);
    window.faults.clear();
    desktop.mainActor.advance(2s);
    EXPECT_EQ(window.frame(), maximized);
}

TEST_F(StateOfRules, CorrectsAWindowThatRefusedItsSizeOnceItAnswers) {
    storeRule();
    make();
    Application& editor = launchEditor();
    desktop.mainActor.run();
    const std::size_t before = desktop.accessibility.operationCount();
    const corvid::CGRect centred{{560, 253}, {800, 600}};
    Window* window = &editor.openWindow({.frame = natural, .sizes = {.isFixed = true}});
    desktop.mainActor.run();
    EXPECT_EQ(window->frame(), centred);
    const std::size_t all = desktop.accessibility.operationCount() - before;
    window->close();
    desktop.mainActor.advance(1s);
    // The last operations read the size of the settled frame, correct the position, and read the frame for the rule.
    constexpr std::size_t afterTheSize = 4;
    desktop.accessibility.failOperation(desktop.accessibility.operationCount() + all - afterTheSize,
                                        AXError::cannotComplete);
    window = &editor.openWindow({.frame = natural, .sizes = {.isFixed = true}});
    desktop.mainActor.run();
    EXPECT_EQ(window->frame().origin, maximized.origin) << "the answer is missing on which the correction depends";
    desktop.mainActor.advance(3s);
    EXPECT_EQ(window->frame(), centred);
}

TEST_F(StateOfRules, LeavesAWindowThatAnswersLateWhereItsUserHasPutIt) {
    storeRule();
    AppState& state = make();
    Window& window = launchEditor().addWindow();
    window.faults.failReads(AXAttribute::position, AXError::cannotComplete);
    desktop.mainActor.run();
    window.faults.clear();
    state.perform(WindowAction::leftHalf, window.element());
    const corvid::CGRect leftHalf{{0, 25}, {960, 1055}};
    EXPECT_EQ(window.frame(), leftHalf);
    desktop.mainActor.advance(399ms);
    EXPECT_EQ(window.frame(), leftHalf) << "the user's order replaces the one that waits";
}

TEST_F(StateOfRules, RepeatsNoRuleWhileItIsOff) {
    storeRule();
    AppState& state = make();
    Window& window = launchEditor().addWindow();
    window.faults.failReads(AXAttribute::position, AXError::cannotComplete);
    desktop.mainActor.advance(1s);
    state.setEnabled(false);
    window.faults.clear();
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), natural);
}

TEST_F(StateOfRules, HasTheRowsOfTheStoredRulesFromTheBeginning) {
    storeRule();
    desktop.applicationCatalogue.install("/applications/Editor", {"org.example.Editor", "Text Editor", "editor"});
    const AppState& state = make();
    ASSERT_EQ(state.ruleApps().size(), 1U);
    EXPECT_EQ(state.ruleApps().front().name, "Text Editor");
}

TEST_F(StateOfRules, WritesARuleThenWatchesTheApplicationsThatRun) {
    AppState& state = make();
    launchEditor();
    desktop.mainActor.run();
    state.setRule("org.example.Editor", WindowAction::maximize);
    EXPECT_EQ(desktop.trace.take(), (Lines{"locate org.example.Editor", "write setting rules", "observe process 10",
                                           "subscribe to application 10 AXWindowCreated"}));
    EXPECT_EQ(state.ruleApps().size(), 1U);
    state.setRule("org.example.Editor", std::nullopt);
    EXPECT_EQ(desktop.trace.take(), (Lines{"write setting rules", "stop observing process 10"}));
    EXPECT_TRUE(state.ruleApps().empty());
}

TEST_F(StateOfRules, WritesNothingWhenApplicationsWereInstalled) {
    storeRule();
    AppState& state = make();
    ASSERT_EQ(state.ruleApps().front().name, "org.example.Editor");
    desktop.applicationCatalogue.install("/applications/Editor", {"org.example.Editor", "Text Editor", "editor"});
    int announced = 0;
    const corvid::Subscription changes = state.objectWillChange().subscribe([&announced] { ++announced; });
    state.applicationsChanged();
    EXPECT_EQ(state.ruleApps().front().name, "Text Editor");
    EXPECT_EQ(announced, 1);
    for (const std::string& line : desktop.trace.take()) {
        EXPECT_EQ(line.find("setting"), std::string::npos) << line;
    }
}

TEST_F(StateOfRules, WatchesAnApplicationThatIsCalledByItsNameOnlyOnceItIsInstalled) {
    storeRule();
    AppState& state = make();
    Application& editor = desktop.applications.launch({.process = 10, .bundleIdentifier = std::nullopt});
    desktop.mainActor.run();
    EXPECT_EQ(desktop.accessibilityObservers.count(), 0U);
    editor.setBundleIdentifier("org.example.Editor");
    state.applicationsChanged();
    EXPECT_EQ(desktop.accessibilityObservers.count(), 1U);
}

TEST_F(StateOfRules, LooksAtNothingWhenApplicationsWereInstalledThatNoRuleIsFor) {
    AppState& state = make();
    state.applicationsChanged();
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

TEST_F(StateOfRules, WatchesOnlyWhileItIsOnAndTrusted) {
    storeRule();
    AppState& state = make();
    Application& editor = launchEditor();
    desktop.mainActor.run();
    EXPECT_EQ(desktop.accessibilityObservers.count(), 1U);
    state.setEnabled(false);
    EXPECT_EQ(desktop.accessibilityObservers.count(), 0U);
    EXPECT_EQ(desktop.trace.take().back(), "stop observing process 10") << "after the hot keys";
    Window& unwatched = editor.openWindow();
    desktop.mainActor.run();
    EXPECT_EQ(unwatched.frame(), natural);
    unwatched.close();
    state.setEnabled(true);
    EXPECT_EQ(desktop.accessibilityObservers.count(), 1U);
    desktop.accessibility.isTrusted = false;
    desktop.mainActor.advance(2s);
    EXPECT_EQ(desktop.accessibilityObservers.count(), 0U);
    desktop.accessibility.isTrusted = true;
    desktop.mainActor.advance(2s);
    EXPECT_EQ(desktop.accessibilityObservers.count(), 1U);
    Window& window = editor.openWindow();
    desktop.mainActor.run();
    EXPECT_EQ(window.frame(), maximized);
}

TEST_F(StateOfRules, KeepsRulesThatChangeWhileItIsOff) {
    AppState& state = make();
    state.setEnabled(false);
    state.setRule("org.example.Editor", WindowAction::maximize);
    launchEditor();
    desktop.mainActor.run();
    EXPECT_EQ(desktop.accessibilityObservers.count(), 0U);
    state.setEnabled(true);
    EXPECT_EQ(desktop.accessibilityObservers.count(), 1U);
}

TEST_F(StateOfRules, OffersTheOrdinaryApplicationsByName) {
    const std::vector<ApplicationOptions> running{
        {.process = 1, .bundleIdentifier = "org.example.Tessel", .localizedName = "Tessel"},
        {.process = 10, .bundleIdentifier = "org.example.Editor", .localizedName = "text editor"},
        {.process = 11, .bundleIdentifier = "org.example.Clock", .localizedName = "Clock"},
        {.process = 12, .bundleIdentifier = std::nullopt, .localizedName = "Unknown"},
        {.process = 13,
         .bundleIdentifier = "org.example.Tray",
         .localizedName = "Tray",
         .activationPolicy = ActivationPolicy::accessory},
        {.process = 14,
         .bundleIdentifier = "org.example.Daemon",
         .localizedName = "Daemon",
         .activationPolicy = ActivationPolicy::prohibited},
        {.process = 15, .bundleIdentifier = "org.example.Nameless"},
        {.process = 16, .bundleIdentifier = "org.example.Terminal", .localizedName = "Terminal"},
    };
    for (const ApplicationOptions& options : running) {
        desktop.applications.add(options);
    }
    AppState& state = make();
    EXPECT_EQ(addable(state), (Lines{"(none)", "Clock", "Terminal", "text editor"}));
    state.setRule("org.example.Terminal", WindowAction::center);
    EXPECT_EQ(addable(state), (Lines{"(none)", "Clock", "text editor"}));
    desktop.mainBundle.identifier.reset();
    EXPECT_EQ(addable(state), (Lines{"(none)", "Clock", "Tessel", "text editor"}));
}

TEST_F(StateOfRules, LetsTheUserPickApplicationsAndStoresEachAsItIsAddedAllKeptAtOnce) {
    desktop.applicationCatalogue.install("/applications/Editor", {"org.example.Editor", "Editor", ""});
    desktop.applicationCatalogue.install("/applications/Terminal", {"org.example.Terminal", "Terminal", ""});
    desktop.applicationCatalogue.install("/applications/Mail", {"org.example.Mail", "Mail", ""});
    AppState& state = make();
    state.setRule("org.example.Editor", WindowAction::maximize);
    desktop.trace.clear();
    state.chooseApp(WindowAction::center, desktop.openPanel);
    EXPECT_EQ(desktop.trace.take(), (Lines{"activate this program", "show open panel"}));
    EXPECT_EQ(desktop.openPanel.shown,
              (platform::OpenPanelOptions{.allowedContentTypes = {platform::applicationContentType},
                                          .directory = "/Applications",
                                          .allowsMultipleSelection = true,
                                          .prompt = "Add"}));
    desktop.openPanel.choose({"/applications/Terminal", "/notes.txt", "/applications/Editor", "/applications/Mail"});
    EXPECT_EQ(state.rules(), (Prefs::Rules{{"org.example.Editor", WindowAction::center},
                                           {"org.example.Mail", WindowAction::center},
                                           {"org.example.Terminal", WindowAction::center}}));
    Lines writes = desktop.trace.take();
    std::erase_if(writes, [](const std::string& line) { return line.find("setting") == std::string::npos; });
    EXPECT_EQ(writes, (Lines{"collect settings", "write setting rules", "write setting rules", "write setting rules",
                             "keep settings"}));
}

TEST_F(StateOfRules, ChangesNothingWhenThePickingIsCancelledOrImpossible) {
    AppState& state = make();
    state.chooseApp(WindowAction::center, desktop.openPanel);
    desktop.openPanel.choose({});
    EXPECT_TRUE(state.rules().empty());
    state.chooseApp(WindowAction::center, desktop.openPanel);
    made.reset();
    desktop.openPanel.choose({"/applications/Editor"});
    EXPECT_FALSE(desktop.standardUserDefaults.store.object("rules").has_value());
}

TEST_F(StateOfRules, RemindsOfUpdatesOverTheUsersSettingsWhateverItsOwnStore) {
    corvid::InMemoryPreferenceStore own;
    AppState state(own, false, dispatcher);
    EXPECT_TRUE(own.values.empty());
    EXPECT_EQ(desktop.standardUserDefaults.store.values.at("updateReminderVersion"), PropertyListValue("1.2"));
    EXPECT_FALSE(state.updates().updateReminderDue());
    desktop.systemClock.adjust(std::chrono::hours(30 * 24));
    desktop.mainActor.advance(1h);
    EXPECT_TRUE(state.updates().updateReminderDue());
}

TEST_F(StateOfRules, InAPreviewWatchesNothingAndRemindsOfNothing) {
    corvid::InMemoryPreferenceStore own{{{"rules", PropertyListValue::Dictionary{{"org.example.Editor", "maximize"}}}}};
    AppState preview(own, true, dispatcher);
    EXPECT_EQ(preview.ruleApps().size(), 1U);
    preview.setHasAccessibility(true);
    preview.setEnabled(true);
    Window& window = launchEditor().addWindow();
    desktop.mainActor.advance(1h);
    EXPECT_EQ(window.frame(), natural);
    EXPECT_FALSE(preview.updates().updateReminderDue());
    EXPECT_TRUE(desktop.standardUserDefaults.store.values.empty());
}

} // namespace
} // namespace tessel
