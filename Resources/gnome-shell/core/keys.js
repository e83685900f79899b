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
