// Ctrl+Alt with the arrows, C and D, by the numbers of the keys: all that the program ever takes.
const COMBINATIONS = ['0x71', '0x72', '0x6f', '0x74', '0x36', '0x28'].map(key => `<Control><Alt>${key}`);

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
        if (!COMBINATIONS.includes(accelerator))
            throw new Refusal('Denied', `${accelerator} is none of Tessel's combinations`);
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
