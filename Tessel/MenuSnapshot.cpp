#include "Tessel/MenuSnapshot.h"

#include "CorvidKit/Snapshot.h"
#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "Tessel/AppState.h"
#include "Tessel/MenuTab.h"
#include "Tessel/MenuView.h"

#include <memory>

namespace tessel::MenuSnapshot {

namespace {

const Prefs::Rules& previewRules() {
    static const Prefs::Rules rules{
        {"com.apple.Music", WindowAction::maximize},
        {"com.apple.mail", WindowAction::maximize},
        {"com.apple.Notes", WindowAction::maximize},
        {"com.apple.iCal", WindowAction::maximize},
        {"com.apple.Maps", WindowAction::maximize},
        {"com.apple.AppStore", WindowAction::maximize},
        {"com.apple.Terminal", WindowAction::center},
        {"com.apple.calculator", WindowAction::center},
        {"com.apple.systempreferences", WindowAction::center},
    };
    return rules;
}

/// A state with its store, while either is shown.
struct PreviewState {
    corvid::InMemoryPreferenceStore preferences;
    AppState state{preferences, true};
};

std::shared_ptr<AppState> previewState() {
    const auto preview = std::make_shared<PreviewState>();
    preview->state.setRules(previewRules());
    preview->state.setHasAccessibility(true);
    return {preview, &preview->state};
}

} // namespace

void render(const std::string& directory) {
    for (const MenuTab tab : allMenuTabs) {
        corvid::Snapshot::renderMenu(directory, std::string(rawValue(tab)),
                                     [tab] { return std::make_shared<MenuView>(previewState(), tab); });
    }
}

} // namespace tessel::MenuSnapshot
