#include "CorvidKit/Toolkit/QuickToolkit.h"

#include "CorvidKit/Components/Environment.h"
#include "CorvidKit/Components/KeyFontFamily.h"
#include "CorvidKit/Toolkit/Fonts.h"
#include "CorvidKit/Toolkit/Translations.h"

#include <QIcon>
#include <QLocale>
#include <QLoggingCategory>
#include <QQuickWindow>
#include <clocale>

namespace corvid::toolkit {

namespace {

// Qt wants a program's name, and may take arguments away that are its own.
char programName[] = "tessel";                     // NOLINT(*-avoid-c-arrays)
char* programArguments[] = {programName, nullptr}; // NOLINT(*-avoid-c-arrays)
int programArgumentCount = 1;

/// What Qt reads from the environment has to be there before its application object is made.
void prepareEnvironment(const Surroundings& surroundings) {
    using Protocol = platform::OwnWindows::Protocol;
    // The second platform keeps Qt from stopping the process where the first cannot be had.
    if (surroundings.ownWindows == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_SCALE_FACTOR", QByteArray::number(surroundings.pictureScale));
    } else {
        const bool isWayland = surroundings.ownWindows->protocol() == Protocol::wayland;
        qputenv("QT_QPA_PLATFORM", isWayland ? "wayland;offscreen" : "xcb;offscreen");
    }
    // A session manager knows of programs by their windows; ours comes and goes.
    qunsetenv("SESSION_MANAGER");
    qunsetenv("QT_STYLE_OVERRIDE");
}

} // namespace

std::unique_ptr<QuickToolkit> QuickToolkit::start(const Surroundings& surroundings, const ViewBuilder& build,
                                                  const OpenPanelFactory& makePanel) {
    prepareEnvironment(surroundings);
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
    QGuiApplication::setWindowIcon(QIcon::fromTheme(QGuiApplication::desktopFileName()));
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
