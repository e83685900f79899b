#include "Tessel/Menu/ApplicationPanel.h"

#include "CorvidKit/Toolkit/ItemFile.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <utility>

namespace tessel {

namespace {

// A height of whole rows.
constexpr QSize usualSize(400, 474);
constexpr QSize smallestSize(300, 240);

} // namespace

ApplicationPanel::ApplicationPanel(QQmlEngine& engine, corvid::toolkit::PopoverWindow& popover)
    : engine(engine)
    , popover(popover) {
}

ApplicationPanel::~ApplicationPanel() {
    if (window) {
        window->removeEventFilter(this);
    }
}

void ApplicationPanel::runModal(const platform::OpenPanelOptions& options, Completion completion) {
    cancel();
    auto newList = std::make_unique<ApplicationList>(installedApplications());
    std::unique_ptr<QQuickItem> newContent =
        corvid::toolkit::itemFromFile(engine, QUrl(QStringLiteral("qrc:/qt/qml/Tessel/ApplicationChooser.qml")),
                                      {{"applications", QVariant::fromValue(newList.get())},
                                       {"takesSeveral", options.allowsMultipleSelection},
                                       {"prompt", QCoreApplication::translate("Tessel", options.prompt.c_str())}});
    if (!newContent) {
        completion({});
        return;
    }
    waiting = std::move(completion);
    list = std::move(newList);
    content = std::move(newContent);
    window = std::make_unique<QQuickWindow>();
    window->setFlags(Qt::Dialog);
    window->setTitle(QCoreApplication::translate("Tessel", "Choose Applications"));
    // The popover needs none, and finding one takes a while.
    window->setIcon(QIcon::fromTheme(QGuiApplication::desktopFileName()));
    window->setMinimumSize(smallestSize);
    window->resize(usualSize);
    window->installEventFilter(this);
    content->setParentItem(window->contentItem());
    content->setSize(window->size());
    connect(content.get(), SIGNAL(confirmed()), this, SLOT(confirm()), Qt::QueuedConnection);
    connect(content.get(), SIGNAL(cancelled()), this, SLOT(cancel()), Qt::QueuedConnection);
    // It would close anyway when the panel takes the keyboard.
    popover.performClose();
    window->show();
    window->requestActivate();
    content->forceActiveFocus(Qt::ActiveWindowFocusReason);
}

void ApplicationPanel::confirm() {
    if (list) {
        finish(list->chosenLocations());
    }
}

void ApplicationPanel::cancel() {
    finish({});
}

void ApplicationPanel::finish(std::vector<std::filesystem::path> chosen) {
    Completion completion = std::exchange(waiting, nullptr);
    if (!completion) {
        return;
    }
    window->removeEventFilter(this);
    window->hide();
    // Their own signal may have led to this call.
    content.release()->deleteLater();
    list.release()->deleteLater();
    window.release()->deleteLater();
    const bool hasChosen = !chosen.empty();
    completion(std::move(chosen));
    if (hasChosen) {
        popover.showAgain();
    }
}

bool ApplicationPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && content) {
        content->setSize(window->size());
    }
    if (event->type() == QEvent::Close) {
        cancel();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tessel
