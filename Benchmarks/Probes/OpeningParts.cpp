// The parts of the first opening of the popover, in their order: a line for each, with its name and the milliseconds of
// processor time that all threads took. It shows the same views over a desktop in memory, in a process that has drawn
// nothing before.

#include "Benchmarks/Probes/Probe.h"
#include "CorvidKit/HotKeys.h"
#include "CorvidKit/Toolkit/Fonts.h"
#include "CorvidKit/Toolkit/Translations.h"
#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/Menu/MenuViewItem.h"
#include "Tessel/MenuView.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <cstdio>
#include <ctime>
#include <memory>

namespace {

double processorMilliseconds() {
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    constexpr double secondsToMilliseconds = 1e3;
    constexpr double nanosecondsToMilliseconds = 1e-6;
    return static_cast<double>(now.tv_sec) * secondsToMilliseconds +
           static_cast<double>(now.tv_nsec) * nanosecondsToMilliseconds;
}

/// Says what was spent since the last part.
void endPart(const char* name) {
    static double before = 0;
    const double now = processorMilliseconds();
    std::printf("%s\t%.2f\n", name, now - before);
    before = processorMilliseconds();
}

} // namespace

int main(int argumentCount, char** arguments) {
    endPart("libraries");
    platform::simulated::Desktop desktop;
    corvid::InMemoryPreferenceStore store{{}};
    corvid::HotKeyDispatcher dispatcher;
    tessel::AppState state(store, false, dispatcher);
    const tessel::MenuView view(state, tessel::MenuTab::shortcuts);
    endPart("(the state)");

    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argumentCount, arguments);
    const auto translators = corvid::toolkit::loadTranslations({"en"});
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    endPart("toolkit");

    corvid::toolkit::loadFonts();
    const double width = QFontMetricsF(QGuiApplication::font()).horizontalAdvance(QStringLiteral("Tessel"));
    endPart("fonts");

    QQuickWindow window;
    const std::unique_ptr<QQuickItem> item = tessel::makeItem(view, engine);
    if (width <= 0 || !item) {
        benchmarks::fail("there is nothing to draw");
    }
    item->setParentItem(window.contentItem());
    item->setSize({item->implicitWidth(), item->implicitHeight()});
    window.resize(item->size().toSize());
    endPart("views");

    bool isDrawn = false;
    QObject::connect(&window, &QQuickWindow::frameSwapped, [&isDrawn] { isDrawn = true; });
    window.show();
    while (!isDrawn) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    endPart("picture");
    return 0;
}
