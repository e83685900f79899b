#include "Demo/StatePictures/States.h"

#include "CorvidKit/AppInfo.h"
#include "CorvidKitCore/UpdateReminder.h"
#include "Tessel/PreviewCatalogue.h"
#include "TesselCore/WindowAction.h"

#include <cstddef>
#include <filesystem>
#include <utility>

namespace tessel {

namespace {

using platform::simulated::Desktop;

void installPreviews(Desktop& desktop) {
    PreviewCatalogue previews;
    for (const std::filesystem::path& location : previews.locations()) {
        desktop.applicationCatalogue.install(location,
                                             {.bundleIdentifier = previews.bundleIdentifier(location).value_or(""),
                                              .displayName = previews.displayName(location),
                                              .iconName = location});
    }
}

void permitted(Desktop& desktop) {
    desktop.accessibility.isTrusted = true;
    installPreviews(desktop);
}

void notPermitted(Desktop& desktop) {
    desktop.accessibility.isTrusted = false;
    installPreviews(desktop);
}

void withOpenApplications(Desktop& desktop) {
    permitted(desktop);
    PreviewCatalogue previews;
    int process = 10;
    for (const char* identifier : {"com.apple.mail", "com.apple.Maps", "com.apple.Terminal"}) {
        const std::string name = previews.displayName(previews.location(identifier).value_or(""));
        desktop.applications.add({.process = ++process, .bundleIdentifier = identifier, .localizedName = name});
    }
}

/// More than a window of the usual height shows.
void withManyApplications(Desktop& desktop) {
    permitted(desktop);
    for (const char* name : {"Archive Manager", "Backups", "Camera", "Contacts", "Dictionary", "Document Viewer",
                             "Fonts", "Image Viewer", "Screenshot", "System Monitor", "Videos", "Weather"}) {
        const std::string location = std::string("/applications/") + name;
        desktop.applicationCatalogue.install(
            location, {.bundleIdentifier = "org.example." + std::string(name), .displayName = name, .iconName = ""});
    }
}

void withAnotherVersionInstalled(Desktop& desktop) {
    permitted(desktop);
    desktop.thisApplication.isUpdated = true;
}

void withTakenShortcuts(Desktop& desktop) {
    permitted(desktop);
    for (const WindowAction action : {WindowAction::leftHalf, WindowAction::maximizeHeight}) {
        desktop.hotKeyEvents.refuse(action.shortcut().keyCode, action.shortcut().modifiers);
    }
}

void withShortcutsToBorrow(Desktop& desktop) {
    permitted(desktop);
    for (const WindowAction action : {WindowAction::leftHalf, WindowAction::rightHalf}) {
        desktop.hotKeyEvents.lend(action.shortcut().keyCode, action.shortcut().modifiers);
    }
    using platform::KeyPurpose;
    desktop.shortcutHolders.holders = {{WindowAction(WindowAction::leftHalf).shortcut(),
                                        {.heldBy = "GNOME",
                                         .purpose = KeyPurpose::workspaceOnTheLeft,
                                         .otherKeys = {{corvid::Shortcut::command, "Page Up"}}}},
                                       {WindowAction(WindowAction::rightHalf).shortcut(),
                                        {.heldBy = "GNOME",
                                         .purpose = KeyPurpose::workspaceOnTheRight,
                                         .otherKeys = {{corvid::Shortcut::command, "Page Down"}}}}};
}

/// As after months with this version. The clock stays: advancing it runs all that is periodic.
void withTheReminder(Desktop& desktop) {
    permitted(desktop);
    corvid::UpdateReminder(desktop.standardUserDefaults, corvid::AppInfo::version(), corvid::Date())
        .restart(corvid::Date());
}

void nothing(Desktop& /*desktop*/, AppState& /*state*/) {
}

void giveRules(Desktop& /*desktop*/, AppState& state) {
    state.setRules({{"com.apple.Music", WindowAction::maximize},
                    {"com.apple.calculator", WindowAction::center},
                    {"org.example.Gone", WindowAction::center}});
}

/// The holders are known in a later turn.
void findHolders(Desktop& desktop, AppState& state) {
    giveRules(desktop, state);
    desktop.mainActor.advance(platform::simulated::ShortcutHolders::delay);
}

void borrow(Desktop& desktop, AppState& state) {
    giveRules(desktop, state);
    state.setBorrowsShortcuts(true);
}

/// A rule for all that one would expect to find.
void giveUsualRules(Desktop& /*desktop*/, AppState& state) {
    PreviewCatalogue previews;
    Prefs::Rules rules;
    for (const std::filesystem::path& location : previews.locations()) {
        const std::string identifier = previews.bundleIdentifier(location).value_or("");
        rules.emplace(identifier, rules.size() % 3 == 2 ? WindowAction::center : WindowAction::maximize);
    }
    state.setRules(std::move(rules));
}

void giveManyRules(Desktop& desktop, AppState& state) {
    constexpr std::size_t count = 200;
    PreviewCatalogue previews;
    const std::vector<std::filesystem::path> icons = previews.locations();
    Prefs::Rules rules;
    for (std::size_t number = 1; number <= count; ++number) {
        const std::string identifier = "org.example.Application" + std::to_string(number);
        std::string name = "Application " + std::to_string(number);
        if (number % 10 == 0) {
            name += " with a name that goes on and on, beyond the end of its row";
        }
        desktop.applicationCatalogue.install(
            "/applications/" + identifier,
            {.bundleIdentifier = identifier, .displayName = name, .iconName = icons[number % icons.size()]});
        rules.emplace(identifier, number % 3 == 0 ? WindowAction::center : WindowAction::maximize);
    }
    state.setRules(std::move(rules));
}

void pause(Desktop& desktop, AppState& state) {
    giveRules(desktop, state);
    state.setEnabled(false);
}

} // namespace

const std::vector<ShownState>& shownStates() {
    static const std::vector<ShownState> states{
        {.name = "shortcuts", .tab = MenuTab::shortcuts, .prepare = permitted, .live = giveUsualRules},
        {.name = "apps", .tab = MenuTab::apps, .prepare = permitted, .live = giveUsualRules},
        {.name = "active", .tab = MenuTab::shortcuts, .prepare = permitted, .live = giveRules},
        {.name = "rules", .tab = MenuTab::apps, .prepare = permitted, .live = giveRules},
        {.name = "no-rules", .tab = MenuTab::apps, .prepare = permitted, .live = nothing},
        {.name = "many-rules", .tab = MenuTab::apps, .prepare = permitted, .live = giveManyRules},
        {.name = "no-permission", .tab = MenuTab::shortcuts, .prepare = notPermitted, .live = nothing},
        {.name = "taken-shortcuts", .tab = MenuTab::shortcuts, .prepare = withTakenShortcuts, .live = giveRules},
        {.name = "lendable-shortcuts",
         .tab = MenuTab::shortcuts,
         .prepare = withShortcutsToBorrow,
         .live = findHolders},
        {.name = "borrowed-shortcuts", .tab = MenuTab::shortcuts, .prepare = withShortcutsToBorrow, .live = borrow},
        {.name = "reminder", .tab = MenuTab::shortcuts, .prepare = withTheReminder, .live = giveRules},
        {.name = "updated", .tab = MenuTab::shortcuts, .prepare = withAnotherVersionInstalled, .live = giveRules},
        {.name = "paused", .tab = MenuTab::apps, .prepare = permitted, .live = pause},
        {.name = "rule-menu",
         .tab = MenuTab::apps,
         .open = OpenPart::ruleMenu,
         .prepare = permitted,
         .live = giveUsualRules},
        {.name = "add-menu",
         .tab = MenuTab::apps,
         .open = OpenPart::addMenu,
         .prepare = withOpenApplications,
         .live = giveRules},
        {.name = "shortcut-tip",
         .tab = MenuTab::shortcuts,
         .open = OpenPart::shortcutTip,
         .prepare = withShortcutsToBorrow,
         .live = findHolders},
        {.name = "switch-tip",
         .tab = MenuTab::shortcuts,
         .open = OpenPart::switchTip,
         .prepare = permitted,
         .live = giveRules},
        {.name = "chooser",
         .tab = MenuTab::apps,
         .open = OpenPart::chooser,
         .prepare = withManyApplications,
         .live = giveRules},
        {.name = "chooser-search",
         .tab = MenuTab::apps,
         .open = OpenPart::chooserWithSearch,
         .prepare = withManyApplications,
         .live = giveRules},
        {.name = "chooser-nothing",
         .tab = MenuTab::apps,
         .open = OpenPart::chooserWithoutMatch,
         .prepare = withManyApplications,
         .live = giveRules},
    };
    return states;
}

} // namespace tessel
