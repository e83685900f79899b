// The core works the same in GNOME Shell and in Cinnamon. The build joins its parts into one file, after the imports of
// the shell's modules and the part of that shell alone (`host`, in shell.js of its folder).

const BUS_NAME = 'org.corvid.Tessel.Windows';
const OBJECT_PATH = '/org/corvid/Tessel/Windows';
const INTERFACE_NAME = 'org.corvid.Tessel.Windows1';
// Increases with every change of the interface that concerns the program.
const INTERFACE_VERSION = 1;

// Structures are sent as JSON. Rectangles are x, y, width and height in the shell's own space. Signals go to the
// program only.
const INTERFACE = `<node><interface name="${INTERFACE_NAME}">
    <method name="Hello"><arg type="s" direction="out"/></method>
    <method name="Frames"><arg type="s" direction="out"/></method>
    <method name="Place">
        <arg type="t" direction="in"/>
        <arg type="i" direction="in"/><arg type="i" direction="in"/>
        <arg type="i" direction="in"/><arg type="i" direction="in"/>
        <arg type="i" direction="out"/><arg type="i" direction="out"/>
        <arg type="i" direction="out"/><arg type="i" direction="out"/>
    </method>
    <method name="Grab">
        <arg type="u" direction="in"/><arg type="s" direction="in"/><arg type="b" direction="out"/>
    </method>
    <method name="Borrow">
        <arg type="u" direction="in"/><arg type="s" direction="in"/>
        <arg type="b" direction="out"/><arg type="b" direction="out"/>
    </method>
    <method name="LoanObstacle"><arg type="s" direction="in"/><arg type="s" direction="out"/></method>
    <method name="Ungrab"><arg type="u" direction="in"/></method>
    <method name="Holders"><arg type="a(uu)" direction="in"/><arg type="s" direction="out"/></method>
    <method name="Pointer"><arg type="i" direction="out"/><arg type="i" direction="out"/></method>
    <method name="PlaceOwn">
        <arg type="i" direction="in"/><arg type="s" direction="in"/>
        <arg type="i" direction="in"/><arg type="i" direction="in"/>
    </method>
    <method name="Beep"/>
    <method name="ShowItem"><arg type="s" direction="in"/></method>
    <method name="HideItem"/>
    <method name="ItemFrame">
        <arg type="i" direction="out"/><arg type="i" direction="out"/>
        <arg type="i" direction="out"/><arg type="i" direction="out"/>
    </method>
    <signal name="Opened"><arg type="s"/></signal>
    <signal name="Closed"/>
    <signal name="WindowChanged"><arg type="s"/></signal>
    <signal name="WindowGone"><arg type="t"/></signal>
    <signal name="Moved"/>
    <signal name="Focused"><arg type="t"/></signal>
    <signal name="OutputsChanged"><arg type="s"/></signal>
    <signal name="Activated"><arg type="u"/></signal>
    <signal name="KeyHeld"><arg type="u"/><arg type="b"/></signal>
    <signal name="KeyLost"><arg type="u"/></signal>
    <signal name="ItemClicked">
        <arg type="i"/><arg type="i"/><arg type="i"/><arg type="i"/>
    </signal>
    <signal name="ItemChosen"><arg type="u"/></signal>
</interface></node>`;

const rectangle = r => [r.x, r.y, r.width, r.height];
const isEqual = (a, b) => a.every((value, index) => value === b[index]);

/** Handlers of signals, which end together. Cinnamon's objects have no way to end all handlers of one owner. */
class Handlers {
    constructor() {
        this._ids = new Map();
    }

    /** `handlers`: the functions by their signals. */
    add(object, handlers) {
        const ids = Object.entries(handlers).map(([signal, handler]) => object.connect(signal, handler));
        this._ids.set(object, [...this._ids.get(object) ?? [], ...ids]);
    }

    /** Ends all of one object. */
    end(object) {
        for (const id of this._ids.get(object) ?? [])
            object.disconnect(id);
        this._ids.delete(object);
    }

    endAll() {
        for (const object of [...this._ids.keys()])
            this.end(object);
    }
}

/** A reply with an error of the interface's own. */
class Refusal extends Error {
    constructor(name, message) {
        super(message);
        this.busName = `${INTERFACE_NAME}.${name}`;
    }
}

/** The program's name for the kind of a window; see WindowKind there. */
function kindOf(window) {
    if (window.is_override_redirect())
        return 'ignored';
    switch (window.get_window_type()) {
    case Meta.WindowType.NORMAL:
        return window.get_transient_for() ? 'auxiliary' : 'standard';
    case Meta.WindowType.DIALOG:
    case Meta.WindowType.MODAL_DIALOG:
    case Meta.WindowType.UTILITY:
    case Meta.WindowType.SPLASHSCREEN:
        return 'auxiliary';
    default:
        return 'ignored';
    }
}

function factsOf(window) {
    const isX11 = window.get_client_type() === Meta.WindowClientType.X11;
    const text = value => value ?? '';
    const windowClass = text(window.get_wm_class());
    return {
        id: window.get_id(),
        pid: host.processOf(window),
        // On Wayland the class is the application's own id.
        applicationId: window.get_sandboxed_app_id() || window.get_gtk_application_id() || (isX11 ? '' : windowClass),
        windowClass: isX11 ? windowClass : '',
        windowInstance: isX11 ? text(window.get_wm_class_instance()) : '',
        kind: kindOf(window),
        skipsTaskBars: window.is_skip_taskbar(),
        isFullscreen: window.is_fullscreen(),
        frame: rectangle(window.get_frame_rect()),
    };
}

function outputs() {
    const display = global.display;
    const workspace = global.workspace_manager.get_active_workspace();
    const primary = display.get_primary_monitor();
    return [...Array(display.get_n_monitors()).keys()]
        .sort((a, b) => (b === primary) - (a === primary))
        .map(index => ({
            frame: rectangle(display.get_monitor_geometry(index)),
            workArea: rectangle(workspace.get_work_area_for_monitor(index)),
        }));
}
