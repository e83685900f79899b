#pragma once

#include "CorvidKit/Toolkit/PointerHold.h"
#include "CorvidKit/Toolkit/Surroundings.h"
#include "CorvidKit/Toolkit/ViewBuilder.h"
#include "CorvidKitCore/Geometry.h"
#include "Platform/MainActor.h"
#include "Platform/Popover.h"
#include "Platform/Screens.h"
#include "Platform/SessionLock.h"

#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QScreen>
#include <memory>
#include <optional>
#include <vector>

namespace corvid::toolkit {

/// The popover as a window without a frame, above all others and at exactly its place.
///
/// On X11 no window manager manages it, and it is gone with the next press beside it. So that the session can be
/// locked, it is gone when that begins, and lets go of the pointer after a while without input. On Wayland, where all
/// windows are managed and none can hold the pointer, the desktop puts it in its place, and it is gone when it loses
/// the keyboard.
class PopoverWindow final : public QObject, public platform::Popover {
    Q_OBJECT

public:
    PopoverWindow(Surroundings surroundings, QQmlEngine& engine, ViewBuilder build);
    ~PopoverWindow() override;

    void setContentView(std::shared_ptr<const platform::View> view) override;

    [[nodiscard]] bool hasContentView() const override { return view != nullptr; }

    void setBehavior(Behavior newBehavior) override { behavior = newBehavior; }

    void setAnimates(bool newAnimates) override { animates = newAnimates; }

    [[nodiscard]] bool isShown() const override;
    void show(const Anchor& newAnchor, Edge preferredEdge) override;
    void makeKey() override;
    void performClose() override;

    /// Where it was last.
    void showAgain();

    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void closeAsAsked() { performClose(); }

    /// The toolkit goes on to draw a window in the scale in which it was made.
    void showAnew();

private: // NOLINT(readability-redundant-access-specifiers): those before are slots.
    void dropWindow();
    [[nodiscard]] bool isManaged() const;
    [[nodiscard]] bool prepare();
    [[nodiscard]] Anchor withPointer(const Anchor& wanted) const;
    [[nodiscard]] bool makeFrame();
    void place();
    void followScale();
    void holdPointer();
    void followKeyboard();
    /// Where the compositor gives the keyboard, another window may have taken it from a new one before the toolkit got
    /// either event. The toolkit then reports nothing, or takes the window for the active one.
    void expectKeyboard();
    [[nodiscard]] bool isOutside(const QPointF& position) const;

    Surroundings surroundings;
    QQmlEngine& engine;
    ViewBuilder build;
    std::shared_ptr<const platform::View> view;
    Behavior behavior = Behavior::applicationDefined;
    bool animates = false;
    /// Where it was shown last.
    std::optional<Anchor> anchor;
    /// The screen that was worked on then, where it hangs at nothing.
    std::optional<CGRect> activeScreen;
    /// As they were when the desktop last answered.
    std::vector<platform::Screen> screens;
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<QQuickItem> frame;
    std::unique_ptr<QQuickItem> content;
    PointerHold pointerHold{surroundings.mainActor,
                            [this](bool holds) { return window && window->setMouseGrabEnabled(holds); }};
    std::unique_ptr<platform::LockWatch> lockWatch;
    /// Whose font scale is followed.
    QPointer<QScreen> followed;
    QMetaObject::Connection scaleFollowing;
    std::unique_ptr<platform::ScheduledWork> pendingLook;
    int looks = 0;
    /// When it was last closed because a managed window has lost the keyboard.
    std::optional<platform::Instant> keyboardLoss;
};

} // namespace corvid::toolkit
