#include "Platform/X11/Desktop.h"

#include "Platform/Linux/Log/Log.h"
#include "Platform/X11/Event.h"
#include "Platform/X11/OpenboxHolders.h"
#include "Platform/X11/PropertyValue.h"
#include "Platform/X11/XkbProtocol.h"

#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace platform::x11 {

namespace {

// A new keyboard or layout causes a burst of events; one reading after the burst serves them all.
constexpr std::chrono::milliseconds keyboardCalm{50};
// A window manager announces itself before it has grabbed its keys.
constexpr std::chrono::milliseconds windowManagerCalm{500};
// The delay before a repeated request to a server that did not reply in time.
constexpr std::chrono::seconds untilNextQuestion{1};
constexpr std::chrono::milliseconds leeway{10};
// The holder of a borrowed key may grab it anew without any event.
constexpr std::chrono::seconds betweenBorrowedRenewals{2};
constexpr std::chrono::seconds borrowedLeeway{10};

/// Queries all extensions at once, so that the first use of each need not wait.
void prefetchExtensions(Connection& connection) {
    for (xcb_extension_t* extension : {&xcb_xkb_id, &xcb_randr_id, &xcb_res_id, &xcb_input_id}) {
        xcb_prefetch_extension_data(connection.raw(), extension);
    }
}

/// Whether clients may send an event of this kind: a window manager's report of a window's position (ICCCM 4.1.5), and
/// clicks that a panel forwards to its items. Any other event counts only from the server; a key press above all.
bool mayBeSent(const xcb_generic_event_t& event) {
    const std::uint8_t kind = eventKind(event);
    return kind == XCB_CLIENT_MESSAGE || kind == XCB_CONFIGURE_NOTIFY || kind == XCB_BUTTON_PRESS;
}

} // namespace

std::expected<std::unique_ptr<Desktop>, std::string> Desktop::open(linux::MainLoop& mainLoop, TilingManagers tiling) {
    const char* display = std::getenv("DISPLAY");
    if (display == nullptr || *display == '\0') {
        return std::unexpected("there is no X display to work on (DISPLAY is not set)");
    }
    mainLoop.turnDeadline().begin(linux::TurnDeadline::startLimit);
    auto connection = Connection::open(display, mainLoop.turnDeadline());
    if (!connection) {
        return std::unexpected("cannot use the X display " + std::string(display) + ": " + connection.error());
    }
    prefetchExtensions(*connection);
    if (const auto prepared = prepareKeyboard(*connection); !prepared) {
        return std::unexpected("cannot use the X display " + std::string(display) + ": " + prepared.error());
    }
    return std::make_unique<Desktop>(mainLoop, *std::move(connection), std::move(tiling));
}

Desktop::Desktop(linux::MainLoop& mainLoop, Connection opened, TilingManagers tilingManagers)
    : mainLoop(mainLoop)
    , connection(std::move(opened))
    , tiling(std::move(tilingManagers))
    , windows(connection, turn, placement, managedWindows, [this] { return obstacle(); })
    , own(connection, selection, turn, mainLoop)
    , processes(
          connection, turn, mainLoop, managedWindows, deliveries,
          [this](xcb_window_t window, const ManagedWindow& facts) { observers.windowBecameReady(window, facts); }) {
    // The second brings announcements, such as a panel's.
    selection.select(connection.root(), XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    tray.start();
    rootChildren.follow(true);
    windowManager.renew();
    // The one that is there from the beginning has come to rest.
    settling.reset();
    holders.add({.windowManager = "Openbox", .holders = std::make_unique<OpenboxHolders>(mainLoop, connection)});
    if (!hotKeys.followKeyboard()) {
        followKeyboardIn(untilNextQuestion);
    }
    keyboardEvent = xcb_get_extension_data(connection.raw(), &xcb_xkb_id)->first_event;
    watch = mainLoop.watch(connection.descriptor(), [this] { return finishTurn(); }, [this] { serveEvents(); });
}

std::string Desktop::sessionName() {
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen) == 0) {
        return {};
    }
    const Owned<char> owned(host);
    return std::string(host) + ":" + std::to_string(display) + "." + std::to_string(screen);
}

std::string_view Desktop::name() const {
    const TilingManager* inCharge = turn.tilingManager();
    return inCharge == nullptr ? "X11" : inCharge->name();
}

std::optional<AccessObstacle> Desktop::obstacle() {
    // Events do not report every end, nor every begin. The next turn asks.
    windowManager.lookAgain();
    if (!windowManager.present().isPresent) {
        return AccessObstacle{.kind = AccessObstacle::Kind::windowManager};
    }
    TilingManager* inCharge = turn.tilingManager();
    if (inCharge != nullptr && !inCharge->isReachable(connection)) {
        return AccessObstacle{.kind = AccessObstacle::Kind::silentWindowManager,
                              .desktop = std::string(inCharge->name())};
    }
    return std::nullopt;
}

std::string Desktop::caution() {
    const auto& left = placement.leftAlone();
    const WindowFacts* facts = left ? turn.windowWithFrame(left->window) : nullptr;
    // It may have moved since: some window managers take their time.
    if (facts == nullptr || facts->geometry != left->geometry) {
        return {};
    }
    return "the last window that was to be moved is laid out by its window manager, which moves it for no program";
}

void Desktop::followApplications(linux::ApplicationIdentification& identification, ApplicationCatalogue& catalogue) {
    processes.start(identification, catalogue);
    turn.begin();
    linux::TurnDeadline& deadline = connection.deadline();
    deadline.begin(linux::TurnDeadline::startLimit);
    renewGuess();
    // All at once, so that the next question is answered with all of them.
    while (managedWindows.hasWork()) {
        turn.begin();
        deadline.begin(linux::TurnDeadline::startLimit);
        managedWindows.work();
    }
    // The objects that are made next register keys and look at the screens.
    deadline.begin(linux::TurnDeadline::startLimit);
}

bool Desktop::finishTurn() {
    placement.send();
    turn.begin();
    // A turn that has waited already leaves the reading, and the whole limit for it, to the next one.
    readsFirst = isReadingDue() && connection.deadline().hasBegun();
    if (!readsFirst) {
        readChanges();
        turn.begin();
    }
    keepBorrowed();
    connection.flush();
    // A broken connection is served as well: that is how the loop comes to know of it.
    return connection.hasPendingEvents() || isReadingDue() || connection.isBroken();
}

void Desktop::readChanges() {
    windowManager.renew();
    if (guessIsStale) {
        renewGuess();
    }
    if (managedWindows.hasWork()) {
        managedWindows.work();
    }
}

void Desktop::renewGuess() {
    guessIsStale = false;
    if (const std::vector<xcb_window_t>* clients = turn.renewGuess()) {
        managedWindows.follow(*clients);
    } else {
        guessRetry = mainLoop.schedule(mainLoop.now() + untilNextQuestion, leeway, [this] { guessIsStale = true; });
    }
}

void Desktop::serveEvents() {
    // Otherwise many presses that wait would put the reading off for as long as they come.
    bool hasTime = !std::exchange(readsFirst, false);
    while (const Owned<xcb_generic_event_t> event = hasTime ? connection.nextEvent() : nullptr) {
        turn.begin();
        handle(*event);
        placement.send();
        // Each event that waits has a turn of its own, and other sources are served in between: many presses may have
        // come while a window manager hung.
        hasTime = !connection.deadline().hasBegun();
    }
    if (connection.isBroken()) {
        linux::logToStandardError("the X server is gone");
        mainLoop.end(EXIT_FAILURE);
    }
}

void Desktop::handle(const xcb_generic_event_t& event) {
    if (isSentByClient(event) && !mayBeSent(event)) {
        return;
    }
    const std::uint8_t kind = eventKind(event);
    if (const auto* change = eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY)) {
        handlePropertyChange(*change);
    } else if (kind == XCB_MAPPING_NOTIFY || kind == keyboardEvent) {
        followKeyboardIn(keyboardCalm);
    }
    hotKeys.handle(event);
    own.handle(event);
    settings.handle(event);
    tray.handle(event);
    managedWindows.handle(event);
    windowManager.handle(event);
    if (rootChildren.isChange(event)) {
        guessIsStale = true;
        windowManager.lookAgain();
    }
}

void Desktop::handlePropertyChange(const xcb_property_notify_event_t& event) {
    if (event.window != connection.root()) {
        return;
    }
    const auto is = [&](Atom atom) { return event.atom == connection.atom(atom); };
    if (is(Atom::netActiveWindow) || is(Atom::netClientList) || is(Atom::netCurrentDesktop)) {
        guessIsStale = true;
    } else if (is(Atom::netSupportingWmCheck) || is(Atom::i3SocketPath)) {
        settleSoon();
    }
}

void Desktop::followKeyboardIn(Duration delay) {
    if (!keyboardFollow) {
        keyboardFollow = mainLoop.schedule(mainLoop.now() + delay, leeway, [this] {
            keyboardFollow.reset();
            if (!hotKeys.followKeyboard()) {
                followKeyboardIn(untilNextQuestion);
            } else if (hotKeys.renewBorrowed()) {
                // Window managers grab their keys anew at such a notice as well, some of them later than this.
                settleSoon();
            }
        });
    }
}

void Desktop::windowManagerChanged() {
    const WindowManager& present = windowManager.present();
    placement.setWindowManager(present);
    turn.setWindowManager(present);
    rootChildren.follow(!present.capabilities.listsWindows);
    guessIsStale = true;
    holders.setWindowManager(present.name);
    const auto inCharge =
        std::ranges::find(tiling, std::string_view(present.name), [](const auto& each) { return each->name(); });
    turn.setTilingManager(inCharge == tiling.end() ? nullptr : inCharge->get());
    settleSoon();
}

void Desktop::settleSoon() {
    // Begun anew with every notice. A window manager that is replaced or restarts is away for a moment only, and one
    // that starts takes its own keys first. Keys registered at once would be taken from the window manager.
    settling = mainLoop.schedule(mainLoop.now() + windowManagerCalm, leeway, [this] {
        settling.reset();
        hotKeys.renew();
        announceAccess();
    });
}

void Desktop::announceAccess() {
    // In a turn of its own, with the time that a turn has: observers register keys.
    accessNotice = mainLoop.schedule(mainLoop.now(), {}, [this] {
        windows.notificationCenter()->post({.name = std::string(AccessNotification::didChange), .userInfo = {}});
    });
}

void Desktop::keepBorrowed() {
    if (!borrowedRenewal && hotKeys.hasBorrowed()) {
        borrowedRenewal = mainLoop.schedule(mainLoop.now() + betweenBorrowedRenewals, borrowedLeeway, [this] {
            borrowedRenewal.reset();
            hotKeys.renewBorrowed();
        });
    }
}

} // namespace platform::x11
