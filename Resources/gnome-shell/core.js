// What the extension does, the same for every version of the shell. The names of the shell's modules come from the
// file that this is put into.

const BUS_NAME = 'org.corvid.Tessel.Windows';
const OBJECT_PATH = '/org/corvid/Tessel/Windows';
const INTERFACE_NAME = 'org.corvid.Tessel.Windows1';
// Rises with every change of the interface that the program must know of.
const INTERFACE_VERSION = 1;

// Structures go as JSON. Rectangles are x, y, width and height in the shell's own space. Signals go to the program only.
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
    <method name="Ungrab"><arg type="u" direction="in"/></method>
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
    <signal name="ItemClicked">
        <arg type="i"/><arg type="i"/><arg type="i"/><arg type="i"/>
    </signal>
    <signal name="ItemChosen"><arg type="u"/></signal>
</interface></node>`;

const rectangle = r => [r.x, r.y, r.width, r.height];
const isEqual = (a, b) => a.every((value, index) => value === b[index]);

/** An answer that is an error of the interface's own. */
class Refusal extends Error {
    constructor(name, message) {
        super(message);
        this.busName = `${INTERFACE_NAME}.${name}`;
    }
}

/** What the program calls the kind of a window; see WindowKind there. */
function kindOf(window) {
    if (window.is_override_redirect())
        return 'furniture';
    switch (window.get_window_type()) {
    case Meta.WindowType.NORMAL:
        return window.get_transient_for() ? 'auxiliary' : 'standard';
    case Meta.WindowType.DIALOG:
    case Meta.WindowType.MODAL_DIALOG:
    case Meta.WindowType.UTILITY:
    case Meta.WindowType.SPLASHSCREEN:
        return 'auxiliary';
    default:
        return 'furniture';
    }
}

function factsOf(window) {
    const isX11 = window.get_client_type() === Meta.WindowClientType.X11;
    const text = value => value ?? '';
    const windowClass = text(window.get_wm_class());
    return {
        id: window.get_id(),
        pid: window.get_pid(),
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

/** One window on its way to a frame. Calls `settled` once, unless it is cancelled before. */
class Placement {
    constructor(window, wanted, settled) {
        this._window = window;
        this._wanted = wanted;
        this._settled = settled;
        this._timeout = 0;
        this._hasChanged = false;
        this._triesLeft = 1;
        this._isX11 = window.get_client_type() === Meta.WindowClientType.X11;
        window.connectObject(
            'size-changed', () => this._changed(), 'position-changed', () => this._changed(), this);
        const {width, height} = window.get_frame_rect();
        const isOwnSize = wanted[2] === width && wanted[3] === height;
        if (this._release() && isOwnSize) {
            // The size that it is about to leave is not asked for as long as it has it.
            this._isReleasing = true;
            this._wait(80, () => this._ask());
        } else {
            this._ask();
        }
    }

    cancel() {
        this._window.disconnectObject(this);
        this._wait(0, null);
    }

    /** Maximized or tiled it would keep its size. Whether its new size has yet to come. */
    _release() {
        const window = this._window;
        const flags = window.get_maximize_flags ? window.get_maximize_flags() : window.get_maximized();
        if (!flags)
            return false;
        this._triesLeft = 2;
        const before = rectangle(window.get_frame_rect());
        if (window.set_unmaximize_flags)
            window.set_unmaximize_flags(Meta.MaximizeFlags.BOTH);
        else
            window.unmaximize(Meta.MaximizeFlags.BOTH);
        return isEqual(before, rectangle(window.get_frame_rect()));
    }

    _ask() {
        this._isReleasing = false;
        this._triesLeft--;
        this._wait(0, null);
        // A window of an X11 program would keep its place if it rounds the size.
        if (this._isX11)
            this._window.move_frame(true, this._wanted[0], this._wanted[1]);
        this._window.move_resize_frame(true, ...this._wanted);
        this._look();
    }

    _changed() {
        this._hasChanged = true;
        if (this._isReleasing)
            this._ask();
        else
            this._look();
    }

    _look() {
        if (isEqual(this._wanted, rectangle(this._window.get_frame_rect())))
            this._finish();
        else if (this._isX11 || this._hasChanged || !this._window.allows_resize())
            // It has taken another size; a little later that is final.
            this._wait(50, () => this._settle());
        else
            // The application has yet to answer. Whoever asked does not wait as long.
            this._wait(2000, () => this._finish());
    }

    _settle() {
        if (this._triesLeft > 0)
            this._ask();
        else
            this._finish();
    }

    _finish() {
        this.cancel();
        this._settled();
    }

    _wait(milliseconds, then) {
        if (this._timeout)
            GLib.source_remove(this._timeout);
        this._timeout = 0;
        if (then) {
            this._timeout = GLib.timeout_add(GLib.PRIORITY_DEFAULT, milliseconds, () => {
                this._timeout = 0;
                then();
                return GLib.SOURCE_REMOVE;
            });
        }
    }
}

/** Follows the windows and the screens, and places windows. */
class Windows {
    constructor(tell) {
        this._tell = tell;
        this._known = new Map();
        this._placements = new Map();
        this._isMoveTold = false;
        for (const {metaWindow} of global.get_window_actors())
            this._follow(metaWindow, metaWindow.get_frame_rect().width > 0);
        global.display.connectObject(
            'window-created', (_display, window) => this._follow(window, false),
            'notify::focus-window', () => this._tell('Focused', '(t)', [this.focused() ?? 0]),
            'workareas-changed', () => this._tellOutputs(), this);
        Main.layoutManager.connectObject('monitors-changed', () => this._tellOutputs(), this);
        // Windows of X11 programs do not say that they are shown.
        global.window_manager.connectObject('map', (_manager, {metaWindow}) => {
            this._known.get(metaWindow.get_id())?.becomesReady?.();
        }, this);
    }

    destroy() {
        global.display.disconnectObject(this);
        Main.layoutManager.disconnectObject(this);
        global.window_manager.disconnectObject(this);
        for (const placement of this._placements.values())
            placement.cancel();
        this._placements.clear();
        for (const {window} of this._known.values())
            window.disconnectObject(this);
        this._known.clear();
    }

    /** All that a person could place, oldest first. */
    all() {
        return [...this._known.values()]
            .filter(({window, isShown}) => isShown && kindOf(window) !== 'furniture')
            .map(({window}) => window)
            .sort((a, b) => a.get_stable_sequence() - b.get_stable_sequence());
    }

    focused() {
        return global.display.focus_window?.get_id() ?? null;
    }

    frames() {
        this._isMoveTold = false;
        return this.all().map(window => [window.get_id(), ...rectangle(window.get_frame_rect()), window.is_fullscreen()]);
    }

    /** Calls `settled` with the frame that the window has come to, or with nothing if it goes meanwhile. */
    place(id, wanted, settled) {
        const window = this._known.get(id)?.window;
        if (!window)
            throw new Refusal('NoSuchWindow', `There is no window ${id}`);
        if (window.is_fullscreen())
            throw new Refusal('Fullscreen', 'A fullscreen window is left alone');
        this._endPlacement(id);
        let placement = null;
        let isSettled = false;
        placement = new Placement(window, wanted, () => {
            isSettled = true;
            this._placements.delete(id);
            settled(rectangle(window.get_frame_rect()));
        });
        if (!isSettled)
            this._placements.set(id, Object.assign(placement, {whenLeft: () => settled(null)}));
    }

    _endPlacement(id) {
        const placement = this._placements.get(id);
        this._placements.delete(id);
        placement?.cancel();
        placement?.whenLeft();
    }

    _follow(window, isShown) {
        const entry = {window, isShown};
        const id = window.get_id();
        this._known.set(id, entry);
        const tell = () => this._tellWindow(entry);
        const moved = () => this._tellMove(id, entry);
        window.connectObject(
            'unmanaged', () => this._forget(id),
            'notify::wm-class', tell, 'notify::gtk-application-id', tell, 'notify::window-type', tell,
            'notify::fullscreen', tell, 'notify::skip-taskbar', tell,
            'size-changed', moved, 'position-changed', moved, this);
        if (!isShown) {
            // Only now is everything known of it.
            entry.becomesReady = () => {
                entry.becomesReady = null;
                entry.isShown = true;
                tell();
            };
            window.connectObject('shown', () => entry.becomesReady?.(), this);
        }
    }

    _forget(id) {
        const {window} = this._known.get(id);
        window.disconnectObject(this);
        this._endPlacement(id);
        this._known.delete(id);
        this._tell('WindowGone', '(t)', [id]);
    }

    _tellWindow({window, isShown}) {
        if (isShown && kindOf(window) !== 'furniture')
            this._tell('WindowChanged', '(s)', [JSON.stringify(factsOf(window))]);
    }

    /** Said once; where the windows are is asked for when somebody wants to know. */
    _tellMove(id, {isShown}) {
        if (!isShown || this._isMoveTold || this._placements.has(id))
            return;
        this._isMoveTold = true;
        this._tell('Moved', null, null);
    }

    _tellOutputs() {
        this._tell('OutputsChanged', '(s)', [JSON.stringify(outputs())]);
    }
}

/** The keys that the shell gives to the program, each under a number of the program's choice. */
class Keys {
    constructor(tell) {
        this._actions = new Map();
        global.display.connectObject('accelerator-activated', (_display, action) => {
            for (const [number, own] of this._actions) {
                if (own === action)
                    tell('Activated', '(u)', [number]);
            }
        }, this);
    }

    destroy() {
        global.display.disconnectObject(this);
        for (const number of [...this._actions.keys()])
            this.ungrab(number);
    }

    /** Whether the key was free. */
    grab(number, accelerator) {
        this.ungrab(number);
        const action = global.display.grab_accelerator(accelerator, Meta.KeyBindingFlags.IGNORE_AUTOREPEAT);
        if (action === Meta.KeyBindingAction.NONE)
            return false;
        Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action), Shell.ActionMode.NORMAL);
        this._actions.set(number, action);
        return true;
    }

    ungrab(number) {
        const action = this._actions.get(number);
        if (action === undefined)
            return;
        this._actions.delete(number);
        global.display.ungrab_accelerator(action);
        Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action), Shell.ActionMode.NONE);
    }
}

/** Where a window of the program itself is to be: the next one of a process that has the title. */
class OwnWindow {
    constructor() {
        this._plan = null;
        global.display.connectObject('window-created', (_display, window) => this._await(window), this);
    }

    destroy() {
        global.display.disconnectObject(this);
        this._stopAwaiting();
    }

    place(process, title, x, y) {
        this._plan = {process, title, x, y};
        const window = global.get_window_actors()
            .map(actor => actor.metaWindow)
            .find(each => this._isMeant(each) && each.get_frame_rect().width > 0);
        if (window)
            this._carryOut(window);
    }

    _isMeant(window) {
        return window.get_pid() === this._plan?.process && window.get_title() === this._plan.title;
    }

    _await(window) {
        if (this._plan?.process !== window.get_pid())
            return;
        this._stopAwaiting();
        this._awaited = window;
        // It is on no screen yet, so it is seen nowhere else before.
        this._shown = window.connect('shown', () => {
            this._stopAwaiting();
            if (this._isMeant(window))
                this._carryOut(window);
        });
        this._gone = window.connect('unmanaged', () => this._stopAwaiting());
    }

    _stopAwaiting() {
        this._awaited?.disconnect(this._shown);
        this._awaited?.disconnect(this._gone);
        this._awaited = null;
    }

    _carryOut(window) {
        const {x, y} = this._plan;
        this._plan = null;
        const actor = window.get_compositor_private();
        if (actor)
            Main.wm.skipNextEffect(actor);
        window.make_above();
        window.stick();
        // GNOME 49 and later.
        window.hide_from_window_list?.();
        window.move_frame(true, x, y);
        Main.activateWindow(window);
    }
}

/** The program's item in the top bar. */
class Item {
    constructor(tell) {
        this._tell = tell;
        this._button = new PanelMenu.Button(0.5, '', true);
        this._icon = new St.Icon({style_class: 'system-status-icon'});
        this._button.add_child(this._icon);
        this._button.connect('button-press-event', (_button, event) =>
            this._pressed(event.get_button() === Clutter.BUTTON_PRIMARY));
        this._button.connect('touch-event', (_button, event) => event.type() === Clutter.EventType.TOUCH_BEGIN
            ? this._pressed(true) : Clutter.EVENT_PROPAGATE);
        this._menu = new PopupMenu.PopupMenu(this._button, 0.5, St.Side.TOP);
        this._menu.actor.add_style_class_name('panel-menu');
        this._menu.actor.hide();
        this._menu.connect('open-state-changed', (_menu, isOpen) => {
            if (isOpen)
                this._button.add_style_pseudo_class('active');
            else
                this._button.remove_style_pseudo_class('active');
        });
        Main.layoutManager.uiGroup.add_child(this._menu.actor);
        this._menus = new PopupMenu.PopupMenuManager(this._button);
        this._menus.addMenu(this._menu);
        Main.panel.addToStatusArea('tessel', this._button);
    }

    destroy() {
        this._menu.destroy();
        this._button.destroy();
    }

    set({icon, title, menu}) {
        this._icon.gicon = Gio.icon_new_for_string(icon);
        this._button.accessible_name = title;
        this._menu.removeAll();
        menu.forEach((line, number) => this._menu.addMenuItem(this._menuItem(line, number)));
    }

    frame() {
        const {origin, size} = this._button.get_transformed_extents();
        return [origin.x, origin.y, size.width, size.height].map(Math.round);
    }

    _menuItem({title, isEnabled, isChecked}, number) {
        if (title === '')
            return new PopupMenu.PopupSeparatorMenuItem();
        const item = new PopupMenu.PopupMenuItem(title, {reactive: isEnabled});
        if (isChecked !== undefined)
            item.setOrnament(isChecked ? PopupMenu.Ornament.CHECK : PopupMenu.Ornament.NONE);
        item.connect('activate', () => this._tell('ItemChosen', '(u)', [number]));
        return item;
    }

    _pressed(isPrimary) {
        if (isPrimary && !this._menu.isOpen)
            this._tell('ItemClicked', '(iiii)', this.frame());
        else
            this._menu.toggle();
        return Clutter.EVENT_STOP;
    }
}

/** All that is done for the program while it is there. */
class Service {
    constructor(client) {
        this.client = client;
        this._name = GLib.uuid_string_random();
        const tell = (signal, types, values) => this.tell(signal, types && new GLib.Variant(types, values));
        this._windows = new Windows(tell);
        this._keys = new Keys(tell);
        this._ownWindow = new OwnWindow();
        this._item = null;
        this._newItem = () => new Item(tell);
        tell('Opened', '(s)', [this._name]);
    }

    destroy() {
        this.tell('Closed', null);
        this.hideItem();
        this._ownWindow.destroy();
        this._keys.destroy();
        this._windows.destroy();
    }

    tell(signal, parameters) {
        Gio.DBus.session.emit_signal(this.client, OBJECT_PATH, INTERFACE_NAME, signal, parameters);
    }

    hello() {
        return JSON.stringify({
            version: INTERFACE_VERSION,
            session: this._name,
            windows: this._windows.all().map(factsOf),
            focused: this._windows.focused(),
            outputs: outputs(),
        });
    }

    frames() {
        return JSON.stringify(this._windows.frames());
    }

    place(id, wanted, settled) {
        this._windows.place(id, wanted, settled);
    }

    grab(number, accelerator) {
        return this._keys.grab(number, accelerator);
    }

    ungrab(number) {
        this._keys.ungrab(number);
    }

    placeOwn(process, title, x, y) {
        this._ownWindow.place(process, title, x, y);
    }

    showItem(description) {
        this._item ??= this._newItem();
        this._item.set(JSON.parse(description));
    }

    hideItem() {
        this._item?.destroy();
        this._item = null;
    }

    itemFrame() {
        if (!this._item)
            throw new Refusal('NoItem', 'There is no item in the top bar');
        return this._item.frame();
    }
}

/** The object on the session bus. It answers whoever owns the program's name, and nobody else. */
class Door {
    enable() {
        this._service = null;
        this._object = Gio.DBusExportedObject.wrapJSObject(INTERFACE, this);
        this._object.export(Gio.DBus.session, OBJECT_PATH);
        this._watch = Gio.bus_watch_name_on_connection(
            Gio.DBus.session, BUS_NAME, Gio.BusNameWatcherFlags.NONE,
            (_bus, _name, owner) => this._serve(owner), () => this._serve(null));
    }

    disable() {
        Gio.bus_unwatch_name(this._watch);
        this._serve(null);
        this._object.unexport();
        this._object = null;
    }

    _serve(client) {
        if (this._service?.client === client)
            return;
        this._service?.destroy();
        this._service = client ? new Service(client) : null;
    }

    /** Lets the caller have its work done, if it is the program. */
    _admit(invocation, work) {
        try {
            if (invocation.get_sender() !== this._service?.client)
                throw new Refusal('Denied', 'This object serves Tessel only');
            work(this._service);
        } catch (error) {
            this._refuse(invocation, error);
        }
    }

    /** Answers a call with what `work` gives. */
    _answer(invocation, types, work) {
        this._admit(invocation, service => {
            const values = work(service);
            invocation.return_value(types && new GLib.Variant(types, values));
        });
    }

    _refuse(invocation, error) {
        invocation.return_dbus_error(error.busName ?? `${INTERFACE_NAME}.Failed`, error.message);
    }

    HelloAsync(_parameters, invocation) {
        const answer = () => this._answer(invocation, '(s)', service => [service.hello()]);
        const sender = invocation.get_sender();
        if (sender === this._service?.client) {
            answer();
            return;
        }
        // It may have got its name so recently that this has not been told.
        Gio.DBus.session.call(
            'org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', 'GetNameOwner',
            new GLib.Variant('(s)', [BUS_NAME]), new GLib.VariantType('(s)'), Gio.DBusCallFlags.NONE, -1, null,
            (bus, result) => {
                try {
                    const [owner] = bus.call_finish(result).deepUnpack();
                    if (owner === sender && this._object)
                        this._serve(owner);
                } catch (error) {
                    // Nobody owns the name: the answer says so.
                }
                answer();
            });
    }

    FramesAsync(_parameters, invocation) {
        this._answer(invocation, '(s)', service => [service.frames()]);
    }

    PlaceAsync([id, ...wanted], invocation) {
        this._admit(invocation, service => service.place(id, wanted, frame => {
            if (frame)
                invocation.return_value(new GLib.Variant('(iiii)', frame));
            else
                this._refuse(invocation, new Refusal('NoSuchWindow', 'The window was left alone'));
        }));
    }

    GrabAsync([number, accelerator], invocation) {
        this._answer(invocation, '(b)', service => [service.grab(number, accelerator)]);
    }

    UngrabAsync([number], invocation) {
        this._answer(invocation, null, service => service.ungrab(number));
    }

    PointerAsync(_parameters, invocation) {
        this._answer(invocation, '(ii)', () => global.get_pointer().slice(0, 2));
    }

    PlaceOwnAsync([process, title, x, y], invocation) {
        this._answer(invocation, null, service => service.placeOwn(process, title, x, y));
    }

    BeepAsync(_parameters, invocation) {
        this._answer(invocation, null, () =>
            global.display.get_sound_player().play_from_theme('bell-window-system', 'Tessel', null));
    }

    ShowItemAsync([description], invocation) {
        this._answer(invocation, null, service => service.showItem(description));
    }

    HideItemAsync(_parameters, invocation) {
        this._answer(invocation, null, service => service.hideItem());
    }

    ItemFrameAsync(_parameters, invocation) {
        this._answer(invocation, '(iiii)', service => service.itemFrame());
    }
}
