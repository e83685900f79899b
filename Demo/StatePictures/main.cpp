#include "CorvidKit/Snapshot.h"
#include "CorvidKit/Toolkit/QuickToolkit.h"
#include "Demo/StatePictures/OpenParts.h"
#include "Demo/StatePictures/States.h"
#include "Platform/Seam/Desktop/HostedLoop.h"
#include "Platform/Seam/Platform.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/Menu/MenuViewItem.h"
#include "Tessel/MenuView.h"

#include <QGuiApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace {

/// Pictures are drawn before any loop runs.
class NoLoop final : public platform::HostedLoop {
public:
    [[nodiscard]] int descriptor() const override { return -1; }

    [[nodiscard]] Outlook serve() override { return Outlook::ended; }
};

void translate(platform::simulated::Desktop& desktop, const char* key, int count = -1) {
    desktop.localization.texts[std::string("Tessel/") + key] =
        QCoreApplication::translate("Tessel", key, nullptr, count).toStdString();
}

/// Gives the desktop the toolkit's texts of what the logic composes: names of keys and of applications, and what holds
/// a shortcut.
void translateNames(platform::simulated::Desktop& desktop) {
    for (const char* key : {"Ctrl", "Alt", "Shift", "Super", "%1 %2 (%3)", "%1: %2 (%3)", "%1 belongs to %3",
                            "switches to the workspace on the left", "switches to the workspace on the right", "Music",
                            "Mail", "Notes", "Calendar", "Maps", "Software", "Terminal", "Calculator", "Settings"}) {
        translate(desktop, key);
    }
}

/// The same for the status, with its counts.
void translateStatus(platform::simulated::Desktop& desktop, const tessel::AppState& state) {
    for (const char* key :
         {"Paused", "Waiting for permission", "Some shortcuts are taken", "Active · %lld shortcuts · %lld apps"}) {
        translate(desktop, key);
    }
    translate(desktop, "%n shortcuts", static_cast<int>(tessel::WindowAction::allCases.size()));
    translate(desktop, "%n apps", static_cast<int>(state.rules().size()));
}

/// The view of a state, and what is open over it.
class ViewOfState final : public platform::View {
public:
    ViewOfState(tessel::AppState& state, const tessel::ShownState& shown)
        : menu(state, shown.tab)
        , open(shown.open) {}

    tessel::MenuView menu;
    tessel::OpenPart open;
};

/// Draws one state in both colour schemes, each on a desktop of its own.
void draw(const tessel::ShownState& shown, const std::string& directory, const std::string& language,
          platform::ImageRenderer& renderer) {
    platform::simulated::Desktop desktop;
    desktop.mainBundle.preferredLocalizations = {language};
    desktop.mainBundle.infoDictionary = {{"CFBundleShortVersionString", TESSEL_VERSION}};
    platform::Platform table = platform::current();
    table.imageRenderer = &renderer;
    const platform::Installation installation(table);
    translateNames(desktop);
    shown.prepare(desktop);
    corvid::HotKeyDispatcher dispatcher;
    tessel::AppState state(desktop.standardUserDefaults, false, dispatcher);
    shown.live(desktop, state);
    translateStatus(desktop, state);
    // Not as the program's own pictures: those show other keys than the user's keyboard has.
    for (const corvid::Snapshot::Scheme& scheme : corvid::Snapshot::schemes) {
        const std::string name = "menu-" + language + "-" + std::string(shown.name) + "-" + std::string(scheme.name);
        corvid::Snapshot::write(ViewOfState(state, shown), scheme.options,
                                std::filesystem::path(directory) / (name + ".png"));
    }
}

std::unique_ptr<QQuickItem> makePicture(const platform::View& view, QQmlEngine& engine,
                                        corvid::toolkit::PopoverWindow* /*popover*/) {
    const auto* shown = dynamic_cast<const ViewOfState*>(&view);
    if (shown == nullptr) {
        return nullptr;
    }
    if (shown->open >= tessel::OpenPart::chooser) {
        return tessel::makeChooser(engine, shown->open);
    }
    std::unique_ptr<QQuickItem> item = tessel::makeItem(shown->menu, engine);
    tessel::openLater(*item, shown->open);
    return item;
}

} // namespace

/// usage: state-pictures DIRECTORY [LANGUAGE]
int main(int count, char** arguments) {
    if (count < 2 || count > 3) {
        std::fputs("usage: state-pictures DIRECTORY [LANGUAGE]\n", stderr);
        return EXIT_FAILURE;
    }
    const std::string language = count > 2 ? arguments[2] : "en";
    NoLoop loop;
    platform::simulated::Desktop desktop;
    qputenv("QT_SCALE_FACTOR", "2");
    const auto toolkit = corvid::toolkit::QuickToolkit::start({.mainLoop = loop,
                                                               .mainActor = desktop.mainActor,
                                                               .appearance = desktop.appearance,
                                                               .ownWindows = nullptr,
                                                               .screens = desktop.screens,
                                                               .sessionLock = nullptr,
                                                               .languages = {language}},
                                                              makePicture);
    // Qt has no country for the artificial right-to-left language, and so no direction either.
    if (language == "xb") {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    }
    for (const tessel::ShownState& shown : tessel::shownStates()) {
        draw(shown, arguments[1], language, toolkit->imageRenderer());
    }
    return EXIT_SUCCESS;
}
