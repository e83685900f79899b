#include "Platform/X11/Placement.h"

#include "Platform/X11/ClientRequest.h"
#include "Platform/X11/Event.h"
#include "Platform/X11/ScopedPropertyWatch.h"
#include "Platform/X11/SizeHints.h"

#include <chrono>
#include <utility>

namespace platform::x11 {

namespace {

// The time for a client that draws its own shadow to change it; 8 to 75 ms have been measured.
constexpr std::chrono::milliseconds shadowPatience{100};
// The time for a window manager that handles requests in its own order; 8 to 26 ms have been measured.
constexpr std::chrono::milliseconds configurePatience{100};
constexpr std::uint32_t stateRemove = 0;
constexpr std::uint32_t stateAdd = 1;
constexpr std::uint32_t sourceIsPager = 2;

} // namespace

void Placement::request(xcb_window_t window, const PlacementRequest& part) {
    if (waiting && waiting->window != window) {
        send();
    }
    if (!waiting) {
        waiting = Job{.window = window, .request = {}};
    }
    waiting->request.add(part);
    if (part.position && expectation) {
        expectation->isOutdated = true;
    }
    if (part.size && std::exchange(expectation, std::nullopt)) {
        turn.forgetWindows();
    }
}

void Placement::send() {
    if (expectation || (waiting && movesByConfiguring(waiting->window))) {
        finish();
    } else if (waiting) {
        static_cast<void>(sendJob(std::nullopt));
        connection.flush();
    }
}

void Placement::settle(xcb_window_t window) {
    if (!waiting || waiting->window != window) {
        return;
    }
    const bool isForeseen = expectation ? !expectation->isOutdated : foresee();
    if (!isForeseen) {
        finish();
    }
}

void Placement::setWindowManager(WindowManager manager) {
    if (manager.window == XCB_WINDOW_NONE || manager.window != windowManager.window) {
        roundsByHints = false;
        configuredPositions.clear();
        ignored.reset();
        configuredWindow = XCB_WINDOW_NONE;
    }
    windowManager = std::move(manager);
}

bool Placement::foresee() {
    const WindowFacts* facts = turn.windowWithFrame(waiting->window);
    if (facts == nullptr || facts->isFullscreen || facts->isMaximized() || !facts->sizeHints.hasIncrements()) {
        return false;
    }
    // A tiled window gets a size in any case.
    const bool isKnown = facts->isTiled ? facts->decorationOutside.has_value() : waiting->request.size.has_value();
    if (!isKnown || (!roundsByHints && !facts->roundsByHints)) {
        return false;
    }
    FrameGeometry reckoned = facts->geometry;
    reckoned.decoration = facts->decorationOutside.value_or(reckoned.decoration);
    const PlacementRequest whole = wholeRequest(waiting->request, visibleRectangle(facts->geometry));
    const corvid::CGSize size = roundedSize(reckoned, facts->sizeHints, whole);
    if (size == plainSize(reckoned, whole)) {
        return false;
    }
    expectation = {.before = *facts};
    WindowFacts after = *facts;
    after.geometry = geometryAfter(reckoned, whole, size);
    turn.takeWindow(waiting->window, after);
    // The request has the final size: with a larger one, the window manager may find that the window exceeds the
    // screen.
    waiting->request.size = visibleRectangle(after.geometry).size;
    return true;
}

void Placement::finish() {
    const std::optional<Foreseen> foreseen = std::exchange(expectation, std::nullopt);
    const bool isConfigured = movesByConfiguring(waiting->window);
    const std::optional<Sent> sent = isConfigured ? configureJob(foreseen) : sendJob(foreseen);
    if (!sent) {
        turn.forgetWindows();
        return;
    }
    if (!isConfigured && !fence.wait()) {
        return;
    }
    const bool wasTiled = untile(*sent);
    learnRounding(*sent);
    correctForChangedExtents(*sent);
    awaitShadow(*sent, wasTiled);
    if (!isConfigured && !wasTiled) {
        shiftIfElsewhere(*sent);
        configureIfElsewhere(*sent);
    }
    noteWhetherIgnored(*sent);
}

bool Placement::movesByConfiguring(xcb_window_t window) const {
    return turn.tilingManager() == nullptr && windowManager.isPresent &&
           (!windowManager.capabilities.movesOnMessage || window == configuredWindow);
}

std::optional<Placement::Sent> Placement::configureJob(const std::optional<Foreseen>& foreseen) {
    const ScopedConfigureWatch watch(connection, selection, waiting->window);
    std::optional<Sent> sent = sendJob(foreseen);
    if (sent) {
        correctPosition(*sent, sent->reckoned, watch);
    }
    return sent;
}

void Placement::configureIfElsewhere(const Sent& sent) {
    // fvwm drops the whole message if the window has a fixed size; evilwm puts the client at the place of the frame.
    const WindowFacts* facts = turn.windowWithFrame(sent.job.window);
    if (facts == nullptr || facts->isMaximized() || turn.tilingManager() != nullptr || isInPlace(sent, *facts)) {
        return;
    }
    // The window could take the size as well: it is laid out. spectrwm changes it for a moment when it is configured.
    if (isIgnored(sent, facts) &&
        facts->geometry.client.size != roundedSize(facts->geometry, facts->sizeHints, sent.job.request)) {
        return;
    }
    const FrameGeometry present = facts->geometry;
    if (present.client.origin != sent.before.client.origin) {
        // Where it puts windows is the same for both kinds of requests.
        const MoveResizeMessage message = moveResizeMessage(sent.reckoned, sent.job.request);
        configuredPositions.observe({static_cast<double>(message.x), static_cast<double>(message.y)},
                                    present.client.origin, sent.sizeHints.gravity, present.decoration);
    }
    const ScopedConfigureWatch watch(connection, selection, sent.job.window);
    askByConfiguring(sent, present);
    correctPosition(sent, present, watch);
    facts = turn.windowWithFrame(sent.job.window);
    if (facts != nullptr && isInPlace(sent, *facts)) {
        configuredWindow = sent.job.window;
    }
}

void Placement::correctPosition(const Sent& sent, FrameGeometry before, const ScopedConfigureWatch& watch) {
    constexpr int mostCorrections = 2;
    const WindowFacts* facts = readConfigured(sent, before.client, watch);
    for (int corrections = 0; facts != nullptr && corrections < mostCorrections && !isInPlace(sent, *facts);
         ++corrections) {
        before = facts->geometry;
        configuredPositions.observe(requestedPosition, before.client.origin, sent.sizeHints.gravity, before.decoration);
        watch.dropReports();
        askByConfiguring(sent, before);
        facts = readConfigured(sent, before.client, watch);
        const bool isUnchanged = facts == nullptr || facts->geometry.client == before.client;
        if (isUnchanged && before.client != sent.before.client) {
            // flwm takes the position for the client's, and had kept the frame at the edge of the screen.
            configuredPositions.observe({}, {}, sent.sizeHints.gravity, before.decoration);
            askByConfiguring(sent, before);
            facts = readConfigured(sent, before.client, watch);
        }
    }
}

bool Placement::isInPlace(const Sent& sent, const WindowFacts& facts) {
    return isFulfilled({.position = sent.job.request.position, .size = std::nullopt}, visibleRectangle(facts.geometry));
}

const WindowFacts* Placement::readConfigured(const Sent& sent, const corvid::CGRect& before,
                                             const ScopedConfigureWatch& watch) {
    const xcb_window_t window = sent.job.window;
    const WindowFacts* facts = fence.wait() ? readAgain(window) : nullptr;
    // Some handle requests for the windows that they manage later than others, or move a window before they resize it,
    // but report each result to the client. The report may come before the frame has followed.
    const Instant limit = connection.deadline().now() + configurePatience;
    if (facts != nullptr && facts->geometry.client == before) {
        facts = watch.waitForReport(limit) && fence.wait() ? readAgain(window) : nullptr;
    }
    while (facts != nullptr && isHalfDone(sent, *facts, before) && watch.waitForReport(limit) && fence.wait()) {
        facts = readAgain(window);
    }
    return facts;
}

bool Placement::isHalfDone(const Sent& sent, const WindowFacts& facts, const corvid::CGRect& before) const {
    const corvid::CGRect& client = facts.geometry.client;
    return client.origin != before.origin && client.size == before.size && client.size != requestedSize &&
           client.size != roundedSize(facts.geometry, sent.sizeHints, sent.job.request);
}

void Placement::learnRounding(const Sent& sent) {
    const WindowFacts* facts = readAgain(sent.job.window);
    if (facts == nullptr || !facts->sizeHints.hasIncrements() || sent.wasMaximized) {
        return;
    }
    const corvid::CGSize rounded = roundedSize(facts->geometry, facts->sizeHints, sent.job.request);
    if (rounded != plainSize(facts->geometry, sent.job.request)) {
        roundsByHints = facts->geometry.client.size == rounded;
    }
}

std::optional<Placement::Sent> Placement::sendJob(const std::optional<Foreseen>& foreseen) {
    const Job job = *std::exchange(waiting, std::nullopt);
    expectation.reset();
    const WindowFacts* facts = foreseen ? &foreseen->before : turn.windowWithFrame(job.window);
    if (facts == nullptr || facts->isFullscreen) {
        return std::nullopt;
    }
    Sent sent{.job = job,
              .before = facts->geometry,
              .reckoned = facts->geometry,
              .sizeHints = facts->sizeHints,
              .wasMaximizedHorizontally = facts->isMaximizedHorizontally,
              .wasMaximizedVertically = facts->isMaximizedVertically,
              .wasMaximized = facts->isMaximized()};
    const corvid::CGRect visible = visibleRectangle(facts->geometry);
    // For a tiled window the same frame still means a change: it gets a position of its own.
    if (!facts->isTiled && isFulfilled(job.request, visible)) {
        return std::nullopt;
    }
    // The unchanged parts are requested, too: a released window takes its former size, and Fluxbox adds the height of
    // the title to a window that is only moved.
    sent.job.request = wholeRequest(job.request, visible);
    if (sent.wasMaximized) {
        // Those alone that it has: pekwm adds a state that is removed without need.
        releaseMaximized(job.window, sent.wasMaximizedHorizontally, sent.wasMaximizedVertically);
        // The decoration may have changed. If the reply does not come in time, the message still follows the release,
        // computed with the former decoration: a few pixels off is better than a half-finished release.
        if (const WindowFacts* released = fence.wait() ? readAgain(job.window) : nullptr) {
            sent.reckoned = released->geometry;
        }
    }
    ask(sent, sent.reckoned);
    return sent;
}

bool Placement::isIgnored(const Sent& sent, const WindowFacts* present) {
    const PlacementRequest& whole = sent.job.request;
    if (present == nullptr || sent.wasMaximized || present->geometry != sent.before ||
        isFulfilled(whole, visibleRectangle(sent.before))) {
        return false;
    }
    // A window that stands at the requested position may have the only size that it takes.
    const PlacementRequest positionAlone{.position = whole.position, .size = std::nullopt};
    const bool isInPlace = isFulfilled(positionAlone, visibleRectangle(sent.before));
    return !isInPlace || sent.before.client.size != roundedSize(sent.before, present->sizeHints, whole);
}

void Placement::noteWhetherIgnored(const Sent& sent) {
    const xcb_window_t window = sent.job.window;
    const WindowFacts* facts = turn.tilingManager() == nullptr ? turn.windowWithFrame(window) : nullptr;
    ignored.reset();
    if (isIgnored(sent, facts)) {
        ignored = {.window = window, .geometry = facts->geometry};
        // A window that stands at the requested position may resist the size. It is still put to its edge.
        const PlacementRequest positionAlone{.position = sent.job.request.position, .size = std::nullopt};
        if (!isFulfilled(positionAlone, visibleRectangle(facts->geometry))) {
            turn.leaveAlone(window);
        }
    }
}

bool Placement::untile(const Sent& sent) {
    // KWin ignores requests for a window that it has tiled to an edge, and no property shows the tiling. Only
    // maximizing ends it.
    if (windowManager.name != "KWin" || !isIgnored(sent, readAgain(sent.job.window))) {
        return false;
    }
    changeMaximized(sent.job.window, stateAdd);
    changeMaximized(sent.job.window, stateRemove);
    // As for a maximized window: a late reply is no reason to leave the window at its former position.
    const WindowFacts* released = fence.wait() ? readAgain(sent.job.window) : nullptr;
    ask(sent, released != nullptr ? released->geometry : sent.before);
    static_cast<void>(fence.wait());
    return true;
}

void Placement::correctForChangedExtents(const Sent& sent) {
    const WindowFacts* facts = turn.windowWithFrame(sent.job.window);
    if (facts == nullptr || haveSameExtents(facts->geometry, sent.reckoned) ||
        isFulfilled(sent.job.request, visibleRectangle(facts->geometry))) {
        return;
    }
    ask(sent, facts->geometry);
    static_cast<void>(fence.wait());
}

void Placement::shiftIfElsewhere(const Sent& sent) {
    const WindowFacts* facts = turn.windowWithFrame(sent.job.window);
    if (turn.tilingManager() != nullptr || windowManager.capabilities.announcesFrameExtents || facts == nullptr ||
        facts->geometry == sent.before || isInPlace(sent, *facts)) {
        return;
    }
    const corvid::CGPoint wanted = *sent.job.request.position;
    const corvid::CGPoint present = visibleRectangle(facts->geometry).origin;
    Sent shifted = sent;
    shifted.job.request.position = {(2 * wanted.x) - present.x, (2 * wanted.y) - present.y};
    ask(shifted, facts->geometry);
    static_cast<void>(fence.wait());
}

void Placement::awaitShadow(const Sent& sent, bool wasTiled) {
    const xcb_window_t window = sent.job.window;
    const WindowFacts* facts = turn.windowWithFrame(window);
    if ((!sent.wasMaximized && !wasTiled) || !windowManager.capabilities.supportsClientShadows || facts == nullptr ||
        !facts->drawsOwnDecoration) {
        return;
    }
    const Instant limit = connection.deadline().now() + shadowPatience;
    const ScopedPropertyWatch watch(connection, selection, window);
    // Read after the watch began, so that no change in between goes unnoticed.
    facts = readAgain(window);
    while (facts != nullptr) {
        if (!isFulfilled(sent.job.request, visibleRectangle(facts->geometry))) {
            ask(sent, facts->geometry);
            if (!fence.wait()) {
                return;
            }
            facts = readAgain(window);
        }
        // A window that was tiled passes through the maximized state: its shadow goes and comes back.
        if (facts == nullptr || (!wasTiled && facts->geometry.shadow != sent.before.shadow) ||
            !watch.waitForChange(Atom::gtkFrameExtents, limit)) {
            return;
        }
        facts = readAgain(window);
    }
}

const WindowFacts* Placement::readAgain(xcb_window_t window) {
    turn.forgetWindows();
    return turn.windowWithFrame(window);
}

void Placement::ask(const Sent& sent, const FrameGeometry& present) {
    const auto& [window, whole] = sent.job;
    if (TilingManager* tiling = turn.tilingManager()) {
        // In steps that the window takes, so that no window manager rounds up and beyond the edge of the screen.
        const corvid::CGSize size =
            tiling->roundsSizesUp() ? roundedSize(present, sent.sizeHints, whole) : plainSize(present, whole);
        const FrameGeometry wanted = geometryAfter(present, whole, size);
        tiling->place(connection, window, outerRectangle(wanted));
        turn.forgetWindows();
    } else if (movesByConfiguring(window)) {
        askByConfiguring(sent, present);
    } else {
        requestByMessage(connection, window, moveResizeMessage(present, whole));
        turn.forgetWindows();
    }
}

void Placement::askByConfiguring(const Sent& sent, const FrameGeometry& present) {
    const auto& [window, whole] = sent.job;
    const MoveResizeMessage message = moveResizeMessage(present, whole);
    requestedPosition = configuredPositions.request({static_cast<double>(message.x + present.decoration.left),
                                                     static_cast<double>(message.y + present.decoration.top)},
                                                    sent.sizeHints.gravity, present.decoration);
    // Many window managers take such a request for the client's own, and leave its limits to it. Steps are left to
    // them.
    SizeHints limits = sent.sizeHints;
    limits.widthIncrement = limits.heightIncrement = 1;
    const ClientSize size = constrainedSize(limits, {message.width, message.height});
    requestedSize = {static_cast<double>(size.width), static_cast<double>(size.height)};
    requestClientRectangle(connection, window, {requestedPosition, requestedSize});
    turn.forgetWindows();
}

void Placement::releaseMaximized(xcb_window_t window, bool horizontally, bool vertically) {
    if (horizontally && vertically) {
        changeMaximized(window, stateRemove);
        return;
    }
    const Atom state = horizontally ? Atom::netWmStateMaximizedHorz : Atom::netWmStateMaximizedVert;
    sendToRoot(connection, window, Atom::netWmState, {stateRemove, connection.atom(state), 0, sourceIsPager, 0});
    turn.forgetWindows();
}

void Placement::changeMaximized(xcb_window_t window, std::uint32_t action) {
    sendToRoot(connection, window, Atom::netWmState,
               {action, connection.atom(Atom::netWmStateMaximizedVert), connection.atom(Atom::netWmStateMaximizedHorz),
                sourceIsPager, 0});
    turn.forgetWindows();
}

} // namespace platform::x11
