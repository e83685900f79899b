// Tessel's script inside KWin: it reports windows and screens, and carries out commands. It supports KWin 5 and 6,
// which have different names for many functions.
//
// A script cannot be called from outside, so it calls Tessel, which replies as soon as there is a command; then the
// script calls again. Tessel replies at the latest after twenty seconds, because KWin drops a call after twenty-five.

const service = "org.corvid.Tessel.KWin";
const path = "/org/corvid/Tessel/KWin";
const face = "org.corvid.Tessel.KWin1";
// Distinguishes this run of the script from others.
const run = Date.now() + "-" + Math.random();
const isSix = typeof workspace.windowList === "function";

let isSilent = false;
let reportedFocus = null;
let reportedScreens = null;
// The last report of each window, by its id.
const reportedWindows = new Map();
// The positions of Tessel's own windows, by their titles.
const ownPlaces = new Map();

function report(news) {
    if (!isSilent) {
        callDBus(service, path, face, "Report", run, JSON.stringify(news));
    }
}

function on(object, names, act) {
    for (const name of names) {
        if (object[name] && object[name].connect) {
            object[name].connect(act);
            return;
        }
    }
}

function timer(interval, act) {
    const made = new QTimer();
    made.singleShot = true;
    made.interval = interval;
    made.timeout.connect(act);
    return made;
}

function rectangle(rect) {
    return [rect.x, rect.y, rect.width, rect.height];
}

function allWindows() {
    return isSix ? workspace.windowList() : workspace.clientList();
}

function activeWindow() {
    return isSix ? workspace.activeWindow : workspace.activeClient;
}

function identifier(window) {
    return String(window.internalId);
}

// Empty for anything that is no window for its user: it is never reported.
function kind(window) {
    const ignored = [
        "desktopWindow", "dock", "notification", "criticalNotification", "onScreenDisplay", "tooltip", "popupMenu",
        "dropdownMenu", "comboBox", "dndIcon", "popupWindow", "appletPopup", "outline", "inputMethod", "deleted"
    ];
    if (window.managed === false || ignored.some((name) => window[name])) {
        return "";
    }
    return window.normalWindow && !window.transient ? "standard" : "auxiliary";
}

function description(window) {
    return {
        id: identifier(window),
        process: window.pid,
        entry: String(window.desktopFileName || ""),
        class: String(window.resourceClass || ""),
        instance: String(window.resourceName || ""),
        kind: kind(window),
        skipsTaskBars: Boolean(window.skipTaskbar),
        isFullscreen: Boolean(window.fullScreen),
        frame: rectangle(window.frameGeometry)
    };
}

function screens() {
    const found = [];
    const area = (option, screen) => rectangle(workspace.clientArea(option, screen, workspace.currentDesktop));
    // KWin 5 numbers the screens and does not say which one is the primary.
    const all = isSix ? workspace.screenOrder || workspace.screens
                      : Array.from({length: workspace.numScreens}, (_, number) => number);
    for (let i = 0; i < all.length; ++i) {
        found.push({frame: area(KWin.ScreenArea, all[i]), workArea: area(KWin.MaximizeArea, all[i])});
    }
    return found;
}

function focus() {
    const window = activeWindow();
    return window && kind(window) !== "" ? identifier(window) : "";
}

function reportFocus() {
    const now = focus();
    if (now !== reportedFocus) {
        reportedFocus = now;
        report({focused: now});
    }
}

function reportScreens() {
    const now = screens();
    const text = JSON.stringify(now);
    if (text !== reportedScreens) {
        reportedScreens = text;
        report({screens: now});
    }
}

// KWin updates the reserved space of panels only after the signals that may change it: KWin 6.7 two turns of its loop
// after them. The update itself has no signal.
const screensLater = timer(20, reportScreens);
const screensSoon = timer(0, () => {
    reportScreens();
    screensLater.start();
});

function reportWindow(window) {
    // While it is dragged its frame is not final.
    if (window.deleted || window.move || window.resize || kind(window) === "") {
        return;
    }
    const now = description(window);
    const text = JSON.stringify(now);
    if (reportedWindows.get(now.id) !== text) {
        reportedWindows.set(now.id, text);
        report({window: now});
    }
}

function placeOwn(window) {
    for (const [title, place] of ownPlaces) {
        const caption = String(window.caption);
        // A toolkit may append its program's name, and KWin a number.
        if (window.pid !== place.process || (caption !== title && !caption.startsWith(title + " "))) {
            continue;
        }
        window.noBorder = true;
        window.keepAbove = true;
        window.skipTaskbar = true;
        window.skipPager = true;
        window.skipSwitcher = true;
        window.onAllDesktops = true;
        const frame = window.frameGeometry;
        window.frameGeometry = {x: place.x, y: place.y, width: frame.width, height: frame.height};
        if (isSix) {
            workspace.activeWindow = window;
        } else {
            workspace.activeClient = window;
        }
    }
}

function follow(window) {
    const signals = [
        ["windowClassChanged"], ["desktopFileNameChanged"], ["fullScreenChanged"], ["skipTaskbarChanged"],
        ["transientChanged"], ["moveResizedChanged"]
    ];
    for (const names of signals) {
        on(window, names, () => reportWindow(window));
    }
    on(window, ["frameGeometryChanged"], () => {
        reportWindow(window);
        if (window.dock) {
            screensSoon.start();
        }
    });
}

function isOfX11(window) {
    return window.windowId !== undefined || /X11|Xwayland/.test(String(window));
}

// The size within the window's limits: KWin would force any size on an X11 window, and a Wayland window does not report
// that it refuses.
function fitting(window, [width, height]) {
    const frame = window.frameGeometry;
    if (!window.resizeable) {
        return [frame.width, frame.height];
    }
    // KWin 5 does not report the decoration of an X11 window.
    const inner = window.clientGeometry || (isOfX11(window) ? frame : window.bufferGeometry);
    const limit = (wanted, smallest, largest, border) =>
        Math.max(Math.min(wanted, largest > 0 ? largest + border : wanted), smallest + border);
    return [
        limit(width, window.minSize.width, window.maxSize.width, Math.max(0, frame.width - inner.width)),
        limit(height, window.minSize.height, window.maxSize.height, Math.max(0, frame.height - inner.height))
    ];
}

const actions = {
    place(command, result) {
        const window = allWindows().find((each) => identifier(each) === command.window);
        if (!window) {
            result.outcome = "gone";
        } else if (window.fullScreen || !window.moveable) {
            result.outcome = "refused";
        } else {
            if (window.tile) {
                window.tile = null;
            }
            window.setMaximize(false, false);
            const [x, y, ...size] = command.frame;
            const [width, height] = fitting(window, size);
            window.frameGeometry = {x, y, width, height};
            result.outcome = "done";
            result.asked = [x, y, width, height];
            result.isForced = isOfX11(window);
            result.frame = rectangle(window.frameGeometry);
        }
    },
    own(command) {
        const [x, y] = command.at;
        ownPlaces.set(command.title, {process: command.process, x, y});
        allWindows().forEach(placeOwn);
    },
    pointer(command, result) {
        result.pointer = [workspace.cursorPos.x, workspace.cursorPos.y];
    }
};

function carryOut(command) {
    const result = {number: command.number, outcome: "done"};
    try {
        actions[command.do](command, result);
    } catch (error) {
        result.outcome = "failed";
        result.reason = String(error);
    }
    return result;
}

// A missing reply for this long means that Tessel ended without unloading this script.
const abandoned = timer(40000, () => { isSilent = true; });

function poll(results) {
    callDBus(service, path, face, "Next", run, JSON.stringify(results), (answer) => {
        const commands = JSON.parse(answer);
        if (commands === "end") {
            isSilent = true;
            abandoned.stop();
            return;
        }
        abandoned.start();
        screensSoon.start();
        poll(commands.map(carryOut));
    });
}

on(workspace, ["windowAdded", "clientAdded"], (window) => {
    screensSoon.start();
    follow(window);
    placeOwn(window);
    reportWindow(window);
});
on(workspace, ["windowRemoved", "clientRemoved"], (window) => {
    screensSoon.start();
    if (reportedWindows.delete(identifier(window))) {
        report({gone: identifier(window)});
    }
});
on(workspace, ["windowActivated", "clientActivated"], () => {
    screensSoon.start();
    reportFocus();
});
for (const name of ["numberScreensChanged", "screenResized", "screensChanged", "screenOrderChanged",
                    "virtualScreenGeometryChanged", "virtualScreenSizeChanged", "currentDesktopChanged"]) {
    on(workspace, [name], () => screensSoon.start());
}

const present = allWindows().filter((window) => kind(window) !== "").map(description);
present.forEach((each) => reportedWindows.set(each.id, JSON.stringify(each)));
reportedFocus = focus();
reportedScreens = JSON.stringify(screens());
allWindows().forEach(follow);
report({opened: {windows: present, focused: reportedFocus, screens: screens()}});
abandoned.start();
poll([]);
