#include "CorvidKit/Toolkit/QuickToolkit.h"

#include "CorvidKit/Components/Environment.h"
#include "CorvidKit/Components/KeyFontFamily.h"
#include "CorvidKit/Toolkit/Fonts.h"
#include "CorvidKit/Toolkit/Translations.h"

#include <QLocale>
#include <QLoggingCategory>
#include <QQuickWindow>
#include <clocale>

namespace corvid::toolkit {

namespace {

// The command line that Qt gets; Qt may remove its own arguments from it. The second platform keeps Qt from stopping
// the process where the first cannot be had. NOLINTBEGIN(*-avoid-c-arrays)
char programName[] = "tessel";
char platformOption[] = "-platform";
char onX11[] = "xcb;offscreen";
char onWayland[] = "wayland;offscreen";
char inPictures[] = "offscreen";
char* programArguments[] = {programName, platformOption, inPictures, nullptr};
int programArgumentCount = 3;
// NOLINTEND(*-avoid-c-arrays)

/// Qt would also take the platform from the environment, in which nothing may be written any more.
void choosePlatform(const platform::OwnWindows* ownWindows) {
    using Protocol = platform::OwnWindows::Protocol;
    if (ownWindows != nullptr) {
        programArguments[2] = ownWindows->protocol() == Protocol::wayland ? onWayland : onX11;
    }
}

} // namespace

std::unique_ptr<QuickToolkit> QuickToolkit::start(const Surroundings& surroundings, const ViewBuilder& build,
                                                  const OpenPanelFactory& makePanel) {
    choosePlatform(surroundings.ownWindows);
    auto toolkit = std::make_unique<QuickToolkit>(surroundings, build, makePanel);
    if (surroundings.ownWindows != nullptr && QGuiApplication::platformName() == QStringLiteral("offscreen")) {
        return nullptr;
    }
    return toolkit;
}

QuickToolkit::QuickToolkit(const Surroundings& surroundings, const ViewBuilder& build,
                           const OpenPanelFactory& makePanel)
    : surroundings(surroundings) {
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    // Qt 6.8 complains where a compositor says twice that a window has lost the keyboard, as GNOME Shell and sway do.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.wayland.textinput.warning=false"));
    application = std::make_unique<QGuiApplication>(programArgumentCount, programArguments);
    // Qt takes over all of the user's locale; numbers stay as programs write them.
    std::setlocale(LC_NUMERIC, "C"); // NOLINT(concurrency-mt-unsafe)
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tessel"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.corvid.Tessel"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    loadFonts();
    if (surroundings.ownWindows == nullptr) {
        Environment::setFontFamily(keyFontFamily);
    }
    translators = loadTranslations(surroundings.languages);
    engine = std::make_unique<QQmlEngine>();
    engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    followAppearance();
    hanging = std::make_unique<PopoverWindow>(surroundings, *engine, build);
    // The popover would close anyway when the panel takes the keyboard; it comes back to show what was added.
    panel = makePanel(*engine, {.opening = [this] { hanging->performClose(); },
                                .closed =
                                    [this](bool hasChosen) {
                                        if (hasChosen) {
                                            hanging->showAgain();
                                        }
                                    }});
    renderer = std::make_unique<ImageRenderer>(build);
}

QuickToolkit::~QuickToolkit() {
    surroundings.appearance.follow([] {});
}

void QuickToolkit::followAppearance() {
    const auto take = [this] {
        Environment& environment = Environment::of(*engine);
        environment.setDark(surroundings.appearance.colorScheme() == platform::ColorScheme::dark);
        environment.setReducesMotion(surroundings.appearance.reducesMotion());
    };
    if (surroundings.ownWindows != nullptr) {
        surroundings.appearance.follow(take);
    }
    take();
}

void QuickToolkit::run() {
    const LoopPump pump(surroundings.mainLoop);
    QGuiApplication::exec();
}

} // namespace corvid::toolkit
