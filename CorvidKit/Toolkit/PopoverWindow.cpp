#include "CorvidKit/Toolkit/PopoverWindow.h"

#include "CorvidKit/Components/Environment.h"
#include "CorvidKit/Toolkit/ItemFile.h"
#include "CorvidKit/Toolkit/PopoverPlacement.h"
#include "CorvidKit/Toolkit/ScreenPixels.h"
#include "Platform/MainActor.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <cmath>

namespace corvid::toolkit {

namespace {

const QUrl frameFile(QStringLiteral("qrc:/qt/qml/CorvidKit/PopoverFrame.qml"));

/// Where every window is managed, the press on the panel that is to close the popover takes the keyboard from it first,
/// and the click that it becomes asks for it again. A click takes no longer than this.
constexpr auto clickTime = std::chrono::milliseconds(300);

bool movesFocus(int key) {
    switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return true;
    default:
        return false;
    }
}

} // namespace

PopoverWindow::PopoverWindow(Surroundings surroundings, QQmlEngine& engine, ViewBuilder build)
    : surroundings(std::move(surroundings))
    , engine(engine)
    , build(std::move(build)) {
}

PopoverWindow::~PopoverWindow() {
    if (window) {
        window->removeEventFilter(this);
    }
    dropWindow();
}

void PopoverWindow::setContentView(std::shared_ptr<const platform::View> newView) {
    performClose();
    dropWindow();
    view = std::move(newView);
}

void PopoverWindow::dropWindow() {
    if (frame) {
        // It changes its size as it loses its content; there is nothing to be placed any more.
        frame->disconnect(this);
    }
    content.reset();
    frame.reset();
    window.reset();
}

bool PopoverWindow::isManaged() const {
    return surroundings.ownWindows->protocol() == platform::OwnWindows::Protocol::wayland;
}

bool PopoverWindow::isShown() const {
    return window && window->isVisible();
}

bool PopoverWindow::prepare() {
    if (window) {
        return true;
    }
    if (!view) {
        return false;
    }
    window = std::make_unique<QQuickWindow>();
    window->setFlags(Qt::Tool | Qt::FramelessWindowHint |
                     (isManaged() ? Qt::WindowFlags() : Qt::WindowFlags(Qt::BypassWindowManagerHint)));
    window->setTitle(QGuiApplication::applicationDisplayName());
    window->setColor(Qt::transparent);
    // Its contents are kept while it is hidden, so that it opens again at once.
    window->setPersistentSceneGraph(true);
    window->installEventFilter(this);
    connect(window.get(), &QWindow::activeChanged, this, &PopoverWindow::followKeyboard);
    if (!makeFrame()) {
        window.reset();
        return false;
    }
    return true;
}

bool PopoverWindow::makeFrame() {
    content = build(*view, engine);
    frame = itemFromFile(engine, frameFile);
    if (!content || !frame) {
        return false;
    }
    frame->setParentItem(window->contentItem());
    frame->setProperty("content", QVariant::fromValue(content.get()));
    connect(frame.get(), SIGNAL(dismissed()), this, SLOT(closeAsAsked()));
    connect(frame.get(), &QQuickItem::implicitHeightChanged, this, &PopoverWindow::place);
    connect(frame.get(), &QQuickItem::implicitWidthChanged, this, &PopoverWindow::place);
    return true;
}

PopoverWindow::Anchor PopoverWindow::withPointer(const Anchor& wanted) const {
    if (!wanted.rect && wanted.isAtPointer) {
        if (const std::optional<CGPoint> pointer = surroundings.ownWindows->pointer()) {
            return {.rect = CGRect{*pointer, {0, 0}}, .isAtPointer = true};
        }
    }
    return wanted;
}

void PopoverWindow::show(const Anchor& newAnchor, Edge /*preferredEdge*/) {
    const auto now = surroundings.mainActor.now();
    if (isShown() || (keyboardLoss && now - *keyboardLoss < clickTime) || surroundings.ownWindows == nullptr) {
        return;
    }
    // Asked before anything is made: that may take all the time that one turn has for questions to the desktop.
    anchor = withPointer(newAnchor);
    activeScreen = anchor->rect ? std::nullopt : surroundings.ownWindows->activeScreen();
    screens = surroundings.screens.screens();
    const bool isBlended = surroundings.ownWindows->areBlended();
    if (!prepare()) {
        return;
    }
    frame->setProperty("isBlended", isBlended);
    frame->setProperty("isAnimated", animates);
    Environment::of(engine).setUsingKeyboard(false);
    if (content->metaObject()->indexOfMethod("appear()") >= 0) {
        QMetaObject::invokeMethod(content.get(), "appear");
    }
    window->create();
    place();
    QMetaObject::invokeMethod(frame.get(), "appear");
    window->show();
    place();
    holdPointer();
    looks = 0;
    expectKeyboard();
}

void PopoverWindow::showAgain() {
    if (anchor) {
        show(*anchor, Edge::minY);
        makeKey();
    }
}

void PopoverWindow::showAnew() {
    const bool wasShown = isShown();
    performClose();
    dropWindow();
    if (wasShown) {
        showAgain();
    }
}

void PopoverWindow::place() {
    if (!window || !window->handle()) {
        return;
    }
    followScale();
    QSizeF size(frame->implicitWidth(), frame->implicitHeight());
    const double margin = frame->property("margin").toDouble();
    if (std::vector<platform::Screen> present = surroundings.screens.screens(); !present.empty()) {
        screens = std::move(present);
    }
    const double primaryTop = screens.empty() ? 0 : screens.front().frame.maxY();
    std::vector<platform::Screen> ordered = screens;
    if (const auto active = std::ranges::find(ordered, activeScreen, &platform::Screen::frame);
        active != ordered.end()) {
        std::rotate(ordered.begin(), active, active + 1);
    }
    // Qt's points are the desktop's own, unless that counts in pixels.
    const double ratio = isManaged() ? 1 : window->devicePixelRatio();
    const CGSize plate{(size.width() - 2 * margin) * ratio, (size.height() - 2 * margin) * ratio};
    const std::optional<CGRect> found = popoverFrame(*anchor, plate, ordered);
    if (found && found->size.height < plate.height) {
        size.setHeight(std::floor(found->size.height / ratio) + 2 * margin);
    }
    frame->setSize(size);
    if (isManaged()) {
        // A window of one size only is not tiled.
        window->setMinimumSize(size.toSize());
        window->setMaximumSize(size.toSize());
    }
    if (isManaged() || !found) {
        window->resize(size.toSize());
    }
    if (!found) {
        return;
    }
    // Upside down: windows are placed by their top-left corner, y down from the top of the primary screen.
    const CGPoint topLeft{std::round(found->minX() - margin * ratio),
                          std::round(primaryTop - found->maxY() - margin * ratio)};
    if (!isManaged()) {
        window->setGeometry(QRect(fromPixels(topLeft), size.toSize()));
    }
    surroundings.ownWindows->place(window->winId(), window->title().toStdString(), topLeft);
}

void PopoverWindow::followScale() {
    if (QScreen* screen = window->screen(); screen != nullptr && screen != followed) {
        disconnect(scaleFollowing);
        followed = screen;
        // Not before the toolkit has dealt with the change itself.
        scaleFollowing =
            connect(screen, &QScreen::logicalDotsPerInchChanged, this, &PopoverWindow::showAnew, Qt::QueuedConnection);
    }
}

void PopoverWindow::makeKey() {
    if (!isShown()) {
        return;
    }
    surroundings.ownWindows->takeKeyboard(window->winId());
    frame->forceActiveFocus(Qt::PopupFocusReason);
}

void PopoverWindow::holdPointer() {
    if (behavior != Behavior::transient || isManaged()) {
        return;
    }
    pointerHold.begin();
    if (surroundings.sessionLock != nullptr) {
        lockWatch = surroundings.sessionLock->watch([this] { performClose(); });
    }
}

void PopoverWindow::followKeyboard() {
    // Qt learns late that a window has lost the keyboard. The event may date from before the window was closed and
    // opened again; then the window has the keyboard by now, or is about to.
    if (!window->isActive() && isShown() && behavior == Behavior::transient &&
        !surroundings.ownWindows->hasKeyboard(window->winId())) {
        performClose();
        if (isManaged()) {
            keyboardLoss = surroundings.mainActor.now();
        }
    }
}

void PopoverWindow::expectKeyboard() {
    // By then it has been drawn for the first time, which is when it gets the keyboard, on a slow machine too.
    constexpr auto pause = std::chrono::seconds(1);
    constexpr int mostLooks = 3;
    if (!isManaged() || behavior != Behavior::transient || ++looks > mostLooks) {
        return;
    }
    pendingLook = surroundings.mainActor.schedule(surroundings.mainActor.now() + pause, pause / 10, [this] {
        if (surroundings.ownWindows->isKeyboardElsewhere()) {
            performClose();
        } else {
            expectKeyboard();
        }
    });
}

void PopoverWindow::performClose() {
    if (!isShown()) {
        return;
    }
    pendingLook.reset();
    lockWatch.reset();
    pointerHold.end();
    window->hide();
}

bool PopoverWindow::isOutside(const QPointF& position) const {
    const double margin = frame->property("margin").toDouble();
    const QRectF plate = QRectF(QPointF(), QSizeF(window->size())).adjusted(margin, margin, -margin, -margin);
    return !plate.contains(position);
}

bool PopoverWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->isInputEvent()) {
        pointerHold.noticeInput();
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (behavior == Behavior::transient && isOutside(static_cast<QMouseEvent*>(event)->position())) {
            performClose();
            return true;
        }
        break;
    case QEvent::KeyPress:
        if (movesFocus(static_cast<QKeyEvent*>(event)->key())) {
            Environment::of(engine).setUsingKeyboard(true);
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace corvid::toolkit
