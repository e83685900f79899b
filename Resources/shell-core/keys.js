// Ctrl+Alt, in the X protocol's modifier mask.
const CONTROL_ALT = 12;
// The arrows, C and D with them, by key code: no other key is ever grabbed for the program.
const COMBINATIONS = new Map([0x71, 0x72, 0x6f, 0x74, 0x36, 0x28].map(key => [`<Control><Alt>0x${key.toString(16)}`, key]));

/** The XKB key code. */
function keyOf(accelerator) {
    const key = COMBINATIONS.get(accelerator);
    if (key === undefined)
        throw new Refusal('Denied', `${accelerator} is none of Tessel's combinations`);
    return key;
}

/** The keys that the shell gives to the program, each under a number that the program chose. */
class Keys {
    constructor(send) {
        this._send = send;
        this._held = new Map();
        // These exist while the program has requested a key that it may borrow.
        this._loans = null;
        this._watch = null;
        this._handlers = new Handlers();
        this._handlers.add(global.display, {
            'accelerator-activated': (_display, action) => {
                for (const [number, own] of this._held) {
                    if (own.action === action)
                        this._pressed(number);
                }
            },
        });
    }

    destroy() {
        this._handlers.endAll();
        for (const number of [...this._held.keys()])
            this.ungrab(number);
    }

    /** Whether the key was free. */
    grab(number, accelerator) {
        return this._begin(number, {accelerator, key: keyOf(accelerator), mayBorrow: false}).isHeld;
    }

    /**
     * The same for a key that is borrowed from the shell if it is not free: returns whether it is held, and whether it
     * is borrowed.
     */
    borrow(number, accelerator) {
        const mayBorrow = missingToBorrow().length === 0;
        const {isHeld, isBorrowed} = this._begin(number, {accelerator, key: keyOf(accelerator), mayBorrow});
        return [isHeld, isBorrowed];
    }

    ungrab(number) {
        const own = this._held.get(number);
        if (own === undefined)
            return;
        this._held.delete(number);
        this._release(own);
        this._endLoans();
    }

    _pressed(number) {
        this._send('Activated', '(u)', [number]);
    }

    _begin(number, own) {
        this.ungrab(number);
        if (own.mayBorrow) {
            this._loans ??= new Loans(pressed => this._pressed(pressed));
            this._watch ??= new BindingWatch(() => this._leaveToTheShell(), () => this._lookAgain());
        }
        this._take(number, own);
        if (own.isHeld)
            this._held.set(number, own);
        this._endLoans();
        return own;
    }

    _take(number, own) {
        own.action = global.display.grab_accelerator(own.accelerator, Meta.KeyBindingFlags.IGNORE_AUTOREPEAT);
        const isFree = own.action !== Meta.KeyBindingAction.NONE;
        if (isFree)
            host.setAllowed(own.action, true);
        own.isBorrowed = !isFree && own.mayBorrow && loanObstacle(own.key) === '' && this._loans.add(own.key, number);
        own.isHeld = isFree || own.isBorrowed;
    }

    _release(own) {
        this._ungrab(own);
        if (own.isBorrowed)
            this._loans.delete(own.key);
    }

    _ungrab(own) {
        if (own.action === Meta.KeyBindingAction.NONE)
            return;
        global.display.ungrab_accelerator(own.action);
        host.setAllowed(own.action, false);
        own.action = Meta.KeyBindingAction.NONE;
    }

    _endLoans() {
        if ([...this._held.values()].some(own => own.mayBorrow))
            return;
        this._watch?.destroy();
        this._watch = null;
        this._loans?.destroy();
        this._loans = null;
    }

    _leaveToTheShell() {
        for (const own of [...this._held.values()].filter(each => each.mayBorrow))
            this._ungrab(own);
    }

    /** A free key may be the shell's by now, and the reverse; a lent key may belong to another program. */
    _lookAgain() {
        for (const [number, own] of [...this._held].filter(([_number, each]) => each.mayBorrow)) {
            const action = global.display.get_keybinding_action(own.key, CONTROL_ALT);
            if (action !== Meta.KeyBindingAction.NONE && action === own.action)
                continue;
            const wasBorrowed = own.isBorrowed;
            this._release(own);
            this._take(number, own);
            if (!own.isHeld) {
                this.ungrab(number);
                this._send('KeyLost', '(u)', [number]);
            } else if (own.isBorrowed !== wasBorrowed) {
                this._send('KeyHeld', '(ub)', [number, own.isBorrowed]);
            }
        }
    }
}
