#include "Platform/X11/Turn.h"

#include "Platform/X11/OwnBars.h"
#include "Platform/X11/WindowTree.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string>
#include <utility>

namespace platform::x11 {

void Turn::begin() {
    rootFacts.reset();
    space.reset();
    left = XCB_WINDOW_NONE;
    forgetWindows();
    chooseTilingManager();
}

void Turn::forgetWindows() {
    windows.clear();
    readLayout.reset();
}

const RootFacts* Turn::root() {
    if (rootFacts) {
        return &*rootFacts;
    }
    if (connection.isBacklogged()) {
        return nullptr;
    }
    const xcb_atom_t workAreasName = monitorWorkAreasName(guess.currentDesktop);
    RootFactsRequest rootRequest(connection);
    WorkSpaceRequest guessedSpaceRequest(connection, guess.clients, workAreasName);
    std::optional<WindowFactsRequest> guessedWindowRequest;
    if (guess.activeWindow != XCB_WINDOW_NONE) {
        guessedWindowRequest.emplace(connection, guess.activeWindow);
    }

    rootFacts = rootRequest.read(connection);
    if (rootFacts && !complete(*rootFacts)) {
        rootFacts.reset();
    }
    // Replies come in the order of the requests, so these have arrived as well; reading them also frees them.
    std::optional<WorkSpace> guessedSpace;
    if (rootFacts && guessedWorkSpaceIsRight()) {
        guessedSpace = guessedSpaceRequest.read(connection, *rootFacts);
    } else {
        guessedSpaceRequest.drop(connection);
    }
    if (guessedWindowRequest) {
        windows.insert_or_assign(guess.activeWindow, guessedWindowRequest->read(connection));
    }
    if (!rootFacts) {
        return nullptr;
    }
    if (guessedSpace) {
        takeWorkSpace(*std::move(guessedSpace));
    }
    rememberGuess(*rootFacts);
    return &*rootFacts;
}

void Turn::chooseTilingManager() {
    const bool isToBeAsked =
        tilingInCharge != nullptr && (tilingInCharge->isIndispensable() || tilingInCharge->isReachable(connection));
    tiling = isToBeAsked ? tilingInCharge : nullptr;
}

bool Turn::complete(RootFacts& facts) {
    if (!isManaged) {
        return true;
    }
    if (!capabilities.announcesItself) {
        // A dead window manager may have left these.
        facts.currentDesktop = 0;
        facts.workAreas.clear();
    }
    if (!capabilities.listsWindows) {
        auto managed = readWindowsWithState(connection, guess.clients);
        if (!managed) {
            return false;
        }
        facts.clients = *std::move(managed);
    }
    // Some window managers name the keyboard focus, which is no window while it follows the pointer.
    const bool isNamed =
        capabilities.namesActiveWindow && facts.activeWindow != xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT};
    if (!isNamed) {
        facts.activeWindow = readFocusedClient(connection, facts.clients);
        return !connection.isExhausted();
    }
    // Some list a new window when the next one comes.
    const bool isListed = facts.activeWindow == XCB_WINDOW_NONE ||
                          std::ranges::find(facts.clients, facts.activeWindow) != facts.clients.end();
    if (!isListed && hasState(connection, facts.activeWindow)) {
        facts.clients.push_back(facts.activeWindow);
    }
    return true;
}

const WindowFacts* Turn::window(xcb_window_t window) {
    auto found = windows.find(window);
    if (found == windows.end() && connection.isBacklogged()) {
        return nullptr;
    }
    if (found == windows.end()) {
        WindowFactsRequest request(connection, window);
        found = windows.emplace(window, request.read(connection)).first;
    }
    return found->second ? &*found->second : nullptr;
}

const WindowFacts* Turn::windowWithFrame(xcb_window_t window) {
    const WindowFacts* facts = this->window(window);
    if (facts == nullptr || facts->isLaidOut) {
        return facts;
    }
    if (tiling != nullptr) {
        return windowInLayout(*facts, window);
    }
    if (capabilities.announcesFrameExtents || !isManaged) {
        return facts;
    }
    const auto decoration = readDecoration(connection, window);
    if (!decoration) {
        return nullptr;
    }
    WindowFacts framed = *facts;
    framed.geometry.decoration = *decoration;
    framed.isLaidOut = true;
    takeWindow(window, framed);
    return this->window(window);
}

const WindowFacts* Turn::windowInLayout(const WindowFacts& facts, xcb_window_t window) {
    const Layout* present = layout();
    const auto found =
        present == nullptr ? std::map<xcb_window_t, Layout::Window>::const_iterator{} : present->windows.find(window);
    if (present == nullptr || found == present->windows.end()) {
        return nullptr;
    }
    const auto& [frame, drawn, isTiled, bordersOutside, roundsByHints] = found->second;
    WindowFacts laidOut = facts;
    if (frame && drawn) {
        laidOut.geometry = geometryInside(*frame, *drawn, facts.geometry);
    } else if (laidOut.geometry.decoration == Extents{}) {
        laidOut.geometry.decoration = widened({}, facts.borderWidth);
    }
    laidOut.isTiled = isTiled;
    // A window manager that rounds up only gets sizes that the window takes, so it has nothing to round.
    laidOut.roundsByHints = roundsByHints || tiling->roundsSizesUp();
    if (isTiled && tiling->roundsSizesUp()) {
        // Its future size. An action that keeps the size keeps this one, and finds the same when it is repeated.
        const Extents decoration =
            bordersOutside ? widened(*bordersOutside, facts.borderWidth) : laidOut.geometry.decoration;
        laidOut.geometry = geometryOutsideLayout(laidOut.geometry, decoration, facts.sizeHints);
    } else if (isTiled && bordersOutside) {
        laidOut.decorationOutside = widened(*bordersOutside, facts.borderWidth);
    }
    // i3 4.24 sets this on windows that fill their part of the layout. There is no state to release.
    laidOut.isMaximizedHorizontally = false;
    laidOut.isMaximizedVertically = false;
    laidOut.isLaidOut = true;
    takeWindow(window, laidOut);
    return this->window(window);
}

const Layout* Turn::layout() {
    if (tiling == nullptr) {
        return nullptr;
    }
    if (!readLayout) {
        readLayout.emplace(tiling->readLayout(connection));
    }
    return *readLayout ? &**readLayout : nullptr;
}

void Turn::readWindows(const std::vector<xcb_window_t>& wanted) {
    std::vector<xcb_window_t> unread;
    std::ranges::copy_if(wanted, std::back_inserter(unread), [this](auto window) { return !windows.contains(window); });
    // Some 250 bytes each.
    constexpr std::size_t mostAtOnce = 128;
    for (std::size_t first = 0; first < unread.size() && !connection.isExhausted(); first += mostAtOnce) {
        std::vector<std::pair<xcb_window_t, WindowFactsRequest>> requests;
        for (const xcb_window_t window :
             std::span(unread).subspan(first, std::min(mostAtOnce, unread.size() - first))) {
            requests.emplace_back(window, WindowFactsRequest(connection, window));
        }
        for (auto& [window, request] : requests) {
            windows.insert_or_assign(window, request.read(connection));
        }
    }
}

const WorkSpace* Turn::workSpace() {
    const RootFacts* facts = root();
    if (facts == nullptr) {
        return nullptr;
    }
    if (!space) {
        const xcb_atom_t workAreasName = monitorWorkAreasName(facts->currentDesktop);
        WorkSpaceRequest request(connection, facts->clients, workAreasName);
        takeWorkSpace(request.read(connection, *facts));
    }
    if (const Layout* present = layout(); present != nullptr && !present->workAreas.empty()) {
        space->monitorWorkAreas = present->workAreas;
    }
    return &*space;
}

void Turn::takeWorkSpace(WorkSpace read) {
    // No property reports the bars that a window manager draws itself, as awesome does.
    if (isManaged && tiling == nullptr && !read.workArea) {
        const std::vector<xcb_window_t> unmanaged = readShownUnmanagedWindows(connection);
        WorkSpaceRequest request(connection, unmanaged, XCB_ATOM_NONE);
        const WorkSpace bars = request.read(connection, *rootFacts);
        read.struts.insert(read.struts.end(), bars.struts.begin(), bars.struts.end());
        // The frame of a window and a bar without a property have the same maker. WindowLab has such a bar.
        const xcb_window_t client = rootFacts->activeWindow;
        const xcb_window_t frame =
            client == XCB_WINDOW_NONE ? xcb_window_t{XCB_WINDOW_NONE} : readFrame(connection, client);
        if (bars.struts.empty() && frame != XCB_WINDOW_NONE) {
            const std::vector<Strut> own = strutsOfEdgeBars(read.rootSize, readUnmanagedWindowsOf(connection, frame));
            read.struts.insert(read.struts.end(), own.begin(), own.end());
        }
    }
    // On a single monitor the work area is sufficient.
    if (read.monitors.size() > 1 && hasUnexplainedMargin(read)) {
        const std::vector<Strut> bars = strutsOfBars(read, readUnmanagedWindows(connection));
        read.struts.insert(read.struts.end(), bars.begin(), bars.end());
    }
    space = std::move(read);
}

const std::vector<xcb_window_t>* Turn::renewGuess() {
    if (connection.isBacklogged()) {
        return nullptr;
    }
    RootFactsRequest request(connection);
    auto facts = request.read(connection);
    if (!facts || !complete(*facts)) {
        return nullptr;
    }
    rememberGuess(*facts);
    static_cast<void>(monitorWorkAreasName(guess.currentDesktop));
    return &guess.clients;
}

void Turn::rememberGuess(const RootFacts& facts) {
    guess = {.activeWindow = facts.activeWindow, .clients = facts.clients, .currentDesktop = facts.currentDesktop};
}

bool Turn::guessedWorkSpaceIsRight() const {
    return guess.clients == rootFacts->clients && guess.currentDesktop == rootFacts->currentDesktop;
}

xcb_atom_t Turn::monitorWorkAreasName(std::uint32_t desktop) {
    const auto known = monitorWorkAreasNames.find(desktop);
    if (known != monitorWorkAreasNames.end()) {
        return known->second;
    }
    // An implausible number must not fill the server with atoms, which are never freed.
    constexpr std::uint32_t mostDesktops = 256;
    if (desktop >= mostDesktops) {
        return XCB_ATOM_NONE;
    }
    const std::string name = "_GTK_WORKAREAS_D" + std::to_string(desktop);
    const auto interned = connection.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(connection.raw(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
    if (!interned) {
        return XCB_ATOM_NONE;
    }
    monitorWorkAreasNames.emplace(desktop, interned->atom);
    return interned->atom;
}

} // namespace platform::x11
