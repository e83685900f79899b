// A simulated shell, GNOME's or Cinnamon's, and a message bus for the parts of the core; the tests beside it import this.
/* exported PlayedShell, PlayedBus, equal, coreSource, coreFrom */

const {Gio, GLib} = imports.gi;

const PARTS = ['protocol', 'needs', 'placement', 'windows', 'keys', 'holders', 'loans', 'ownWindow', 'busObject'].map(
    part => `shell-core/${part}`);
const OWN_PARTS = {'gnome-shell': ['gnome-shell/shell', 'gnome-shell/item'], cinnamon: ['cinnamon/shell']};
const CONTROL_ALT = 12;

function equal(actual, wanted, what) {
    if (JSON.stringify(actual) !== JSON.stringify(wanted))
        throw new Error(`${what}: ${JSON.stringify(actual)}, not ${JSON.stringify(wanted)}`);
}

/** The texts of the parts below the folder for one kind of shell, by their names. */
function coreSource(folder, kind) {
    return new Map([...OWN_PARTS[kind], ...PARTS].map(part => [part, new TextDecoder().decode(
        GLib.file_get_contents(GLib.build_filenamev([folder, `${part}.js`]))[1])]));
}

/** The named parts of the core, over a simulated shell and bus. */
function coreFrom(folder, shell, bus, names) {
    const surroundings = {
        ...shell.modules, GLib, Gio: bus.Gio, GObject: shell.GObject, console: {warn: text => bus.log.push(text)},
    };
    const source = [...coreSource(folder, shell.kind).values()].join('\n');
    return new Function(...Object.keys(surroundings), `${source}; return {${names}};`)(...Object.values(surroundings));
}

/** A source of signals. */
class Emitter {
    constructor() {
        this.handlers = [];
        this.lastId = 0;
    }

    connect(signal, handler) {
        this.handlers.push({id: ++this.lastId, signal, handler});
        return this.lastId;
    }

    disconnect(id) {
        if (!this.handlers.some(each => each.id === id))
            throw new Error(`there is no handler ${id}`);
        this.handlers = this.handlers.filter(each => each.id !== id);
    }

    /** Returns the handlers' results. */
    emit(signal, ...values) {
        return this.handlers.filter(each => each.signal === signal).map(({handler}) => handler(this, ...values));
    }
}

class PlayedActor extends Emitter {
    add_child() {}
    add_style_class_name() {}
    add_style_pseudo_class() {}
    remove_style_pseudo_class() {}
    get_transformed_extents() { return {origin: {x: 10, y: 0}, size: {width: 30, height: 32}}; }
    hide() {}
    destroy() { this.isGone = true; }
}

class PlayedWindow extends Emitter {
    constructor(facts) {
        super();
        Object.assign(this, {id: 1, process: 1, type: 0, frame: [0, 0, 640, 480], front: []}, facts);
    }

    allows_resize() { return true; }
    get_client_type() { return 1; }
    get_compositor_private() { return null; }
    get_frame_rect() {
        const [x, y, width, height] = this.frame;
        return {x, y, width, height};
    }
    get_gtk_application_id() { return null; }
    get_id() { return this.id; }
    get_maximize_flags() { return 0; }
    get_pid() { return this.process; }
    get_sandboxed_app_id() { return null; }
    get_stable_sequence() { return this.id; }
    get_title() { return 'Title'; }
    get_transient_for() { return null; }
    get_window_type() { return this.type; }
    get_wm_class() { return 'Class'; }
    get_wm_class_instance() { return 'instance'; }
    hide_from_window_list() {}
    is_fullscreen() { return false; }
    is_hidden() { return false; }
    is_override_redirect() { return false; }
    is_skip_taskbar() { return false; }
    located_on_workspace() { return true; }
    make_above() { this.front.push('above'); }
    move_frame(_isUsers, x, y) { this.move_resize_frame(true, x, y, ...this.frame.slice(2)); }
    move_resize_frame(_isUsers, ...frame) {
        if (!this.isStubborn)
            this.frame = frame;
    }
    set_unmaximize_flags() {}
    stick() { this.front.push('sticky'); }
}

class PlayedWindowActor extends PlayedActor {
    constructor(window) {
        super();
        this.window = window;
    }

    get metaWindow() { return this.window; }
    get visible() { return true; }
    is_destroyed() { return false; }
}

class PlayedDisplay extends Emitter {
    constructor() {
        super();
        this.grabbed = [];
        this.bindings = [];
    }

    get focus_window() { return null; }
    get_monitor_geometry() { return {x: 0, y: 0, width: 800, height: 600}; }
    get_n_monitors() { return 1; }
    get_primary_monitor() { return 0; }
    get_sound_player() { return {play_from_theme() {}}; }
    grab_accelerator(accelerator) {
        if (this.grabbed.includes(accelerator) || this.bindingAt(accelerator))
            return 0;
        return this.grabbed.push(accelerator);
    }
    ungrab_accelerator(action) { this.grabbed[action - 1] = null; }
    get_keybinding_action(key, modifiers) {
        return this.bindings.find(each => each.key === key && each.modifiers === modifiers)?.action ??
            this.grabbed.lastIndexOf(`<Control><Alt>0x${key.toString(16)}`) + 1;
    }

    bindingAt(accelerator) {
        return this.bindings.find(({key, modifiers}) =>
            modifiers === CONTROL_ALT && accelerator === `<Control><Alt>0x${key.toString(16)}`);
    }
}

/** One key of a binding. */
class PlayedBinding {
    constructor(facts) {
        Object.assign(this, facts);
    }

    get_mask() { return this.modifiers; }
    get_name() { return this.name; }
}

/** A copy of the type with all members as its own, so that removing one affects this copy alone. */
function own(type) {
    const made = class extends type {};
    for (let from = type.prototype; from !== Object.prototype; from = Object.getPrototypeOf(from)) {
        const {constructor, ...members} = Object.getOwnPropertyDescriptors(from);
        for (const [name, member] of Object.entries(members).filter(([each]) => !Object.hasOwn(made.prototype, each)))
            Object.defineProperty(made.prototype, name, member);
    }
    Object.setPrototypeOf(made.prototype, Object.prototype);
    made.$gtype = {};
    return made;
}

/**
 * Every member that the core uses of the newest shell of the kind that it was tested on, "gnome-shell" or "cinnamon". `windows` can be changed at any time.
 */
var PlayedShell = class PlayedShell {
    constructor(kind) {
        this.kind = kind;
        this.windows = [];
        /** The handlers of the bindings by name, and the event of the pressed key. */
        this.handlers = new Map([['show-desktop', 'of Mutter']]);
        this.event = null;
        const Meta = {
            KeyBindingAction: {NONE: 0, WORKSPACE_LEFT: 1001, WORKSPACE_RIGHT: 1002, SHOW_DESKTOP: 1003, SWITCH_WINDOWS: 1004},
            KeyBindingFlags: {IGNORE_AUTOREPEAT: 1}, LaterType: {BEFORE_REDRAW: 0},
            MaximizeFlags: {BOTH: 3}, WindowClientType: {WAYLAND: 0, X11: 1},
            WindowType: {NORMAL: 0, DESKTOP: 1, DOCK: 2, DIALOG: 3, MODAL_DIALOG: 4, UTILITY: 8, SPLASHSCREEN: 9},
            Backend: own(Emitter), KeyBinding: own(PlayedBinding),
            Display: own(PlayedDisplay), Window: own(PlayedWindow), WindowActor: own(PlayedWindowActor),
            SoundPlayer: class { play_from_theme() {} },
            Workspace: class { get_work_area_for_monitor() { return {x: 0, y: 32, width: 800, height: 568}; } },
            external_binding_name_for_action: action => `action ${action}`,
            keybindings_set_custom_handler: (name, handler) => this.handlers.set(name, handler ?? 'of Mutter'),
        };
        this.display = new Meta.Display();
        const workspace = new Meta.Workspace();
        const shell = this;
        class Menu extends PlayedActor {
            constructor() {
                super();
                this.actor = new PlayedActor();
            }

            addMenuItem() {}
            removeAll() {}
            toggle() {}
        }
        this.items = [];
        this.modules = {
            Meta,
            Clutter: {
                BUTTON_PRIMARY: 1, EVENT_PROPAGATE: false, EVENT_STOP: true, EventType: {TOUCH_BEGIN: 1},
                Actor: own(PlayedActor), Event: class { get_button() {} get_flags() {} get_key_code() {} type() {} },
                EventFlags: {FLAG_REPEATED: 4}, get_current_event: () => this.event,
            },
            Shell: {ActionMode: {NONE: 0, NORMAL: 1, OVERVIEW: 2}, WM: own(Emitter)},
            St: {Side: {TOP: 0}, Widget: own(PlayedActor), Icon: own(class extends PlayedActor { get gicon() {} set gicon(_icon) {} })},
            PanelMenu: {Button: own(PlayedActor)},
            PopupMenu: {
                Ornament: {NONE: 0, CHECK: 1}, PopupMenu: own(Menu), PopupMenuManager: class { addMenu() {} },
                PopupMenuItem: class extends Emitter { setOrnament() {} }, PopupSeparatorMenuItem: class {},
            },
            Main: {
                activateWindow: window => window.front.push('active'),
                layoutManager: Object.assign(new (own(Emitter))(), {uiGroup: new (own(PlayedActor))()}),
                panel: {addToStatusArea: (_name, item) => this.items.push(item)},
                actionMode: 1,
                wm: {allowKeybinding() {}, skipNextEffect() {}, _showWorkspaceSwitcher() { return 'of the shell'; }},
            },
            global: {
                display: this.display, backend: new Meta.Backend(), window_manager: new (own(Emitter))(), compositor: {get_laters: () => ({add() {}})},
                workspace_manager: {get_active_workspace: () => workspace}, get_pointer: () => [3, 4, 0],
                get_window_actors: () => shell.windows.map(window => new Meta.WindowActor(window)),
            },
        };
        const signals = new Map([
            [this.modules.Clutter.Actor.$gtype, ['button-press-event', 'touch-event']],
            [Meta.Display.$gtype, ['accelerator-activated', 'window-created', 'workareas-changed']],
            [Meta.Window.$gtype, ['position-changed', 'shown', 'size-changed', 'unmanaged', 'workspace-changed']],
            [Meta.Backend.$gtype, ['keymap-changed', 'keymap-layout-group-changed']],
            [this.modules.Shell.WM.$gtype, ['filter-keybinding', 'map']],
        ]);
        this.signals = signals;
        this.backend = this.modules.global.backend;
        if (kind === 'cinnamon')
            this._becomeCinnamon();
        this.GObject = {signal_lookup: (name, type) => signals.get(type)?.includes(name) ? 1 : 0};
    }

    _becomeCinnamon() {
        const {Main, Meta, global} = this.modules;
        for (const path of ['global.backend', 'global.compositor', 'Main.actionMode', 'Main.panel', 'Main.wm.allowKeybinding',
            'Main.wm.skipNextEffect', 'Meta.external_binding_name_for_action'])
            this.lose(path);
        for (const module of ['PanelMenu', 'PopupMenu', 'St'])
            delete this.modules[module];
        Object.assign(Meta, {get_backend: () => this.backend, later_add() {}});
        Object.assign(Main, {modalCount: 0, expo: {visible: false}, overview: {visible: false}});
        for (const name of ['_moveWindowToWorkspaceLeft', '_moveWindowToWorkspaceRight'])
            Main.wm[name] = () => 'of the shell';
        const {prototype} = Meta.Window;
        prototype.get_client_pid = prototype.get_pid;
        prototype.get_pid = () => -1;
        delete prototype.hide_from_window_list;
    }

    /** Shows or hides the overview of the windows, which has the keyboard. */
    setOverview(isShown) {
        const {Main} = this.modules;
        if (this.kind === 'cinnamon')
            Main.overview.visible = isShown;
        else
            Main.actionMode = isShown ? 2 : 1;
    }

    /** The schemas of the window manager's bindings, and of others of the shell. */
    get schemas() {
        return this.kind === 'cinnamon'
            ? ['org.cinnamon.desktop.keybindings.wm', 'org.cinnamon.muffin.keybindings']
            : ['org.gnome.desktop.wm.keybindings', 'org.gnome.shell.keybindings'];
    }

    addWindow(facts) {
        const window = new this.modules.Meta.Window({id: this.windows.length + 1, ...facts});
        this.windows.push(window);
        return window;
    }

    /**
     * Binds a key. The shell has its own handlers for workspaces and for switching windows, Mutter for all other
     * functions.
     */
    bind(name, key, modifiers) {
        const {KeyBinding, KeyBindingAction} = this.modules.Meta;
        const action = KeyBindingAction[name.replace(/^switch-to-/, '').replaceAll('-', '_').toUpperCase()];
        this.display.bindings.push(new KeyBinding({name, key, modifiers, action}));
        if (!this.handlers.has(name))
            this.handlers.set(name, () => 'of the shell');
    }

    /** Presses a key. Returns the result of its binding, or nothing without one. */
    press(key, modifiers, flags = 0) {
        const binding = this.display.bindings.find(each => each.key === key && each.modifiers === modifiers);
        if (!binding)
            return null;
        this.event = {get_key_code: () => key, get_flags: () => flags};
        const isFiltered = this.modules.global.window_manager.emit('filter-keybinding', binding).includes(true);
        const handler = this.handlers.get(binding.name);
        const done = isFiltered || typeof handler === 'string' ? handler : handler(this.display, null, binding);
        this.event = null;
        return done ?? 'ours';
    }

    /** Runs all pending callbacks. */
    catchUp() {
        while (GLib.MainContext.default().iteration(false)) {
            // That was one.
        }
    }

    /** The number of handlers connected to the shell's signals. */
    listeners() {
        const {display, window_manager: manager} = this.modules.global;
        return [this.backend, display, manager, this.modules.Main.layoutManager, ...this.windows]
            .filter(Boolean).reduce((count, each) => count + each.handlers.length, 0);
    }

    itemsShown() {
        return this.items.filter(item => !item.isGone).length;
    }

    /** Removes the member from the shell. */
    lose(path) {
        const names = path.split('.');
        const last = names.pop();
        const owner = names.reduce((object, name) => object[name], this.modules);
        const type = Object.getPrototypeOf(owner);
        delete (Object.hasOwn(owner, last) ? owner : type)[last];
    }
};

/** A session bus with one exported object, and the names and processes of its callers. */
var PlayedBus = class PlayedBus {
    constructor(name) {
        this.name = name;
        this.owner = null;
        this.processes = new Map();
        this.reported = [];
        this.log = [];
        /** The bus's pending replies, while it is slow. */
        this.held = null;
        /** The settings that the core has opened, by their schemas. */
        this.settings = new Map();
        const {settings} = this;
        const session = {
            emit_signal: (destination, _path, _interface, signal, parameters) =>
                this.reported.push([destination, signal, ...parameters ? parameters.deepUnpack() : []]),
            call: (_service, _path, _interface, method, parameters, _type, _flags, _timeout, _cancellable, then) => {
                const [asked] = parameters.deepUnpack();
                const known = method === 'GetNameOwner' ? asked === this.name && this.owner : this.processes.get(asked);
                const answer = () => then({call_finish: () => {
                    if (!known)
                        throw new Error('the bus has no such name');
                    return new GLib.Variant(method === 'GetNameOwner' ? '(s)' : '(u)', [known]);
                }}, null);
                if (this.held)
                    this.held.push(answer);
                else
                    answer();
            },
        };
        this.Gio = {
            DBus: {session},
            DBusCallFlags: {NONE: 0},
            BusNameWatcherFlags: {NONE: 0},
            DBusExportedObject: {wrapJSObject: (text, object) => {
                this.interface = Gio.DBusNodeInfo.new_for_xml(text).interfaces[0];
                return {
                    export: () => {
                        if (this.object)
                            throw new Error('an object is exported already');
                        this.object = object;
                    },
                    unexport: () => { this.object = null; },
                };
            }},
            bus_watch_name_on_connection: (_bus, _name, _flags, appeared, vanished) => {
                this.appeared = appeared;
                this.vanished = vanished;
                this.sendOwner();
                return 1;
            },
            bus_unwatch_name: () => { this.appeared = this.vanished = null; },
            icon_new_for_string: text => text,
            Settings: class extends Emitter {
                constructor({schema_id: id}) {
                    super();
                    settings.set(id, this);
                }
            },
            SettingsSchemaSource: {get_default: () => ({lookup: id => id.includes('wayland') ? null : {has_key: () => false}})},
        };
    }

    sendOwner() {
        if (this.owner)
            this.appeared?.(null, this.name, this.owner);
        else
            this.vanished?.();
    }

    /** Gives the name to a connection, or to none. `isTold`: the extension gets the signal at once. */
    give(owner, isReported = true) {
        this.owner = owner;
        if (isReported)
            this.sendOwner();
    }

    /** Sends all replies that it has held back. */
    answerHeld() {
        this.held.splice(0).forEach(answer => answer());
    }

    /** The reply to a call: its values, or the name of an error; nothing while it is pending. */
    call(sender, method, ...values) {
        const answer = {};
        this.object[`${method}Async`](values, {
            get_sender: () => sender,
            return_value: variant => { answer.values = variant ? variant.deepUnpack() : []; },
            return_dbus_error: (name, message) => Object.assign(answer, {error: name.split('.').pop(), message}),
        });
        return answer;
    }
};
