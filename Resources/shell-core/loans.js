// Bindings with Mutter's own handlers that can be lent; `host.handlerOf` has those of the shell. The handler of a binding
// cannot be read, so a binding with any other handler could not be restored.
const LENT_BY_MUTTER = new Set([
    'always-on-top', 'begin-move', 'begin-resize', 'close', 'lower', 'maximize', 'maximize-horizontally',
    'maximize-vertically', 'minimize', 'move-to-center', 'move-to-corner-ne', 'move-to-corner-nw', 'move-to-corner-se',
    'move-to-corner-sw', 'move-to-monitor-down', 'move-to-monitor-left', 'move-to-monitor-right', 'move-to-monitor-up',
    'move-to-side-e', 'move-to-side-n', 'move-to-side-s', 'move-to-side-w', 'raise', 'raise-or-lower', 'show-desktop',
    'toggle-above', 'toggle-fullscreen', 'toggle-maximized', 'toggle-on-all-workspaces', 'toggle-tiled-left',
    'toggle-tiled-right', 'unmaximize',
]);

const isRepeated = event => (event.get_flags() & Clutter.EventFlags.FLAG_REPEATED) !== 0;
const isLendable = binding => Boolean(host.handlerOf(binding)) || LENT_BY_MUTTER.has(binding);

/**
 * Why the key with Ctrl and Alt is not lent: the shell lacks something for it ("shell"), one of Mutter's bindings has it
 * whose handler could not be given back ("own"), or one that was added while the shell runs, by its parts, extensions or
 * programs ("others"). Empty for one that is lent.
 */
function loanObstacle(key) {
    if (missingToBorrow().length > 0)
        return 'shell';
    const binding = bindingOf(global.display.get_keybinding_action(key, CONTROL_ALT));
    if (isLendable(binding))
        return '';
    return binding && binding !== 'none' ? 'own' : 'others';
}

/**
 * Keys that the shell lends. Its settings stay unchanged, and a binding keeps its handler until one of these keys is
 * pressed, when it gets another one for that press. So the binding's other keys, and all of them in the overview, keep
 * their function.
 */
class Loans {
    /** `pressed` is called with the number of a key, once for each press however long it is held. */
    constructor(pressed) {
        this._pressed = pressed;
        this._numbers = new Map();
        this._replaced = null;
        this._restoring = 0;
        // The shell emits this for every key with a binding, and then calls the binding's handler.
        this._handlers = new Handlers();
        this._handlers.add(global.window_manager, {
            'filter-keybinding': (_manager, binding) => {
                this._giveBack();
                const event = Clutter.get_current_event();
                const number = this._numbers.get(event?.get_key_code());
                if (number !== undefined && Number(binding.get_mask()) === CONTROL_ALT && host.isOnDesktop() &&
                    isLendable(binding.get_name()))
                    this._replace(binding.get_name(), number, isRepeated(event));
                return false;
            },
        });
    }

    destroy() {
        this._handlers.endAll();
        this._numbers.clear();
        this._giveBack();
    }

    /** Borrows a key, by its XKB key code. False if it is borrowed already. */
    add(key, number) {
        if (this._numbers.has(key))
            return false;
        this._numbers.set(key, number);
        return true;
    }

    delete(key) {
        this._numbers.delete(key);
    }

    _replace(binding, number, isRepeated) {
        this._replaced = binding;
        Meta.keybindings_set_custom_handler(binding, () => {
            if (!isRepeated)
                this._pressed(number);
        });
        // Not inside the handler itself, which must outlive its call.
        this._restoring = GLib.idle_add(GLib.PRIORITY_DEFAULT, () => {
            this._restoring = 0;
            this._giveBack();
            return GLib.SOURCE_REMOVE;
        });
    }

    _giveBack() {
        if (this._restoring)
            GLib.source_remove(this._restoring);
        this._restoring = 0;
        if (!this._replaced)
            return;
        Meta.keybindings_set_custom_handler(this._replaced, host.handlerOf(this._replaced));
        this._replaced = null;
    }
}

/**
 * Reports changes of the shell's bindings. When settings change it calls `leaves` before the shell has read them,
 * because a grabbed key then hides the binding that gets this key, for as long as the shell runs. It calls `returns`
 * when the shell has read them, and when another keyboard layout may have moved bindings to other keys.
 */
class BindingWatch {
    constructor(leaves, returns) {
        this._leaves = leaves;
        this._returns = returns;
        this._waiting = 0;
        this._handlers = new Handlers();
        this._settings = host.bindingSchemas.filter(id => Gio.SettingsSchemaSource.get_default().lookup(id, true))
            .map(id => new Gio.Settings({schema_id: id}));
        for (const settings of this._settings) {
            this._handlers.add(settings, {
                'changed': () => {
                    this._leaves();
                    this._returnSoon();
                },
            });
        }
        const moved = () => this._returnSoon();
        this._handlers.add(host.backend(), {'keymap-changed': moved, 'keymap-layout-group-changed': moved});
    }

    destroy() {
        this._handlers.endAll();
        if (this._waiting)
            GLib.source_remove(this._waiting);
        this._waiting = 0;
    }

    _returnSoon() {
        // The shell reads its bindings when it is idle; this runs after that.
        this._waiting ||= GLib.idle_add(GLib.PRIORITY_LOW, () => {
            this._waiting = 0;
            this._returns();
            return GLib.SOURCE_REMOVE;
        });
    }
}
