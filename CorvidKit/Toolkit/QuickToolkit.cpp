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

std::unique_ptr<QuickToolkit> QuickToolkit::start(const Dependencies& dependencies, const ViewBuilder& build) {
    choosePlatform(dependencies.ownWindows);
    auto toolkit = std::make_unique<QuickToolkit>(dependencies, build);
    if (dependencies.ownWindows != nullptr && QGuiApplication::platformName() == QStringLiteral("offscreen")) {
        return nullptr;
    }
    return toolkit;
}

QuickToolkit::QuickToolkit(const Dependencies& dependencies, const ViewBuilder& build)
    : dependencies(dependencies) {
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
    if (dependencies.ownWindows == nullptr) {
        Environment::setFontFamily(keyFontFamily);
    }
    translators = loadTranslations(dependencies.languages);
    engine = std::make_unique<QQmlEngine>();
    engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    followAppearance();
    hanging = std::make_unique<PopoverWindow>(dependencies, *engine, build);
    renderer = std::make_unique<ImageRenderer>(build);
}

QuickToolkit::~QuickToolkit() {
    dependencies.appearance.follow([] {});
}

void QuickToolkit::followAppearance() {
    const auto take = [this] {
        Environment& environment = Environment::of(*engine);
        environment.setDark(dependencies.appearance.colorScheme() == platform::ColorScheme::dark);
        environment.setReducesMotion(dependencies.appearance.reducesMotion());
    };
    if (dependencies.ownWindows != nullptr) {
        dependencies.appearance.follow(take);
    }
    take();
}

void QuickToolkit::run() {
    const LoopPump pump(dependencies.mainLoop);
    QGuiApplication::exec();
}

} // namespace corvid::toolkit
